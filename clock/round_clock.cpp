#include "clock/round_clock.h"

#include <algorithm>
#include <cmath>

#include "basics/numbers.h"
#include "session/captions.h"

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "frmMain";

/// A difference of more than this is not a long round but an end mark beyond midnight.
constexpr double kBeyondMidnight = 40000;

constexpr double kPauseTick = 1;  // seconds

/// Seconds until a count-down next stands at a whole second. Ticking there, rather than once a
/// second from wherever it began, makes the shown seconds step evenly, and a late tick does not
/// delay the next one.
double ToNextWholeSecond(double left) {
  constexpr double kSameInstant = 0.001;
  return left - std::max(std::ceil(left - kSameInstant) - 1, 0.0);
}

}  // namespace

double SecondsRemaining(double endMark, double counter) {
  double left = endMark - counter;
  if (left > kBeyondMidnight) left -= kSecondsPerDay;
  return left <= 0.5 ? 0 : left;
}

int CountdownStep(int timeChange) {
  return *std::min_element(kCountdownSteps.begin(), kCountdownSteps.end(), [&](int a, int b) {
    return std::abs(a - timeChange) < std::abs(b - timeChange);
  });
}

double ShownSeconds(double secondsLeft, int step) {
  const double whole = std::floor(secondsLeft + 0.5);
  return whole <= step ? whole : std::ceil(whole / step) * step;
}

double RoundClock::EndMark() const {
  return state_.phase == Phase::Move ? state_.moveEnd : state_.roundEnd;
}

Progress RoundClock::CurrentProgress() const {
  Progress progress{state_.phase, state_.secondsLeft, state_.inBreak};
  if (progress.Running() && !state_.paused) {
    progress.secondsLeft = SecondsRemaining(EndMark(), parts_.time.Counter());
  }
  return progress;
}

/// Every command and tick: one reading of the counter, then the work, then the wake-up for the
/// next tick and the new face.
void RoundClock::Handle(const std::function<void()>& command) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { counter_ = parts_.time.Counter(); });
  step(command);
  step([&] { WriteSchedule({state_.phase, state_.secondsLeft, state_.inBreak}); });
  step([&] { Publish(); });
  step([&] { ArmTimer(); });
}

void RoundClock::Tick() {
  Handle([&] {
    // In a pause nothing counts down; but the finish gets later, and is written after every tick.
    if (state_.paused) return;
    if (state_.phase == Phase::Move) {
      TimerBetween_Timer();
    } else if (Counting()) {
      TimerRound_Timer();
    }
  });
}

void RoundClock::TimerCurrentTime_Timer() {
  HandlerSteps(parts_.errors, kPlace)([&] {
    parts_.view.ShowTimeOfDay(TimeText(parts_.time.TimeOfDay(), session_.options.Form()));
  });
}

void RoundClock::Start() {
  TimerCurrentTime_Timer();
  Handle([&] { StartRound(); });
}

void RoundClock::Pause() {
  if (state_.paused || !CurrentProgress().Running()) return;
  Handle([&] {
    state_.pauseMark = counter_;
    state_.secondsLeft = SecondsRemaining(EndMark(), counter_);
    state_.paused = true;
    parts_.events.Happened(EventKind::Pause, MinutesAndSeconds(state_.secondsLeft));
  });
}

void RoundClock::Resume() {
  if (!state_.paused) return;
  Handle([&] {
    double length = counter_ - state_.pauseMark;
    if (length < 0) length += kSecondsPerDay;
    // Meant so: both marks move, whichever count-down was running.
    for (double* mark : {&state_.roundEnd, &state_.moveEnd}) {
      *mark += length;
      if (*mark - counter_ > kSecondsPerDay) *mark -= kSecondsPerDay;
    }
    state_.paused = false;
    parts_.events.Happened(EventKind::Resume, MinutesAndSeconds(state_.secondsLeft));
  });
}

void RoundClock::NextRound() {
  if (!CurrentProgress().Running() || InFinalRound()) return;
  Handle([&] { AdvanceRound(); });
}

void RoundClock::Restart() {
  if (state_.phase == Phase::Idle) return;
  Handle([&] { StartRound(); });
}

void RoundClock::ChangeMinutes(int minutes) {
  if (!Counting() || state_.paused) return;
  Handle([&] {
    const double left = SecondsRemaining(state_.roundEnd, counter_) + minutes * 60.0;
    if (left > kLongestPhase * 60) return;
    state_.roundEnd = counter_ + left;
    TimerRound_Timer();
  });
}

void RoundClock::EndRound() {
  if (state_.phase != Phase::Round || state_.paused) return;
  Handle([&] {
    state_.roundEnd = counter_;
    state_.warningPending = {false, false};
    TimerRound_Timer();
  });
}

void RoundClock::OmitWarnings() {
  if (state_.phase != Phase::Round || !session_.unitLinkOpen) return;
  const Options& options = session_.options;
  if (options.BMOmitwarning1) state_.warningPending[0] = false;
  if (options.BMOmitwarning2) state_.warningPending[1] = false;
}

void RoundClock::StartRound() {
  const SessionSettings& s = session_.settings;
  state_.phase = Phase::Round;
  state_.inBreak = false;
  state_.paused = false;
  face_.caption = RoundCaption(session_.currentRound, s.nRounds);
  face_.message.clear();
  parts_.events.Happened(EventKind::Round, face_.caption);
  // A warning of 0 minutes is never given; the second one neither when its sound is off.
  state_.warningPending[0] = s.MinWarning > 0;
  state_.warningPending[1] =
      s.MinWarning1 > 0 && s.sounds.play[static_cast<size_t>(Cue::SecondWarning)] != 0;
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
    if (state_.warningPending[warning] && state_.secondsLeft <= minutes[warning] * 60.0) {
      GiveWarning(warning);
    }
  }
}

void RoundClock::GiveWarning(size_t warning) {
  state_.warningPending[warning] = false;
  state_.style = warning == 0 ? Element::WarningPeriod : Element::BetweenWarnings;
  parts_.events.Happened(EventKind::Warning, std::string(NameOf(state_.style)));
  if (state_.phase == Phase::Break) {
    PlayCue(Cue::EndOfBreak);
  } else if (!InFinalRound() || session_.settings.sounds.playFinalRound[warning] != 0) {
    PlayCue(warning == 0 ? Cue::FirstWarning : Cue::SecondWarning);
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
  session_.startTime = *ParseTime(TimeText(parts_.time.TimeOfDay()));
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
  state_.secondsLeft = 0;
  face_.message.clear();
  parts_.events.Happened(EventKind::End, "End of the session");
}

void RoundClock::PlayCue(Cue cue) {
  const SoundChoices& sounds = session_.settings.sounds;
  const auto index = static_cast<size_t>(cue);
  if (sounds.play[index] == 0 || sounds.files[index].empty()) return;
  parts_.events.Happened(EventKind::Sound, std::string(FileName(sounds.files[index])));
  parts_.sounds.Play(sounds.files[index]);
}

void RoundClock::ArmTimer() {
  if (state_.paused) {
    parts_.timer.Arm(kPauseTick);
  } else if (Counting() || state_.phase == Phase::Move) {
    parts_.timer.Arm(ToNextWholeSecond(SecondsRemaining(EndMark(), counter_)));
  } else {
    parts_.timer.Disarm();
  }
}

void RoundClock::RefreshSchedule() {
  HandlerSteps(parts_.errors, kPlace)([&] {
    WriteSchedule(CurrentProgress());
    Publish();
  });
}

void RoundClock::WriteSchedule(const Progress& progress) {
  // After the end the last one stands, in whatever form times are written now.
  if (progress.Running()) {
    schedule_ =
        CalcFinish(session_.settings, session_.currentRound, progress, parts_.time.TimeOfDay());
  }
  const TimeForm form = session_.options.Form();
  face_.finish = FinishLine(schedule_.finish, form);
  face_.breakLine =
      schedule_.breakAt ? BreakLine(*schedule_.breakAt, *schedule_.breakEnd, form) : std::string();
}

void RoundClock::Publish() {
  if (state_.phase == Phase::Idle) return;
  face_.phase = state_.phase;
  face_.paused = state_.paused;
  face_.countdownStyle = state_.style;
  face_.secondsLeft = state_.secondsLeft;
  face_.countdown = MinutesAndSeconds(
      ShownSeconds(state_.secondsLeft, CountdownStep(session_.options.TimeChange)));
  parts_.view.ShowFace(face_);
}

}  // namespace corvanel
