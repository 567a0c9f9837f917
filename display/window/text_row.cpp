#include "display/window/text_row.h"

#include <QFontMetricsF>
#include <QPainter>
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

bool TextRow::Fits() const {
  const QFontMetricsF metrics(FontOf(style_, place_.points));
  std::string whole;
  for (const std::string& line : lines_) {
    if (metrics.horizontalAdvance(QString::fromStdString(line)) > width() + 0.5) return false;
    whole += line;
  }
  return metrics.height() * static_cast<double>(lines_.size()) <= height() + 0.5 &&
         (whole.find("…") == std::string::npos || text_.find("…") != std::string::npos);
}

void TextRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setFont(FontOf(style_, place_.points));
  const QFontMetricsF metrics(painter.font());
  const double height = metrics.height() * static_cast<double>(lines_.size());
  double y = (this->height() - height) / 2;
  for (const std::string& line : lines_) {
    const QString text = QString::fromStdString(line);
    const double width = metrics.horizontalAdvance(text);
    const double x = (this->width() - width) / 2;
    if (field_)
      painter.fillRect(QRectF(x, y, width, metrics.height()), ColourOf(style_.Backcolour));
    painter.setPen(ColourOf(style_.Forecolour));
    painter.drawText(QPointF(x, y + metrics.ascent()), text);
    y += metrics.height();
  }
}

}  // namespace corvanel
