#pragma once

#include <string>

#include "session/display_elements.h"
#include "session/timetable.h"

namespace corvanel {

/// Which of the director's commands mean something now.
struct PossibleCommands {
  bool pause = false;
  bool resume = false;
  bool nextRound = false;
  bool restart = false;
  bool minutes = false;  // one more or less

  bool operator==(const PossibleCommands&) const = default;
};

/// All that is shown of the clock. Every display is painted from such a value; only what differs
/// from the last one needs painting.
struct ClockFace {
  Phase phase = Phase::Idle;
  bool paused = false;
  int round = 1;           // in play, or just over
  double countsFrom = 0;   // uptime in seconds at which the last move, or the session, began
  std::string countdown;   // "12:47"
  double secondsLeft = 0;  // of the phase
  Element countdownStyle = Element::TimeRemaining;  // entry of the element table for it
  std::string caption;                              // of the round or break
  std::string message;                              // the move message; empty outside a move
  Schedule schedule;                                // as the session goes on now
  std::string finish;                               // "Finish at 22:31"
  std::string breakLine;  // "Break:20:53 End:21:08", empty when no break is ahead
  PossibleCommands can;
  std::string undo;  // "Undo next round, 12 s ago"; empty when nothing can be taken back
  std::string done;  // by the director a moment ago: "next round"; usually empty
  double away = 0;   // seconds that the computer was away, while that is worth telling
  bool awayCanBeTakenOut = false;
};

}  // namespace corvanel
