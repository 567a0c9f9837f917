// The phases of a session: how each begins, warns, ends and leads to the next. The moment at which
// something happens is at_; it lies before now_ when the clock catches up.

#include "basics/numbers.h"
#include "clock/round_clock.h"
#include "session/captions.h"

namespace corvanel {
namespace {

constexpr double kLateCue = 30;  // seconds; a later one would only confuse the room

}  // namespace

void RoundClock::StartRound() {
  const SessionSettings& s = Settings();
  state_.phase = Phase::Round;
  state_.paused = false;
  state_.autoPaused = false;
  state_.mayAutoPause = true;
  // A warning of 0 minutes is never given; the early one neither when its sound is off.
  state_.warningPending = {
      s.MinWarning > 0, s.MinWarning1 > 0 && s.sounds.play[static_cast<size_t>(Cue::EarlyWarning)]};
  parts_.listener.Happened(EventKind::Round, RoundCaption(state_.round, s.nRounds));
  CountDown(s.MinPerRound);
}

/// Starts the count-down of a round or break and ticks once, so that it shows without a wait.
void RoundClock::CountDown(double minutes) {
  state_.style = Element::TimeRemaining;
  state_.warningGiven = {false, false};
  state_.roundEnd = at_ + minutes * 60;
  TimerRound_Timer();
}

void RoundClock::TimerRound_Timer() {
  GiveWarnings();
  if (state_.At(at_).secondsLeft == 0) TimeUp();
}

void RoundClock::TimerBetween_Timer() {
  if (state_.At(at_).secondsLeft == 0) AdvanceRound();
}

/// Minutes were added: a warning that was given and lies ahead again is given again, and the
/// count-down looks as it did before it.
void RoundClock::TakeBackWarnings() {
  const double left = state_.At(at_).secondsLeft;
  const auto warnings = WarningsOf(Settings());
  state_.style = Element::TimeRemaining;
  // The early one first: the last one decides on the look.
  for (const size_t i : {1, 0}) {
    if (!state_.warningGiven[i]) continue;
    const bool ahead = left > warnings[i].minutes * 60.0 + kSameInstant;
    state_.warningPending[i] = ahead;
    state_.warningGiven[i] = !ahead;
    if (!ahead) state_.style = warnings[i].style;
  }
}

void RoundClock::GiveWarnings() {
  const double left = state_.At(at_).secondsLeft;
  const auto warnings = WarningsOf(Settings());
  for (size_t i = 0; i < kWarnings; ++i) {
    if (state_.warningPending[i] && left <= warnings[i].minutes * 60.0 + kSameInstant) {
      GiveWarning(i);
    }
  }
}

void RoundClock::GiveWarning(size_t number) {
  const Warning warning = WarningsOf(Settings())[number];
  state_.warningPending[number] = false;
  state_.warningGiven[number] = true;
  state_.style = warning.style;
  parts_.listener.Happened(EventKind::Warning, std::string(NameOf(warning.style)));
  if (state_.phase == Phase::Break) {
    PlayCue(Cue::EndOfBreak);
  } else if (!InFinalRound() || Settings().sounds.playFinalRound[number]) {
    PlayCue(warning.cue);
  }
}

void RoundClock::TimeUp() {
  const SessionSettings& s = Settings();
  state_.style = Element::TimeUp;
  if (state_.phase == Phase::Break) {
    EndBreak();
  } else if (InFinalRound()) {
    EndSession();
  } else if (s.BreakFollows(state_.round)) {
    BeginBreak();
  } else {
    BeginMove();
  }
}

void RoundClock::BeginMove() {
  const SessionSettings& s = Settings();
  state_.phase = Phase::Move;
  parts_.listener.Happened(EventKind::Move, MoveMessage(s, state_.round));
  const bool skip = s.Skip.Lists(state_.round);
  const bool arrow = s.Arrow.Lists(state_.round);
  if (skip) PlayCue(Cue::Skip);
  if (arrow) PlayCue(Cue::Arrow);
  if (!skip && !arrow) PlayCue(Cue::EndOfRound);
  state_.countsFrom = at_;
  state_.moveEnd = at_ + s.MinBetweenRounds * 60.0;
}

void RoundClock::BeginBreak() {
  state_.phase = Phase::Break;
  parts_.listener.Happened(EventKind::Break,
                           PhaseCaption(Settings(), {Phase::Break, state_.round}));
  PlayCue(Cue::Break);
  // The last warning rings at the end of the break; the early one has no part in it.
  state_.warningPending = {Settings().MinWarning > 0, false};
  CountDown(Settings().TimeForBreak);
}

void RoundClock::EndBreak() {
  if (Settings().MoveAfterBreak && !InFinalRound()) {
    BeginMove();
  } else {
    AdvanceRound();
  }
}

/// Starts the round after the current one. There may be none when the director has shortened the
/// session meanwhile.
void RoundClock::AdvanceRound() {
  if (InFinalRound()) {
    EndSession();
    return;
  }
  ++state_.round;
  StartRound();
}

void RoundClock::EndSession() {
  state_.phase = Phase::Ended;
  state_.paused = false;
  state_.autoPaused = false;
  state_.endedAt = at_;
  parts_.listener.Happened(EventKind::End, "End of the session");
}

void RoundClock::PlayCue(Cue cue) {
  const SoundChoices& sounds = Settings().sounds;
  const auto index = static_cast<size_t>(cue);
  if (!sounds.play[index] || sounds.files[index].empty()) return;
  if (now_ - at_ > kLateCue || playedAt_[index] >= heardFrom_) return;
  playedAt_[index] = now_;
  parts_.listener.Happened(EventKind::Sound, std::string(FileName(sounds.files[index])));
  parts_.sounds.Play(sounds.files[index]);
}

}  // namespace corvanel
