#include "display/window/text_row.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "display/window/text_measure.h"

namespace corvanel {

QRect Pixels(const Place& place) {
  const int left = static_cast<int>(std::floor(place.x));
  const int top = static_cast<int>(std::floor(place.y));
  return {left, top, static_cast<int>(std::ceil(place.Right())) - left,
          static_cast<int>(std::ceil(place.Bottom())) - top};
}

Place PlaceOf(const QRect& pixels) {
  return {static_cast<double>(pixels.x()), static_cast<double>(pixels.y()),
          static_cast<double>(pixels.width()), static_cast<double>(pixels.height())};
}

TextRow::TextRow(const QString& name, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void TextRow::SetText(const std::string& text) {
  if (text == text_) return;
  text_ = text;
  setAccessibleName(QString::fromStdString(text));
  Break();
}

void TextRow::SetPlace(const TextPlace& place, const ElementStyle& style, Colour background) {
  place_ = place;
  style_ = style;
  field_ = style.Backcolour != background;
  setVisible(place.points > 0);
  setGeometry(Pixels(place.place));
  Break();
}

void TextRow::Break() {
  if (place_.points <= 0) return;
  lines_ =
      BreakLines(text_, place_.lines, place_.place.width, style_, place_.points, QtTextMeasure());
  update();
}

double TextRow::LineHeight() const {
  if (place_.capitals) return place_.place.height / place_.lines;
  return QFontMetricsF(FontOf(style_, place_.points)).height();
}

bool TextRow::Fits() const {
  const QFontMetricsF metrics(FontOf(style_, place_.points));
  std::string whole;
  for (const std::string& line : lines_) {
    if (metrics.horizontalAdvance(QString::fromStdString(line)) > width() + 0.5) return false;
    whole += line;
  }
  return std::max(LineHeight(), Capitals()) * static_cast<double>(lines_.size()) <=
             height() + 0.5 &&
         (whole.find("…") == std::string::npos || text_.find("…") != std::string::npos);
}

double TextRow::Capitals() const {
  return DigitHeight(FontOf(style_, place_.points));
}

void TextRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setFont(FontOf(style_, place_.points));
  const QFontMetricsF metrics(painter.font());
  const double line = LineHeight();
  const double base = place_.capitals ? (line + Capitals()) / 2 : metrics.ascent();
  double y = (height() - line * static_cast<double>(lines_.size())) / 2;
  for (const std::string& part : lines_) {
    const QString text = QString::fromStdString(part);
    const double width = metrics.horizontalAdvance(text);
    const double x = (this->width() - width) / 2;
    if (field_) painter.fillRect(QRectF(x, y, width, line), ColourOf(style_.Backcolour));
    painter.setPen(ColourOf(style_.Forecolour));
    painter.drawText(QPointF(x, y + base), text);
    y += line;
  }
}

}  // namespace corvanel
