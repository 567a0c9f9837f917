#pragma once

#include <array>
#include <functional>

#include "basics/runtime_error.h"
#include "clock/clock_view.h"
#include "session/control_window_view.h"
#include "session/session.h"
#include "session/sound_player.h"
#include "session/time_source.h"

namespace corvanel {

/// What the clock knows beyond the session's settings.
struct ClockState {
  Phase phase = Phase::Idle;
  bool paused = false;
  double roundEnd = 0;     // counter value at which the round or break ends; may exceed 86400
  double moveEnd = 0;      // counter value at which the move ends
  double pauseMark = 0;    // counter value at which the pause began
  double secondsLeft = 0;  // of the phase, as of the last tick
  std::array<bool, kWarnings> warningPending = {false, false};
  bool inBreak = false;  // from the start of the break until the next round starts
  Element style = Element::TimeRemaining;
};

/// Runs a session round by round: counts down, warns, moves, takes the break, ends.
///
/// Everything follows from end marks: a tick that comes late loses no time, and one that comes
/// twice changes nothing. Every command is defined in every state; one without a meaning there
/// does nothing:
///
/// | command  | idle   | round      | move            | break           | ended    | paused     |
/// |----------|--------|------------|-----------------|-----------------|----------|------------|
/// | Start    | starts the current round from any state                                          |
/// | Pause    | -      | pauses     | pauses          | pauses          | -        | -          |
/// | Resume   | -      | -          | -               | -               | -        | goes on    |
/// | Next     | -      | next round | next round now  | next round now  | -        | next round |
/// | Restart  | -      | again      | round just over | round just over | last one | as unpaused|
/// | +-minute | -      | changes    | -               | changes         | -        | -          |
///
/// Next does nothing in the final round.
class RoundClock : public SessionClock {
 public:
  struct Parts {
    Session& session;
    const TimeSource& time;
    TickTimer& timer;
    ClockView& view;
    SoundPlayer& sounds;
    ClockEvents& events;
    ErrorTrap& errors;
  };
  explicit RoundClock(const Parts& parts) : parts_(parts) {}

  // The session's commands.
  void Start() override;
  void Pause();
  void Resume();
  void NextRound();
  void Restart();
  /// Adds minutes (or takes them off) while a round or break counts down.
  void ChangeMinutes(int minutes);

  /// Every table has finished: ends the round that counts down at once, as at time up.
  void EndRound();
  /// While a scoring database is open its options can omit the warnings of rounds: takes them as
  /// given in the round that counts down.
  void OmitWarnings();

  /// The timer fired: runs the tick of the count-down that is on.
  void Tick();
  /// The time of day on the displays, to be called at least once a second.
  void TimerCurrentTime_Timer();

  Progress CurrentProgress() const override;
  void RefreshSchedule() override;
  const ClockState& State() const { return state_; }
  const ClockFace& Face() const { return face_; }

 private:
  bool Counting() const { return state_.phase == Phase::Round || state_.phase == Phase::Break; }
  double EndMark() const;
  void Handle(const std::function<void()>& command);
  void StartRound();
  void TimerRound_Timer();
  void TimerBetween_Timer();
  void CountDown(double minutes);
  void GiveWarnings();
  void GiveWarning(size_t warning);
  void PlayWarning(size_t warning);
  void TimeUp();
  void BeginMove();
  void BeginBreak();
  void EndBreak();
  void AdvanceRound();
  void EndSession();
  void PlayCue(Cue cue);
  bool InFinalRound() const { return session_.currentRound >= session_.settings.nRounds; }
  void ArmTimer();
  void WriteSchedule(const Progress& progress);
  void Publish();

  Parts parts_;
  Session& session_ = parts_.session;
  ClockState state_;
  ClockFace face_;
  Schedule schedule_;   // as it was last worked out
  double counter_ = 0;  // the one reading of the counter that serves the whole tick
};

/// Seconds from `counter` to `endMark`: over midnight where the marks lie on two days, and 0 when
/// half a second or less is left.
double SecondsRemaining(double endMark, double counter);

/// The countdown's step in seconds for a stored choice: the nearest of 1, 5, 10, 15, 20, 30, 60.
int CountdownStep(int timeChange);

/// What the countdown shows for the seconds left: the next full step above, so that it never says
/// less than there is; from the last step on every single second, to 0 at the very end.
double ShownSeconds(double secondsLeft, int step);

}  // namespace corvanel
