#pragma once

#include <algorithm>
#include <string>

#include "basics/date_time.h"

namespace corvanel {

/// A moment by the clocks that a later run of the program can measure from.
struct Moment {
  std::string boot;   // names this run of the computer
  double uptime = 0;  // seconds, asleep or awake, never set; to be compared within one boot
  double utc = 0;     // seconds since 1970 in universal time, as the computer's clock is set

  /// Seconds from `earlier` to this moment, never less than 0. Exact within one run of the
  /// computer, else as right as the computer's clock.
  double Since(const Moment& earlier) const {
    return std::max(boot == earlier.boot ? uptime - earlier.uptime : utc - earlier.utc, 0.0);
  }
};

/// The two clocks of the program.
class TimeSource {
 public:
  virtual ~TimeSource() = default;

  /// Seconds since midnight for counting, 0 up to 86400, fractions included. Starts at the
  /// computer's time of day, then counts every second that passes, asleep or awake, and does not
  /// follow when the computer's clock is set. Starts again from 0 after 86400.
  virtual double Counter() const = 0;

  /// Now, to be measured from: passes like the counter, without starting again.
  virtual Moment ThisMoment() const = 0;

  /// The computer's own time of day, for showing.
  virtual ClockTime TimeOfDay() const = 0;
  /// The same with its date.
  virtual DateTime Now() const = 0;
};

}  // namespace corvanel
