#include "control/window/timetable_bar.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace corvanel {
namespace {

constexpr int kHeight = 44;  // bar and times below it
constexpr int kBarHeight = 22;
constexpr size_t kMostLines = 400;  // beyond, fields would be thinner than a pixel
constexpr QColor kRound(0x5B, 0x8D, 0xE8);
constexpr QColor kBreak(0xF2, 0xA9, 0x00);

}  // namespace

TimetableBar::TimetableBar(QWidget* parent) : QWidget(parent) {
  setMinimumHeight(kHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(tr("Timetable of the session"));
}

QSize TimetableBar::sizeHint() const {
  return {400, kHeight};
}

void TimetableBar::Show(const std::vector<TimetableLine>& lines, ClockTime start, TimeForm form) {
  lines_ = lines;
  start_ = start;
  form_ = form;
  update();
}

double TimetableBar::Scale() const {
  if (lines_.empty()) return 0;
  const double minutes = lines_.back().startsIn + lines_.back().minutes;
  return minutes > 0 ? width() / minutes : 0;
}

void TimetableBar::paintEvent(QPaintEvent* /*event*/) {
  if (lines_.size() > kMostLines) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double scale = Scale();
  const QFontMetrics metrics(font());
  const int textTop = kBarHeight + 2;
  double freeFrom = -1;  // where the row of times below the bar has room again
  const auto putTime = [&](const TimetableLine& line) {
    const QString time = QString::fromStdString(TimeText(line.Begins(start_), form_));
    const double left = std::min(line.startsIn * scale,
                                 static_cast<double>(width() - metrics.horizontalAdvance(time)));
    if (left < freeFrom) return;
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(QPointF(left, textTop + metrics.ascent()), time);
    freeFrom = left + metrics.horizontalAdvance(time) + 14;
  };
  for (const TimetableLine& line : lines_) {
    if (line.phase == Phase::Move) continue;
    const QRectF field(line.startsIn * scale, 0, std::max(line.minutes * scale - 1, 1.0),
                       kBarHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(line.phase == Phase::Break ? kBreak : kRound);
    painter.drawRoundedRect(field, 3, 3);
    painter.setPen(line.phase == Phase::Break ? Qt::black : Qt::white);
    const QString name = line.phase == Phase::Break ? tr("Break") : QString::number(line.round);
    if (metrics.horizontalAdvance(name) + 6 < field.width()) {
      painter.drawText(field, Qt::AlignCenter, name);
    }
    putTime(line);
  }
}

const TimetableLine* TimetableBar::LineAt(double x) const {
  const double scale = Scale();
  for (const TimetableLine& line : lines_) {
    if (x >= line.startsIn * scale && x < (line.startsIn + line.minutes) * scale) return &line;
  }
  return nullptr;
}

bool TimetableBar::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const TimetableLine* line = LineAt(help->pos().x());
  if (line == nullptr) {
    QToolTip::hideText();
    return true;
  }
  const QString what = line->phase == Phase::Round   ? tr("Round %1").arg(line->round)
                       : line->phase == Phase::Break ? tr("Break after round %1").arg(line->round)
                                                     : tr("Move after round %1").arg(line->round);
  const auto time = [&](ClockTime at) { return QString::fromStdString(TimeText(at, form_)); };
  QToolTip::showText(
      help->globalPos(),
      tr("%1: %2 to %3").arg(what, time(line->Begins(start_)), time(line->Ends(start_))));
  return true;
}

}  // namespace corvanel
