#include "control/window/live_countdown.h"

#include <QPainter>

#include "widgets/colours.h"

namespace corvanel {
namespace {

constexpr double kDigits = 2.6;  // size for that of the window's font
constexpr int kBesideDigits = 14;
constexpr int kAboveDigits = 2;

}  // namespace

LiveCountdown::LiveCountdown(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LiveCountdown::Show(const std::string& countdown, const ElementStyle& style) {
  const QString text = QString::fromStdString(countdown);
  if (text == countdown_ && style == style_) return;
  const bool wider = text.size() != countdown_.size();
  countdown_ = text;
  style_ = style;
  if (wider) updateGeometry();
  update();
}

QFont LiveCountdown::DigitFont() const {
  QFont digits = font();
  digits.setPointSizeF(digits.pointSizeF() * kDigits);
  digits.setBold(true);
  return digits;
}

QSize LiveCountdown::sizeHint() const {
  // As wide for "1:11" as for "8:88", so that nothing beside it moves.
  QString widest = countdown_;
  for (QChar& character : widest) character = character.isDigit() ? QLatin1Char('8') : character;
  const QFontMetrics metrics(DigitFont());
  return {metrics.horizontalAdvance(widest) + 2 * kBesideDigits,
          metrics.ascent() + 2 * kAboveDigits};
}

void LiveCountdown::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ColourOf(style_.Backcolour));
  painter.drawRoundedRect(rect(), 6, 6);
  painter.setPen(ColourOf(style_.Forecolour));
  painter.setFont(DigitFont());
  painter.drawText(rect(), Qt::AlignCenter, countdown_);
}

}  // namespace corvanel
