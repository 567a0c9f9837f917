// The phases of a session: how each begins, warns, ends and leads to the next. The moment at which
// something happens is counter_; it is late_ seconds ago when the clock catches up.

#include "basics/numbers.h"
#include "clock/round_clock.h"
#include "session/captions.h"

namespace corvanel {
namespace {

constexpr double kSameInstant = 1e-6;  // seconds; what is lost in adding marks
constexpr double kLateCue = 30;        // seconds; a later one would only confuse the room

}  // namespace

void RoundClock::StartRound() {
  const SessionSettings& s = session_.settings;
  begunRound_ = session_.currentRound;
  begunAt_ = session_.startTime;
  state_.phase = Phase::Round;
  state_.inBreak = false;
  state_.paused = false;
  state_.autoPaused = false;
  state_.mayAutoPause = true;
  face_.caption = RoundCaption(session_.currentRound, s.nRounds);
  face_.message.clear();
  parts_.events.Happened(EventKind::Round, face_.caption);
  // A warning of 0 minutes is never given; the second one neither when its sound is off.
  state_.warningPending[0] = s.MinWarning > 0;
  state_.warningPending[1] =
      s.MinWarning1 > 0 && s.sounds.play[static_cast<size_t>(Cue::EarlyWarning)] != 0;
  OmitWarnings();
  CountDown(s.MinPerRound);
}

/// Starts the count-down of a round or break and ticks once, so that it shows without a wait.
void RoundClock::CountDown(double minutes) {
  state_.style = Element::TimeRemaining;
  state_.roundEnd = counter_ + minutes * 60;
  TimerRound_Timer();
}

void RoundClock::TimerRound_Timer() {
  state_.secondsLeft = SecondsRemaining(state_.roundEnd, counter_);
  GiveWarnings();
  if (state_.secondsLeft == 0) TimeUp();
}

void RoundClock::TimerBetween_Timer() {
  state_.secondsLeft = SecondsRemaining(state_.moveEnd, counter_);
  if (state_.secondsLeft == 0) AdvanceRound();
}

void RoundClock::GiveWarnings() {
  const std::array<float, kWarnings> minutes = {session_.settings.MinWarning,
                                                session_.settings.MinWarning1};
  for (size_t warning = 0; warning < kWarnings; ++warning) {
    if (state_.warningPending[warning] &&
        state_.secondsLeft <= minutes[warning] * 60.0 + kSameInstant) {
      GiveWarning(warning);
    }
  }
}

void RoundClock::GiveWarning(size_t warning) {
  state_.warningPending[warning] = false;
  state_.style = warning == 0 ? Element::LastWarning : Element::EarlyWarning;
  parts_.events.Happened(EventKind::Warning, std::string(NameOf(state_.style)));
  if (state_.phase == Phase::Break) {
    PlayCue(Cue::EndOfBreak);
  } else if (!InFinalRound() || session_.settings.sounds.playFinalRound[warning] != 0) {
    PlayCue(warning == 0 ? Cue::LastWarning : Cue::EarlyWarning);
  }
}

void RoundClock::TimeUp() {
  const SessionSettings& s = session_.settings;
  state_.style = Element::TimeUp;
  if (state_.phase == Phase::Break) {
    EndBreak();
  } else if (InFinalRound()) {
    EndSession();
  } else if (s.optBreak && session_.currentRound == s.BreakAfterRound) {
    BeginBreak();
  } else {
    BeginMove();
  }
}

void RoundClock::BeginMove() {
  const SessionSettings& s = session_.settings;
  const int round = session_.currentRound;
  state_.phase = Phase::Move;
  face_.message = MoveMessage(s, round);
  parts_.events.Happened(EventKind::Move, face_.message);
  const bool skip = InRoundList(s.Skip, round);
  const bool arrow = InRoundList(s.Arrow, round);
  if (skip) PlayCue(Cue::Skip);
  if (arrow) PlayCue(Cue::Arrow);
  if (!skip && !arrow) PlayCue(Cue::EndOfRound);
  session_.startTime = *ParseTime(TimeText(parts_.time.TimeOfDay().PlusSeconds(-late_)));
  begunAt_ = session_.startTime;
  state_.secondsLeft = s.MinBetweenRounds * 60.0;
  state_.moveEnd = counter_ + state_.secondsLeft;
}

void RoundClock::BeginBreak() {
  state_.phase = Phase::Break;
  state_.inBreak = true;
  face_.caption = kBreakCaption;
  parts_.events.Happened(EventKind::Break, face_.caption);
  PlayCue(Cue::Break);
  // The first warning rings at the end of the break; the second has no part in it.
  state_.warningPending = {session_.settings.MinWarning > 0, false};
  CountDown(session_.settings.TimeForBreak);
}

void RoundClock::EndBreak() {
  if (session_.settings.MoveAfterBreak && !InFinalRound()) {
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
  session_.currentRound = Checked16(session_.currentRound + 1);
  StartRound();
}

void RoundClock::EndSession() {
  state_.phase = Phase::Ended;
  state_.paused = false;
  state_.autoPaused = false;
  state_.secondsLeft = 0;
  face_.message.clear();
  schedule_ = {parts_.time.TimeOfDay().PlusSeconds(-late_), {}, {}};
  parts_.events.Happened(EventKind::End, "End of the session");
}

void RoundClock::PlayCue(Cue cue) {
  const SoundChoices& sounds = session_.settings.sounds;
  const auto index = static_cast<size_t>(cue);
  if (sounds.play[index] == 0 || sounds.files[index].empty()) return;
  if (late_ > kLateCue || playedAt_[index] >= heardFrom_) return;
  playedAt_[index] = uptime_;
  parts_.events.Happened(EventKind::Sound, std::string(FileName(sounds.files[index])));
  parts_.sounds.Play(sounds.files[index]);
}

}  // namespace corvanel
