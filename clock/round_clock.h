#pragma once

#include <array>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

#include "basics/runtime_error.h"
#include "clock/clock_state.h"
#include "clock/tick_timer.h"
#include "clock/undo_list.h"
#include "session/session.h"
#include "session/session_listener.h"
#include "session/sound_player.h"
#include "session/time_source.h"

namespace corvanel {

/// Runs a session round by round: counts down, warns, moves, takes the break, ends. Owns the round
/// in play.
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
/// | Start    | starts the round asked for, from any state                                      |
/// | Pause    | -      | pauses     | pauses          | pauses          | -        | -          |
/// | Resume   | -      | -          | -               | -               | -        | goes on    |
/// | Next     | -      | next round | next round now  | next round now  | next one | next round |
/// | Restart  | -      | again      | round just over | round just over | last one | as unpaused|
/// | +-minute | -      | changes    | -               | changes         | -        | -          |
/// | Undo     | takes the last command back, in any state                                        |
///
/// Next does nothing in the final round, and after the end only where rounds were added since.
/// After the director's own Resume the clock is not paused automatically again in this round.
class RoundClock {
 public:
  struct Parts {
    const Session& session;
    const TimeSource& time;
    TickTimer& timer;
    SoundPlayer& sounds;
    SessionListener& listener;
    ErrorTrap& errors;
  };
  explicit RoundClock(const Parts& parts) : parts_(parts) {}

  /// Starts the session with a round, 1 or more, from any state.
  void Start(int16_t round);
  /// Carries out any other command. Undo: the session stands where it would stand without the last
  /// one, and cues that were played since are not played again.
  void Do(SessionCommand command);
  /// The same for one that comes from the device `by`, where it was given on what was seen there:
  /// does nothing unless `still` holds of the clock as it stands at this moment.
  void DoFor(const std::string& by, SessionCommand command, const std::function<bool()>& still);
  /// Takes warnings of the round that counts down as given.
  void OmitWarnings(bool last, bool early);

  /// The timer fired: brings everything up to date.
  void Tick();
  /// Tells the time of day; to be called when its minute changes.
  void TimerCurrentTime_Timer();
  /// Shows everything anew, after the settings have changed.
  void Refresh();
  /// The time without ticks that is just ending was the program's own doing: it is no gap.
  void WasHeld() { wakesAt_ = kNever; }

  const ClockState& State() const { return state_; }
  PossibleCommands Can() const;
  bool UnderWay() const { return Runs(state_.phase); }
  /// Where the session stands at this moment.
  Standing Now() const { return state_.At(parts_.time.Uptime()); }
  /// The uptime at which something happens next if nobody touches the clock: a warning, or the end
  /// of the count-down. Only while it counts.
  double NextMoment() const;
  const std::vector<UndoStep>& UndoSteps() const { return undo_.Steps(); }
  /// What Undo would take back now; null when nothing.
  const UndoStep* NextUndo() const { return undo_.Next(parts_.time.Uptime()); }
  /// Goes on from a state of an earlier run of the program, its marks and those of its commands
  /// already by this run's uptime.
  void Continue(const ClockState& state, std::vector<UndoStep> undo);

 private:
  /// Time without ticks.
  struct Gap {
    double seconds = 0;
    double endedAt = 0;                // uptime
    std::optional<ClockState> before;  // while it can be taken out
  };
  static constexpr double kNever = std::numeric_limits<double>::infinity();

  const SessionSettings& Settings() const { return parts_.session.settings; }
  bool Counting() const { return state_.phase == Phase::Round || state_.phase == Phase::Break; }
  bool InFinalRound() const { return state_.round >= Settings().nRounds; }
  void Handle(const std::function<void()>& command);
  void CarryOut(SessionCommand command);
  void BringUpToDate();
  void CatchUp(double since);
  void Count();

  void Pause(bool automatic);
  void Resume(bool automatic);
  void ChangeMinutes(int minutes);
  void EndRoundNow();
  void Undo();
  void TakeOutGap();

  void StartRound();
  void CountDown(double minutes);
  void TimerRound_Timer();
  void TimerBetween_Timer();
  void GiveWarnings();
  void GiveWarning(size_t number);
  void TakeBackWarnings();
  void TimeUp();
  void BeginMove();
  void BeginBreak();
  void EndBreak();
  void AdvanceRound();
  void EndSession();
  void PlayCue(Cue cue);

  void NoticeGap(double away);
  void Remember(SessionCommand command);
  void Recall(const ClockState& state);
  void RecallSince(const ClockState& state, double uptime);

  ClockFace Face(double now) const;
  void Publish(double now);
  void ArmTimer();

  Parts parts_;
  ClockState state_;
  double now_ = 0;             // the one reading of the uptime that serves the whole tick
  double at_ = 0;              // the moment at which something happens; earlier when catching up
  double wakesAt_ = 0;         // uptime of the wake-up that is due
  double heardFrom_ = kNever;  // uptime from which a cue that was played is not played again
  std::array<double, kCues> playedAt_ = ForEachCue(-1.0);  // uptime
  UndoList undo_;
  std::string by_;  // the device that the command at hand came from
  std::optional<Gap> gap_;
};

}  // namespace corvanel
