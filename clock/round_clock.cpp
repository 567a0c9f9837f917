#include "clock/round_clock.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "session/captions.h"

namespace corvanel {
namespace {

constexpr double kEverySecond = 1;
constexpr double kToldFor = 300;  // seconds for which a gap that stays in is reported
constexpr double kAway = 30;      // seconds; a shorter gap is not worth the director's while

/// Seconds until a count-down next stands at a whole second. Ticking there, rather than once a
/// second from wherever it began, makes the shown seconds step evenly, and a late tick does not
/// delay the next one.
double ToNextWholeSecond(double left) {
  return left - std::max(std::ceil(left - kSameInstant) - 1, 0.0);
}

}  // namespace

/// Every command and tick: one reading of the time, what fell due meanwhile, then the work, the
/// new face and the wake-up for the next tick.
void RoundClock::Handle(const std::function<void()>& command) {
  by_.clear();
  HandlerSteps step(parts_.errors, "frmMain.TimerRound_Timer");
  step([&] { BringUpToDate(); });
  step(command);
  step([&] { Publish(now_); });
  step([&] { ArmTimer(); });
}

void RoundClock::Tick() {
  Handle([] {});
}

void RoundClock::BringUpToDate() {
  const double before = std::exchange(now_, parts_.time.Uptime());
  at_ = now_;
  heardFrom_ = kNever;
  if (gap_ && !gap_->before && now_ - gap_->endedAt > kToldFor) gap_.reset();
  // In a pause nothing counts down; but the finish gets later, and is written after every tick.
  if (!UnderWay() || state_.paused) return;
  if (now_ - wakesAt_ > kAway) NoticeGap(now_ - wakesAt_);
  CatchUp(before);
}

/// Goes through everything that fell due up to the present, each at its own moment. What should
/// have happened before the last look, at `since`, became due only by a setting changed meanwhile:
/// it happens as of then.
void RoundClock::CatchUp(double since) {
  while (UnderWay() && !state_.paused) {
    at_ = std::max(NextMoment(), since);
    if (at_ >= now_) break;
    Count();
  }
  at_ = now_;
  if (!state_.paused) Count();
}

double RoundClock::NextMoment() const {
  double next = state_.EndMark();
  const auto warnings = WarningsOf(Settings());
  for (size_t i = 0; i < kWarnings && Counting(); ++i) {
    if (state_.warningPending[i]) {
      next = std::min(next, state_.roundEnd - warnings[i].minutes * 60.0);
    }
  }
  return next;
}

/// What a tick does with the count-down that is on.
void RoundClock::Count() {
  if (state_.phase == Phase::Move) {
    TimerBetween_Timer();
  } else if (Counting()) {
    TimerRound_Timer();
  }
}

void RoundClock::Start(int16_t round) {
  Handle([&] {
    if (UnderWay()) {
      Remember(SessionCommand::Start);
    } else {
      // A session that has ended, or none, is of another evening: nothing leads back into it.
      undo_.Replace({});
      gap_.reset();
    }
    state_.round = round;
    state_.countsFrom = at_;
    StartRound();
  });
}

PossibleCommands RoundClock::Can() const {
  return {.pause = UnderWay() && !state_.paused,
          .resume = state_.paused,
          .nextRound = state_.phase != Phase::Idle && !InFinalRound(),
          .restart = state_.phase != Phase::Idle,
          .minutes = Counting() && !state_.paused};
}

void RoundClock::Do(SessionCommand command) {
  Handle([&] { CarryOut(command); });
}

void RoundClock::DoFor(const std::string& by, SessionCommand command,
                       const std::function<bool()>& still) {
  Handle([&] {
    if (!still()) return;
    by_ = by;
    CarryOut(command);
  });
}

void RoundClock::CarryOut(SessionCommand command) {
  switch (command) {
    case SessionCommand::Start:
      break;  // needs a round
    case SessionCommand::Pause:
    case SessionCommand::AutoPause:
      Pause(command == SessionCommand::AutoPause);
      break;
    case SessionCommand::Resume:
    case SessionCommand::AutoResume:
      Resume(command == SessionCommand::AutoResume);
      break;
    case SessionCommand::NextRound:
      if (!Can().nextRound) break;
      Remember(command);
      AdvanceRound();
      break;
    case SessionCommand::Restart:
      if (!Can().restart) break;
      Remember(command);
      // Rounds may have been struck off since the session ended.
      state_.round = std::min(state_.round, Settings().nRounds);
      StartRound();
      break;
    case SessionCommand::AddMinute:
      ChangeMinutes(1);
      break;
    case SessionCommand::SubtractMinute:
      ChangeMinutes(-1);
      break;
    case SessionCommand::AutoEnd:
      EndRoundNow();
      break;
    case SessionCommand::Undo:
      Undo();
      break;
    case SessionCommand::TakeOutGap:
      TakeOutGap();
      break;
    case SessionCommand::LeaveGapIn:
      gap_.reset();
      break;
  }
}

void RoundClock::Pause(bool automatic) {
  if (!Can().pause) return;
  Remember(automatic ? SessionCommand::AutoPause : SessionCommand::Pause);
  state_.pauseMark = now_;
  state_.paused = true;
  state_.autoPaused = automatic;
  parts_.listener.Happened(EventKind::Pause, MinutesAndSeconds(state_.At(now_).secondsLeft));
}

void RoundClock::Resume(bool automatic) {
  if (!Can().resume) return;
  if (!automatic) {
    Remember(SessionCommand::Resume);
    state_.mayAutoPause = false;
  }
  // Deliberate: both marks move, whichever count-down was running.
  state_.roundEnd += now_ - state_.pauseMark;
  state_.moveEnd += now_ - state_.pauseMark;
  state_.paused = false;
  state_.autoPaused = false;
  parts_.listener.Happened(EventKind::Resume, MinutesAndSeconds(state_.At(now_).secondsLeft));
}

void RoundClock::ChangeMinutes(int minutes) {
  if (!Can().minutes) return;
  const double left = state_.At(now_).secondsLeft + minutes * 60.0;
  if (left > kLongestPhase * 60) return;
  Remember(minutes > 0 ? SessionCommand::AddMinute : SessionCommand::SubtractMinute);
  state_.roundEnd = now_ + left;
  if (minutes > 0) TakeBackWarnings();
  TimerRound_Timer();
}

/// Every table has finished: the round ends at once, as at time up.
void RoundClock::EndRoundNow() {
  if (state_.phase != Phase::Round || state_.paused) return;
  Remember(SessionCommand::AutoEnd);
  state_.roundEnd = now_;
  state_.warningPending = {false, false};
  TimerRound_Timer();
}

void RoundClock::OmitWarnings(bool last, bool early) {
  if (state_.phase != Phase::Round) return;
  if (last) state_.warningPending[0] = false;
  if (early) state_.warningPending[1] = false;
}

void RoundClock::TimerCurrentTime_Timer() {
  parts_.listener.ShowTimeOfDay(TimeText(parts_.time.TimeOfDay(), parts_.session.options.Form()));
}

void RoundClock::Refresh() {
  Publish(parts_.time.Uptime());
}

/// Everything shown is worked out of the state and the settings as they are now.
ClockFace RoundClock::Face(double now) const {
  const SessionSettings& s = Settings();
  const Options& options = parts_.session.options;
  const Standing standing = state_.At(now);
  // After the end the finish stands.
  const double since = state_.phase == Phase::Ended ? now - state_.endedAt : 0;
  ClockFace face;
  face.phase = state_.phase;
  face.paused = state_.paused;
  face.round = state_.round;
  face.countsFrom = state_.countsFrom;
  face.secondsLeft = standing.secondsLeft;
  face.countdown =
      MinutesAndSeconds(ShownSeconds(standing.secondsLeft, CountdownStep(options.TimeChange)));
  face.countdownStyle = state_.style;
  face.caption = PhaseCaption(s, standing);
  if (state_.phase == Phase::Move) face.message = MoveMessage(s, state_.round);
  face.schedule = CalcFinish(s, standing, parts_.time.TimeOfDay().PlusSeconds(-since));
  face.finish = FinishLine(face.schedule.finish, options.Form());
  if (face.schedule.breakAt) face.breakLine = BreakLine(face.schedule, options.Form());
  face.can = Can();
  face.undo = undo_.Label(now);
  face.done = undo_.JustDone(now);
  face.away = gap_ ? gap_->seconds : 0;
  face.awayCanBeTakenOut = gap_ && gap_->before;
  return face;
}

/// With the time of day, so that a computer's clock that was set shows at once.
void RoundClock::Publish(double now) {
  if (state_.phase != Phase::Idle) parts_.listener.ShowFace(Face(now));
  TimerCurrentTime_Timer();
}

void RoundClock::ArmTimer() {
  double seconds = kEverySecond;
  if (UnderWay() && !state_.paused) {
    // A warning can lie between two seconds.
    seconds = std::min(ToNextWholeSecond(state_.At(now_).secondsLeft),
                       std::max(NextMoment() - now_, 0.0));
  } else if (!state_.paused && (state_.phase == Phase::Idle || undo_.Label(now_).empty())) {
    parts_.timer.Disarm();
    return;
  }
  wakesAt_ = now_ + seconds;
  parts_.timer.Arm(seconds);
}

}  // namespace corvanel
