// Where a session stands, and how it is put somewhere else: undo, gaps, an earlier run.

#include <algorithm>
#include <utility>

#include "clock/round_clock.h"
#include "session/captions.h"

namespace corvanel {

ClockPoint RoundClock::Point() const {
  ClockPoint point{state_, session_.currentRound, session_.startTime,
                   {},     face_.caption,         face_.message};
  point.state.secondsLeft = 0;
  if (state_.phase == Phase::Ended) point.finish = schedule_.finish;
  return point;
}

/// One that follows another, with no command between them, is taken out together with it.
void RoundClock::NoticeGap(double away) {
  Gap gap{away, uptime_, Point()};
  if (gap_ && gap_->before) {
    gap.seconds += gap_->seconds;
    gap.before = gap_->before;
  }
  gap_ = gap;
}

/// Before a command takes effect.
void RoundClock::Remember(SessionCommand command) {
  undo_.Push({command, uptime_, Point()});
  // From here on it would take more than the gap out.
  if (gap_) gap_->before.reset();
}

/// A start throws away the session that runs, as the clock began its round. One that has ended, or
/// none, is of another evening: nothing leads back into it.
void RoundClock::RememberStart() {
  if (!state_.Running()) {
    undo_.Replace({});
    gap_.reset();
    return;
  }
  const ClockTime startsAt = std::exchange(session_.startTime, begunAt_);
  const int16_t round = std::exchange(session_.currentRound, begunRound_);
  Remember(SessionCommand::Start);
  session_.startTime = startsAt;
  session_.currentRound = round;
}

void RoundClock::Recall(const ClockPoint& point) {
  state_ = point.state;
  // Rounds may have been struck off meanwhile.
  session_.currentRound = std::min(point.currentRound, session_.settings.nRounds);
  session_.startTime = point.startTime;
  begunRound_ = session_.currentRound;
  begunAt_ = session_.startTime;
  face_.caption = state_.phase == Phase::Round
                      ? RoundCaption(session_.currentRound, session_.settings.nRounds)
                      : point.caption;
  face_.message = point.message;
  schedule_ = {point.finish, {}, {}};
  if (state_.Running()) {
    state_.secondsLeft = SecondsRemaining(EndMark(), state_.paused ? state_.pauseMark : counter_);
  }
}

/// Puts the session where it would be had it run on from `point`, whose marks are of this run.
/// What was heard from `uptime` on is not played again.
void RoundClock::RecallSince(const ClockPoint& point, double uptime) {
  Recall(point);
  heardFrom_ = uptime;
  CatchUp(kNever);
  heardFrom_ = kNever;
}

void RoundClock::Undo() {
  Handle([&] {
    auto step = undo_.Take(uptime_);
    if (!step) return;
    if (gap_) gap_->before.reset();
    // Else the scoring link would do it again at its next look.
    if (step->command == SessionCommand::AutoPause) step->before.state.mayAutoPause = false;
    parts_.events.Happened(EventKind::Undo, std::string(NameOf(step->command)));
    RecallSince(step->before, step->at);
  });
}

void RoundClock::TakeOutGap() {
  Handle([&] {
    if (!gap_ || !gap_->before) return;
    const Gap gap = *gap_;
    Remember(SessionCommand::TakeOutGap);
    gap_.reset();
    parts_.events.Happened(EventKind::Continue, face_.caption);
    RecallSince(Shifted(*gap.before, gap.seconds), gap.endedAt);
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
    CatchUp(kNever);
  });
}

}  // namespace corvanel
