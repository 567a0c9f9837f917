#include "display/window/countdown_panel.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <utility>

#include "display/window/text_measure.h"
#include "display/window/text_row.h"

namespace corvanel {

CountdownPanel::CountdownPanel(const QString& name, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  // It paints every pixel of itself, so that a second costs no painting of what lies behind.
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void CountdownPanel::SetTexts(const std::string& countdown, const std::string& stateWord) {
  const bool onlyDigits = stateWord == stateWord_ && countdown.size() == countdown_.size();
  const std::string before = countdown_;
  countdown_ = countdown;
  stateWord_ = stateWord;
  if (onlyDigits) {
    UpdateChangedCells(before);
  } else {
    update();
  }
}

bool CountdownPanel::SetSpoken(const std::string& state) {
  setAccessibleName(QString::fromStdString(countdown_ + ", " + state));
  return std::exchange(spoken_, state) != state;
}

void CountdownPanel::UpdateChangedCells(const std::string& before) {
  // Round digits reach a little beyond the flat ones, above and below.
  const double beyond = 1 + digitHeight_ * 0.04;
  for (size_t i = 0; i < countdown_.size(); ++i) {
    if (countdown_[i] != before[i]) {
      update(CellOf(i).adjusted(-beyond, -beyond, beyond, beyond).toAlignedRect());
    }
  }
}

QRect CountdownPanel::DigitsPlace() const {
  return Pixels(place_.place);
}

void CountdownPanel::SetPlace(const Layout& layout) {
  const QRect panel = Pixels(layout.panel);
  setGeometry(panel);
  place_ = layout.countdown;
  tag_ = layout.tag;
  for (TextPlace* inside : {&place_, &tag_}) {
    inside->place.x -= panel.x();
    inside->place.y -= panel.y();
  }
  TakeFont();
}

void CountdownPanel::SetStyle(const ElementStyle& style, Colour background) {
  if (style == style_ && background == background_) return;
  style_ = style;
  background_ = background;
  TakeFont();
}

QFont CountdownPanel::WordFont() const {
  ElementStyle bold = style_;
  bold.Bold = true;
  return FontOf(bold, tag_.points);
}

void CountdownPanel::TakeFont() {
  font_ = FontOf(style_, std::max(place_.points, 1.0));
  digitCell_ = CellWidth(QLatin1Char('0'), font_);
  colonCell_ = CellWidth(QLatin1Char(':'), font_);
  digitHeight_ = DigitHeight(font_);
  // Fonts set the colon on the line, for words; between digits it belongs at their middle.
  const QRectF colon = QFontMetricsF(font_).tightBoundingRect(":");
  colonLift_ = digitHeight_ / 2 + colon.center().y();
  update();
}

double CountdownPanel::CountdownWidth(const std::string& text) const {
  double width = 0;
  for (const char c : text) {
    width += c == ':' ? colonCell_ : digitCell_;
  }
  return width;
}

QRectF CountdownPanel::CellOf(size_t index) const {
  const double left = place_.place.x + (place_.place.width - CountdownWidth(countdown_)) / 2 +
                      CountdownWidth(countdown_.substr(0, index));
  const double top = place_.place.y + (place_.place.height - digitHeight_) / 2;
  return {left, top, CountdownWidth(countdown_.substr(index, 1)), digitHeight_};
}

void CountdownPanel::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  // Before antialiasing, which would leave a faint edge where scaled pixels are not whole.
  painter.fillRect(event->rect(), ColourOf(background_));
  painter.setRenderHint(QPainter::Antialiasing);
  if (style_.Backcolour != background_) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColourOf(style_.Backcolour));
    const double radius = height() * 0.04;
    painter.drawRoundedRect(rect(), radius, radius);
  }
  painter.setPen(ColourOf(style_.Forecolour));
  if (!stateWord_.empty() && event->rect().intersects(Pixels(tag_.place))) {
    painter.setFont(WordFont());
    QString word = QString::fromStdString(stateWord_);
    const bool beside = tag_.lines > 1;
    if (beside) word.replace(' ', '\n');
    const Qt::Alignment alignment = Qt::AlignLeft | (beside ? Qt::AlignTop : Qt::AlignVCenter);
    painter.drawText(QRectF(tag_.place.x, tag_.place.y, tag_.place.width, tag_.place.height),
                     static_cast<int>(alignment) | Qt::TextDontClip, word);
  }
  painter.setFont(font_);
  painter.setBrush(ColourOf(style_.Forecolour));
  for (size_t i = 0; i < countdown_.size(); ++i) {
    const QRectF cell = CellOf(i);
    if (!event->rect().intersects(cell.toAlignedRect())) continue;
    const QChar character = QLatin1Char(countdown_[i]);
    const double inset = (cell.width() - QFontMetricsF(font_).horizontalAdvance(character)) / 2;
    const double lift = character == ':' ? colonLift_ : 0;
    painter.drawText(QPointF(cell.left() + inset, cell.bottom() - lift), character);
  }
}

}  // namespace corvanel
