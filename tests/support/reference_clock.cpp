#include "tests/support/reference_clock.h"

#include <algorithm>
#include <limits>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr double kAlways = std::numeric_limits<double>::infinity();

}  // namespace

double ReferenceClock::Limit(size_t warning) const {
  return (warning == 0 ? settings_.MinWarning : settings_.MinWarning1) * 60.0;
}

void ReferenceClock::AdvanceTo(double now) {
  before_ = state_;
  beforeAt_ = now_;
  const double seconds = now - now_;
  now_ = now;
  Run(seconds, kAlways);
}

/// Step by step from one thing that happens to the next.
void ReferenceClock::Run(double seconds, double heardFrom) {
  while (Running() && !state_.paused) {
    double next = state_.left;
    for (size_t warning = 0; warning < kWarnings && state_.phase != Phase::Move; ++warning) {
      if (!state_.warned[warning]) {
        next = std::min(next, std::max(state_.left - Limit(warning), 0.0));
      }
    }
    if (next > seconds + 1e-6) break;
    seconds -= next;
    state_.left -= next;
    Happen(std::max(seconds, 0.0), heardFrom);
  }
  if (!Running() || state_.paused) return;
  state_.left -= seconds;
  if (state_.left <= 0.5) {
    state_.left = 0;
    Happen(0, heardFrom);
    Run(0, heardFrom);
  }
}

void ReferenceClock::Happen(double late, double heardFrom) {
  const SessionSettings& s = settings_;
  const bool final = state_.round >= s.nRounds;
  for (size_t warning = 0; warning < kWarnings && state_.phase != Phase::Move; ++warning) {
    if (state_.warned[warning] || state_.left > Limit(warning) + 1e-6) continue;
    state_.warned[warning] = state_.given[warning] = true;
    if (state_.phase == Phase::Break) {
      Play(Cue::EndOfBreak, late, heardFrom);
    } else if (!final || s.sounds.playFinalRound[warning]) {
      Play(warning == 0 ? Cue::LastWarning : Cue::EarlyWarning, late, heardFrom);
    }
  }
  if (state_.left > 1e-6) return;
  if (state_.phase == Phase::Move) {
    GoToNextRound();
  } else if (state_.phase == Phase::Break) {
    s.MoveAfterBreak && !final ? BeginMove(late, heardFrom) : GoToNextRound();
  } else if (final) {
    state_.phase = Phase::Ended;
  } else if (s.optBreak && s.TimeForBreak > 0 && state_.round == s.BreakAfterRound) {
    state_.phase = Phase::Break;
    state_.left = s.TimeForBreak * 60.0;
    state_.warned = {s.MinWarning <= 0, true};
    state_.given = {};
    Play(Cue::Break, late, heardFrom);
  } else {
    BeginMove(late, heardFrom);
  }
}

void ReferenceClock::BeginMove(double late, double heardFrom) {
  const SessionSettings& s = settings_;
  state_.phase = Phase::Move;
  state_.left = s.MinBetweenRounds * 60.0;
  const bool skip = s.Skip.Lists(state_.round);
  const bool arrow = s.Arrow.Lists(state_.round);
  if (skip) Play(Cue::Skip, late, heardFrom);
  if (arrow) Play(Cue::Arrow, late, heardFrom);
  if (!skip && !arrow) Play(Cue::EndOfRound, late, heardFrom);
}

void ReferenceClock::GoToNextRound() {
  ++state_.round;
  BeginRound();
}

void ReferenceClock::BeginRound() {
  state_.phase = Phase::Round;
  state_.paused = false;
  state_.left = settings_.MinPerRound * 60.0;
  state_.given = {};
  for (size_t warning = 0; warning < kWarnings; ++warning) {
    state_.warned[warning] = omitsWarnings || Limit(warning) <= 0;
  }
}

void ReferenceClock::Play(Cue cue, double late, double heardFrom) {
  const std::string& file = settings_.sounds.files[static_cast<size_t>(cue)];
  const auto heard = heard_.find(cue);
  if (late > 30 || (heard != heard_.end() && heard->second >= heardFrom)) return;
  heard_[cue] = now_;
  cues.push_back(file);
}

void ReferenceClock::Remember() {
  if (snapshots_.size() == UndoList::kLevels) snapshots_.erase(snapshots_.begin());
  snapshots_.push_back({state_, now_, now_});
}

void ReferenceClock::Start() {
  BeginRound();
  Run(0, kAlways);
}

void ReferenceClock::Pause() {
  if (!Running() || state_.paused) return;
  Remember();
  state_.paused = true;
}

void ReferenceClock::Resume() {
  if (!state_.paused) return;
  Remember();
  state_.paused = false;
}

void ReferenceClock::NextRound() {
  if (!Running() || state_.round >= settings_.nRounds) return;
  Remember();
  GoToNextRound();
  Run(0, kAlways);
}

void ReferenceClock::Restart() {
  if (state_.phase == Phase::Idle) return;
  Remember();
  BeginRound();
  Run(0, kAlways);
}

void ReferenceClock::ChangeMinutes(int minutes) {
  if ((state_.phase != Phase::Round && state_.phase != Phase::Break) || state_.paused) return;
  const double left = state_.left + minutes * 60;
  if (left > kLongestPhase * 60) return;
  Remember();
  state_.left = std::max(left, 0.0);
  for (size_t warning = 0; warning < kWarnings && minutes > 0; ++warning) {
    if (state_.given[warning] && state_.left > Limit(warning) + 1e-6) {
      state_.warned[warning] = state_.given[warning] = false;
    }
  }
  Run(0, kAlways);
}

void ReferenceClock::EndRound() {
  if (state_.phase != Phase::Round || state_.paused) return;
  Remember();
  state_.left = 0;
  state_.warned = {true, true};
  Run(0, kAlways);
}

void ReferenceClock::Undo() {
  if (snapshots_.empty() || now_ - snapshots_.back().at >= UndoList::kForgottenAfter) return;
  const Snapshot snapshot = snapshots_.back();
  snapshots_.pop_back();
  state_ = snapshot.state;
  Run(now_ - snapshot.from, snapshot.at);
}

void ReferenceClock::TakeOut(double seconds) {
  const State before = before_;
  Remember();
  state_ = before;
  Run(now_ - beforeAt_ - seconds, now_);
}

void ReferenceClock::GoOnFromWhereItStopped(double now) {
  for (Snapshot& snapshot : snapshots_) snapshot.from += now - now_;
  now_ = now;
}

}  // namespace corvanel
