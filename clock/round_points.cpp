// How a session is put somewhere else than it stands: undo, gaps, an earlier run.

#include <algorithm>
#include <utility>

#include "clock/round_clock.h"
#include "session/captions.h"

namespace corvanel {

/// A gap that follows another, with no command between them, is taken out together with it.
void RoundClock::NoticeGap(double away) {
  Gap gap{away, now_, state_};
  if (gap_ && gap_->before) {
    gap.seconds += gap_->seconds;
    gap.before = gap_->before;
  }
  gap_ = gap;
}

/// Before a command takes effect.
void RoundClock::Remember(SessionCommand command) {
  undo_.Push({command, now_, state_, by_});
  // From here on it would take more than the gap out.
  if (gap_) gap_->before.reset();
}

void RoundClock::Recall(const ClockState& state) {
  state_ = state;
  // Rounds may have been struck off meanwhile.
  state_.round = std::min(state.round, Settings().nRounds);
}

/// Puts the session where it would be had it run on from `state`. What was heard from `uptime` on
/// is not played again.
void RoundClock::RecallSince(const ClockState& state, double uptime) {
  Recall(state);
  heardFrom_ = uptime;
  CatchUp(-kNever);
  heardFrom_ = kNever;
}

void RoundClock::Undo() {
  auto step = undo_.Take(now_);
  if (!step) return;
  if (gap_) gap_->before.reset();
  // Else the scoring link would do it again at its next look.
  if (step->command == SessionCommand::AutoPause) step->before.mayAutoPause = false;
  parts_.listener.Happened(EventKind::Undo, std::string(NameOf(step->command)));
  RecallSince(step->before, step->at);
}

void RoundClock::TakeOutGap() {
  if (!gap_ || !gap_->before) return;
  const Gap gap = *gap_;
  Remember(SessionCommand::TakeOutGap);
  gap_.reset();
  parts_.listener.Happened(EventKind::Continue, PhaseCaption(Settings(), state_.At(now_)));
  RecallSince(gap.before->Shifted(gap.seconds), gap.endedAt);
}

void RoundClock::Continue(const ClockState& state, std::vector<UndoStep> undo) {
  state_ = {};
  Handle([&] {
    undo_.Replace(std::move(undo));
    Recall(state);
    parts_.listener.Happened(EventKind::Continue, PhaseCaption(Settings(), state_.At(now_)));
    CatchUp(-kNever);
  });
}

}  // namespace corvanel
