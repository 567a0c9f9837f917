#include "control/window/timetable_bar.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "widgets/colours.h"

namespace corvanel {
namespace {

constexpr int kMarks = 16;  // pixels, above the bar
constexpr int kBarHeight = 22;
constexpr int kTimes = 20;           // below it
constexpr size_t kMostFields = 400;  // beyond, fields would be thinner than a pixel
constexpr QColor kBreak(0xF2, 0xA9, 0x00);
constexpr double kPlayed = 0.25;  // of a field's colour, over what is behind
constexpr double kNowWidth = 3;

QColor ColourOf(const TimetableLine& line) {
  return line.phase == Phase::Break ? kBreak : kAccent;
}

}  // namespace

TimetableBar::TimetableBar(QWidget* parent) : QWidget(parent) {
  setMinimumHeight(kMarks + kBarHeight + kTimes);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(tr("Timetable of the session"));
}

QSize TimetableBar::sizeHint() const {
  return {400, kMarks + kBarHeight + kTimes};
}

void TimetableBar::Show(const Evening& evening, const Session& session) {
  evening_ = evening;
  session_ = &session;
  update();
}

double TimetableBar::Scale() const {
  if (evening_.lines.empty()) return 0;
  const double minutes = evening_.lines.back().startsIn + evening_.lines.back().minutes;
  return minutes > 0 ? width() / minutes : 0;
}

/// What the move after a round brings: "S", "A" or "S A".
QString TimetableBar::MarksOf(int round) const {
  const SessionSettings& s = session_->settings;
  if (round >= s.nRounds) return {};
  QStringList marks;
  if (s.Skip.Lists(round)) marks << tr("S");
  if (s.Arrow.Lists(round)) marks << tr("A");
  return marks.join(' ');
}

void TimetableBar::PaintField(QPainter& painter, const TimetableLine& line) const {
  const double scale = Scale();
  const QRectF field(line.startsIn * scale, kMarks, std::max(line.minutes * scale - 1, 1.0),
                     kBarHeight);
  const QColor behind = palette().color(QPalette::Base);
  const double now = std::clamp(evening_.standsAt * scale, field.left(), field.right());
  painter.setPen(Qt::NoPen);
  // What was played of it, then the rest.
  for (const bool played : {false, true}) {
    painter.save();
    painter.setClipRect(played ? QRectF(field.topLeft(), QPointF(now, field.bottom()))
                               : QRectF(QPointF(now, field.top()), field.bottomRight()));
    painter.setBrush(played ? Mixed(ColourOf(line), behind, kPlayed) : ColourOf(line));
    painter.drawRoundedRect(field, 3, 3);
    painter.restore();
  }
  const QString name = line.phase == Phase::Break ? tr("Break") : QString::number(line.round);
  const QFontMetrics metrics(font());
  if (metrics.horizontalAdvance(name) + 6 >= field.width()) return;
  const bool dimmed = now > field.center().x();
  painter.setPen(dimmed                       ? palette().color(QPalette::Text)
                 : line.phase == Phase::Break ? QColor(Qt::black)
                                              : QColor(Qt::white));
  painter.drawText(field, Qt::AlignCenter, name);
}

void TimetableBar::PaintMarks(QPainter& painter, const TimetableLine& line) const {
  const QString marks = MarksOf(line.round);
  if (marks.isEmpty()) return;
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  const double end = (line.startsIn + line.minutes) * Scale();
  const double wide = QFontMetrics(bold).horizontalAdvance(marks);
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(QRectF(std::clamp(end - wide / 2, 0.0, width() - wide), 0, wide + 1, kMarks),
                   Qt::AlignCenter, marks);
  painter.setFont(font());
}

void TimetableBar::PaintNow(QPainter& painter) const {
  if (evening_.standsAt < 0) return;
  const double x = std::min(evening_.standsAt * Scale(), width() - kNowWidth);
  painter.fillRect(QRectF(x - kNowWidth / 2, kMarks - 5, kNowWidth, kBarHeight + 10),
                   palette().color(QPalette::Text));
}

void TimetableBar::paintEvent(QPaintEvent* /*event*/) {
  if (session_ == nullptr || evening_.lines.size() > kMostFields) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QFontMetrics metrics(font());
  double freeFrom = -1;  // where the row of times below the bar has room again
  for (const TimetableLine& line : evening_.lines) {
    if (line.phase == Phase::Move) continue;
    PaintField(painter, line);
    if (line.phase == Phase::Round) PaintMarks(painter, line);
    const QString time =
        QString::fromStdString(TimeText(line.Begins(evening_.start), session_->options.Form()));
    const double left = std::min(line.startsIn * Scale(),
                                 static_cast<double>(width() - metrics.horizontalAdvance(time)));
    if (left < freeFrom) continue;
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QPointF(left, kMarks + kBarHeight + 4 + metrics.ascent()), time);
    freeFrom = left + metrics.horizontalAdvance(time) + 14;
  }
  PaintNow(painter);
}

const TimetableLine* TimetableBar::LineAt(double x) const {
  const double scale = Scale();
  for (const TimetableLine& line : evening_.lines) {
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
  const auto time = [&](ClockTime at) {
    return QString::fromStdString(TimeText(at, session_->options.Form()));
  };
  QToolTip::showText(help->globalPos(), tr("%1: %2 to %3")
                                            .arg(what, time(line->Begins(evening_.start)),
                                                 time(line->Ends(evening_.start))));
  return true;
}

}  // namespace corvanel
