#include "clock/round_clock.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "session/captions.h"

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "frmMain";

/// A difference of more than this is not a long round but an end mark beyond midnight.
constexpr double kBeyondMidnight = 40000;

constexpr double kEverySecond = 1;
constexpr double kToldFor = 300;  // seconds for which a gap that stays in is told of
constexpr double kAway = 30;      // seconds; a shorter gap is not worth the director's while

/// Seconds until a count-down next stands at a whole second. Ticking there, rather than once a
/// second from wherever it began, makes the shown seconds step evenly, and a late tick does not
/// delay the next one.
double ToNextWholeSecond(double left) {
  constexpr double kSameInstant = 0.001;
  return left - std::max(std::ceil(left - kSameInstant) - 1, 0.0);
}

}  // namespace

double Overdue(double mark, double counter) {
  double left = mark - counter;
  if (left > kBeyondMidnight) left -= kSecondsPerDay;
  // The same the other way about, where a mark was carried over from the day before.
  if (left < kBeyondMidnight - kSecondsPerDay) left += kSecondsPerDay;
  return -left;
}

double SecondsRemaining(double endMark, double counter) {
  const double left = -Overdue(endMark, counter);
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

/// Every command and tick: one reading of the counter, what fell due meanwhile, then the work, the
/// wake-up for the next tick and the new face.
void RoundClock::Handle(const std::function<void()>& command) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { BringUpToDate(); });
  step(command);
  step([&] { WriteSchedule({state_.phase, state_.secondsLeft, state_.inBreak}); });
  step([&] { Publish(); });
  step([&] { ArmTimer(); });
}

void RoundClock::Tick() {
  Handle([] {});
}

void RoundClock::BringUpToDate() {
  counter_ = parts_.time.Counter();
  const double before = std::exchange(uptime_, parts_.time.ThisMoment().uptime);
  late_ = 0;
  heardFrom_ = kNever;
  if (gap_ && !gap_->before && uptime_ - gap_->endedAt > kToldFor) gap_.reset();
  // In a pause nothing counts down; but the finish gets later, and is written after every tick.
  if (!state_.Running() || state_.paused) return;
  const double away = uptime_ - wakesAt_;
  if (away > kAway) NoticeGap(away);
  if (away > kBeyondMidnight) {
    // The marks of so long ago can no longer be told from those of today.
    const Schedule schedule = schedule_;
    EndSession();
    schedule_ = schedule;
    return;
  }
  CatchUp(uptime_ - before);
}

/// Counter value at which something happens next: a warning, or the end of the count-down.
double RoundClock::NextMoment() const {
  const std::array<float, kWarnings> minutes = {session_.settings.MinWarning,
                                                session_.settings.MinWarning1};
  double next = EndMark();
  for (size_t warning = 0; warning < kWarnings && Counting(); ++warning) {
    if (state_.warningPending[warning]) {
      next = std::min(next, state_.roundEnd - minutes[warning] * 60.0);
    }
  }
  return next;
}

/// Goes through everything that fell due up to the present, each at its own moment. What should
/// have happened before the last look, `seconds` ago, became due only by a setting changed since:
/// it happens as of then.
void RoundClock::CatchUp(double seconds) {
  const double now = counter_;
  while (state_.Running() && !state_.paused) {
    late_ = std::min(Overdue(NextMoment(), now), seconds);
    if (late_ <= 0) break;
    counter_ = ClockTime(now - late_).Seconds();
    Count();
  }
  late_ = 0;
  counter_ = now;
  if (!state_.paused) Count();
}

/// What a tick does with the count-down that is on.
void RoundClock::Count() {
  if (state_.phase == Phase::Move) {
    TimerBetween_Timer();
  } else if (Counting()) {
    TimerRound_Timer();
  }
}

void RoundClock::TimerCurrentTime_Timer() {
  HandlerSteps(parts_.errors, kPlace)([&] {
    parts_.view.ShowTimeOfDay(TimeText(parts_.time.TimeOfDay(), session_.options.Form()));
  });
}

void RoundClock::Start() {
  TimerCurrentTime_Timer();
  Handle([&] {
    RememberStart();
    StartRound();
  });
}

void RoundClock::Pause(Hand hand) {
  Handle([&] {
    if (state_.paused || !state_.Running()) return;
    Remember(hand == Hand::Link ? SessionCommand::AutoPause : SessionCommand::Pause);
    state_.pauseMark = counter_;
    state_.secondsLeft = SecondsRemaining(EndMark(), counter_);
    state_.paused = true;
    state_.autoPaused = hand == Hand::Link;
    parts_.events.Happened(EventKind::Pause, MinutesAndSeconds(state_.secondsLeft));
  });
}

void RoundClock::Resume(Hand hand) {
  if (!state_.paused) return;
  Handle([&] {
    if (hand == Hand::Director) {
      Remember(SessionCommand::Resume);
      state_.mayAutoPause = false;
    }
    double length = counter_ - state_.pauseMark;
    if (length < 0) length += kSecondsPerDay;
    // Meant so: both marks move, whichever count-down was running.
    for (double* mark : {&state_.roundEnd, &state_.moveEnd}) {
      *mark += length;
      if (*mark - counter_ > kSecondsPerDay) *mark -= kSecondsPerDay;
    }
    state_.paused = false;
    state_.autoPaused = false;
    parts_.events.Happened(EventKind::Resume, MinutesAndSeconds(state_.secondsLeft));
  });
}

void RoundClock::NextRound() {
  Handle([&] {
    if (!state_.Running() || InFinalRound()) return;
    Remember(SessionCommand::NextRound);
    AdvanceRound();
  });
}

void RoundClock::Restart() {
  if (state_.phase == Phase::Idle) return;
  Handle([&] {
    Remember(SessionCommand::Restart);
    StartRound();
  });
}

void RoundClock::ChangeMinutes(int minutes) {
  Handle([&] {
    if (!Counting() || state_.paused) return;
    const double left = SecondsRemaining(state_.roundEnd, counter_) + minutes * 60.0;
    if (left > kLongestPhase * 60) return;
    Remember(minutes > 0 ? SessionCommand::AddMinute : SessionCommand::SubtractMinute);
    state_.roundEnd = counter_ + left;
    TimerRound_Timer();
  });
}

void RoundClock::EndRound() {
  Handle([&] {
    if (state_.phase != Phase::Round || state_.paused) return;
    Remember(SessionCommand::AutoEnd);
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

void RoundClock::ArmTimer() {
  if (state_.paused || (state_.phase == Phase::Ended && !face_.undo.empty())) {
    Arm(kEverySecond);
  } else if (state_.Running()) {
    Arm(ToNextWholeSecond(SecondsRemaining(EndMark(), counter_)));
  } else {
    parts_.timer.Disarm();
  }
}

void RoundClock::Arm(double seconds) {
  wakesAt_ = uptime_ + seconds;
  parts_.timer.Arm(seconds);
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
  face_.undo = undo_.Label(uptime_);
  face_.away = gap_ ? gap_->seconds : 0;
  face_.awayCanBeTakenOut = gap_ && gap_->before;
  parts_.view.ShowFace(face_);
}

}  // namespace corvanel
