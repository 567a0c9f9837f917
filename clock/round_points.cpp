// Where a session stands, and how it is put somewhere else: undo, gaps, an earlier run.

#include <algorithm>

#include "clock/round_clock.h"

namespace corvanel {

ClockPoint RoundClock::Point() const {
  ClockPoint point{state_, session_.currentRound, session_.startTime, face_.caption, face_.message};
  point.state.secondsLeft = 0;
  return point;
}

/// Before a command of its own takes effect.
void RoundClock::Remember(SessionCommand command) {
  undo_.Push({command, uptime_, Point()});
  // From here on it would take more than the gap out.
  gap_.reset();
}

void RoundClock::Recall(const ClockPoint& point) {
  state_ = point.state;
  // Rounds may have been struck off meanwhile.
  session_.currentRound = std::min(point.currentRound, session_.settings.nRounds);
  session_.startTime = point.startTime;
  face_.caption = point.caption;
  face_.message = point.message;
  if (state_.Running()) {
    state_.secondsLeft = SecondsRemaining(EndMark(), state_.paused ? state_.pauseMark : counter_);
  }
}

/// Puts the session where it would be had it run on from `point`, whose marks are of this run.
/// What was heard from `uptime` on is not played again.
void RoundClock::RecallSince(const ClockPoint& point, double uptime) {
  Recall(point);
  heardFrom_ = uptime;
  CatchUp();
  heardFrom_ = kNever;
}

void RoundClock::Undo() {
  Handle([&] {
    const auto step = undo_.Take(uptime_);
    if (!step) return;
    gap_.reset();
    parts_.events.Happened(EventKind::Undo, std::string(NameOf(step->command)));
    RecallSince(step->before, step->at);
    // Else the scoring link would do it again at its next look.
    if (step->command == SessionCommand::AutoPause) state_.mayAutoPause = false;
  });
}

void RoundClock::TakeOutGap() {
  Handle([&] {
    if (!gap_) return;
    const Gap gap = *gap_;
    Remember(SessionCommand::TakeOutGap);
    parts_.events.Happened(EventKind::Continue, face_.caption);
    RecallSince(Shifted(gap.before, gap.seconds), gap.endedAt);
  });
}

void RoundClock::LeaveGapIn() {
  gap_.reset();
  RefreshSchedule();
}

void RoundClock::Continue(const ClockPoint& point, std::vector<UndoStep> undo) {
  state_ = {};
  TimerCurrentTime_Timer();
  Handle([&] {
    undo_.Replace(std::move(undo));
    Recall(point);
    parts_.events.Happened(EventKind::Continue, face_.caption);
    CatchUp();
  });
}

}  // namespace corvanel
