#pragma once

#include <array>

#include "session/countdown.h"
#include "session/timetable.h"

namespace corvanel {

/// Moments that lie no further apart are one, seconds: minutes are stored with seven digits.
constexpr double kSameInstant = 0.001;

/// Where a running session stands. With the settings it is all that is needed to go on from there;
/// what is shown follows from it. Every mark is an uptime in seconds.
struct ClockState {
  Phase phase = Phase::Idle;
  int16_t round = 1;  // in play, or just over
  bool paused = false;
  bool autoPaused = false;   // by the scoring link, which will also let it go on
  bool mayAutoPause = true;  // until the director lets a paused clock go on, in each round
  double roundEnd = 0;       // the round or break ends
  double moveEnd = 0;        // the move ends
  double pauseMark = 0;      // the pause began
  double countsFrom = 0;     // the last move, or the session, began
  double endedAt = 0;        // the session ended
  std::array<bool, kWarnings> warningPending = {false, false};
  std::array<bool, kWarnings> warningGiven = {false, false};
  Element style = Element::TimeRemaining;

  bool operator==(const ClockState&) const = default;

  double EndMark() const { return phase == Phase::Move ? moveEnd : roundEnd; }
  /// Where the session stands at the uptime `now`, which counts for nothing while it is paused.
  Standing At(double now) const {
    const double left = Runs(phase) ? SecondsRemaining(EndMark(), paused ? pauseMark : now) : 0;
    return {phase, round, left};
  }
  /// The same place `seconds` later.
  ClockState Shifted(double seconds) const {
    ClockState shifted = *this;
    for (double* mark : {&shifted.roundEnd, &shifted.moveEnd, &shifted.pauseMark,
                         &shifted.countsFrom, &shifted.endedAt}) {
      *mark += seconds;
    }
    return shifted;
  }
};

}  // namespace corvanel
