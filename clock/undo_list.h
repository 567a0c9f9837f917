#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clock/clock_state.h"

namespace corvanel {

/// The one vocabulary of what can be done to a running session, by key, by button or by the
/// scoring link (Auto...). Those before AutoResume can be taken back.
enum class SessionCommand {
  Start,
  Pause,
  Resume,
  NextRound,
  Restart,
  AddMinute,
  SubtractMinute,
  AutoPause,
  AutoEnd,     // of a round that every table has finished
  TakeOutGap,  // the time that the computer was away
  AutoResume,
  Undo,
  LeaveGapIn
};

/// The command as it is named to the director: "next round". Empty for one that cannot be taken
/// back.
std::string_view NameOf(SessionCommand command);

/// A command with what there was before it.
struct UndoStep {
  SessionCommand command = SessionCommand::Start;
  double at = 0;  // uptime in seconds
  ClockState before;
  std::string by = {};  // the device that it came from; empty: this computer

  bool operator==(const UndoStep&) const = default;
};

/// The last commands, the latest at the end. What was done long ago is no slip of the hand, and
/// taking it back by another slip would change the whole evening: it is forgotten.
class UndoList {
 public:
  static constexpr size_t kLevels = 20;
  static constexpr double kForgottenAfter = 900;  // seconds
  static constexpr double kJustNow = 5;           // seconds

  void Push(const UndoStep& step);
  /// The command to take back at `uptime`, off the list; nothing when there is none.
  std::optional<UndoStep> Take(double uptime);
  /// The same, left on the list; null when there is none.
  const UndoStep* Next(double uptime) const;
  /// "Undo next round, 12 s ago"; empty when nothing can be taken back.
  std::string Label(double uptime) const;
  /// What the director did a moment ago, by button, key or device: "next round", "pause by Ann's
  /// phone". Empty when nothing, and for a start.
  std::string JustDone(double uptime) const;
  const std::vector<UndoStep>& Steps() const { return steps_; }
  void Replace(std::vector<UndoStep> steps) { steps_ = std::move(steps); }

 private:
  std::vector<UndoStep> steps_;
};

}  // namespace corvanel
