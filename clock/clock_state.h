#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "session/session.h"
#include "session/timetable.h"

namespace corvanel {

/// What the clock knows beyond the session's settings.
struct ClockState {
  Phase phase = Phase::Idle;
  bool paused = false;
  bool autoPaused = false;   // by the scoring link, which will also let it go on
  bool mayAutoPause = true;  // until the director lets a paused clock go on, in each round
  double roundEnd = 0;       // counter value at which the round or break ends; may exceed 86400
  double moveEnd = 0;        // counter value at which the move ends
  double pauseMark = 0;      // counter value at which the pause began
  double secondsLeft = 0;    // of the phase, as of the last tick
  std::array<bool, kWarnings> warningPending = {false, false};
  bool inBreak = false;  // from the start of the break until the next round starts
  Element style = Element::TimeRemaining;

  bool Running() const {
    return phase == Phase::Round || phase == Phase::Move || phase == Phase::Break;
  }
  bool operator==(const ClockState&) const = default;
};

/// Where a session stands: with the settings, all that is needed to go on from there. The seconds
/// left are 0 in it; they follow from the marks.
struct ClockPoint {
  ClockState state;
  int16_t currentRound = 1;
  ClockTime startTime;
  ClockTime finish;     // of a session that has ended
  std::string caption;  // of the round or break
  std::string message;  // of the move

  bool operator==(const ClockPoint&) const = default;
};

/// Moves the marks of a point by `seconds`, so that it lies that much later.
ClockPoint Shifted(ClockPoint point, double seconds);

}  // namespace corvanel
