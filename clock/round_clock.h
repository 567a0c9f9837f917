#pragma once

#include <array>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

#include "basics/runtime_error.h"
#include "clock/clock_state.h"
#include "clock/clock_view.h"
#include "clock/undo_list.h"
#include "control/control_window_view.h"
#include "session/session.h"
#include "session/sound_player.h"
#include "session/time_source.h"

namespace corvanel {

/// Who asks for a pause or lets the clock go on.
enum class Hand { Director, Link };

/// Runs a session round by round: counts down, warns, moves, takes the break, ends.
///
/// Everything follows from end marks: a tick that comes late loses no time, and one that comes
/// twice changes nothing. However long no tick came (a computer asleep, a process stopped), the
/// session then stands where it would stand had every tick come in time: each round, move and
/// break that ran out meanwhile ended at its own mark. Cues more than half a minute late are not
/// played. After a gap of more than half a minute the director can take it out again.
///
/// Every command is defined in every state; one without a meaning there does nothing:
///
/// | command  | idle   | round      | move            | break           | ended    | paused     |
/// |----------|--------|------------|-----------------|-----------------|----------|------------|
/// | Start    | starts the current round from any state                                          |
/// | Pause    | -      | pauses     | pauses          | pauses          | -        | -          |
/// | Resume   | -      | -          | -               | -               | -        | goes on    |
/// | Next     | -      | next round | next round now  | next round now  | -        | next round |
/// | Restart  | -      | again      | round just over | round just over | last one | as unpaused|
/// | +-minute | -      | changes    | -               | changes         | -        | -          |
/// | Undo     | takes the last command back, in any state                                        |
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
  void Pause(Hand hand = Hand::Director);
  /// Lets a paused clock go on. After the director's own it is not paused automatically again in
  /// this round.
  void Resume(Hand hand = Hand::Director);
  void NextRound();
  void Restart();
  /// Adds minutes (or takes them off) while a round or break counts down.
  void ChangeMinutes(int minutes);

  /// Takes back the last command: the session stands where it would stand without it. Cues that
  /// were played since are not played again.
  void Undo();
  /// Takes out the time that the computer was away, while that is offered.
  void TakeOutGap();
  void LeaveGapIn();
  /// The time without ticks that is just ending was the program's own doing.
  void WasHeld() { wakesAt_ = kNever; }

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

  /// Where the session stands.
  ClockPoint Point() const;
  const std::vector<UndoStep>& UndoSteps() const { return undo_.Steps(); }
  /// Goes on from a point of an earlier run of the program, its marks and the uptimes of its
  /// commands already by this run's clocks.
  void Continue(const ClockPoint& point, std::vector<UndoStep> undo);

  const ClockFace& Face() const { return face_; }

 private:
  /// Time without ticks.
  struct Gap {
    double seconds = 0;
    double endedAt = 0;                // uptime
    std::optional<ClockPoint> before;  // while it can be taken out
  };

  bool Counting() const { return state_.phase == Phase::Round || state_.phase == Phase::Break; }
  double EndMark() const;
  void Handle(const std::function<void()>& command);
  void BringUpToDate();
  double NextMoment() const;
  void CatchUp(double seconds);
  void Count();
  void NoticeGap(double away);
  void Remember(SessionCommand command);
  void RememberStart();
  void Recall(const ClockPoint& point);
  void RecallSince(const ClockPoint& point, double uptime);
  void StartRound();
  void TimerRound_Timer();
  void TimerBetween_Timer();
  void CountDown(double minutes);
  void GiveWarnings();
  void GiveWarning(size_t warning);
  void TimeUp();
  void BeginMove();
  void BeginBreak();
  void EndBreak();
  void AdvanceRound();
  void EndSession();
  void PlayCue(Cue cue);
  bool InFinalRound() const { return session_.currentRound >= session_.settings.nRounds; }
  void ArmTimer();
  void Arm(double seconds);
  void WriteSchedule(const Progress& progress);
  void Publish();

  Parts parts_;
  Session& session_ = parts_.session;
  ClockState state_;
  ClockFace face_;
  Schedule schedule_;   // as it was last worked out
  double counter_ = 0;  // the one reading of the counter that serves the whole tick
  double uptime_ = 0;   // and of the uptime
  double wakesAt_ = 0;  // uptime of the wake-up that is due
  double late_ = 0;     // seconds by which what happens in this step of catching up is late
  static constexpr double kNever = std::numeric_limits<double>::infinity();
  double heardFrom_ = kNever;  // uptime from which a cue that was played is not played again
  std::array<double, kCues> playedAt_ = {-1, -1, -1, -1, -1, -1, -1};  // uptime
  UndoList undo_;
  std::optional<Gap> gap_;
  // As the clock began it; the director may have set another one since.
  int16_t begunRound_ = 1;
  ClockTime begunAt_;
};

/// Seconds from `mark` to `counter`: over midnight where they lie on two days; negative while the
/// mark lies ahead.
double Overdue(double mark, double counter);

/// Seconds from `counter` to `endMark`: over midnight where the marks lie on two days, and 0 when
/// half a second or less is left.
double SecondsRemaining(double endMark, double counter);

/// The countdown's step in seconds for a stored choice: the nearest of 1, 5, 10, 15, 20, 30, 60.
int CountdownStep(int timeChange);

/// What the countdown shows for the seconds left: the next full step above, so that it never says
/// less than there is; from the last step on every single second, to 0 at the very end.
double ShownSeconds(double secondsLeft, int step);

}  // namespace corvanel
