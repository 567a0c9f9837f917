#pragma once

#include "basics/date_time.h"

namespace corvanel {

/// The two clocks of the program.
class TimeSource {
 public:
  virtual ~TimeSource() = default;

  /// Seconds since midnight for counting, 0 up to 86400, fractions included. Starts at the
  /// computer's time of day, then counts every second that passes, asleep or awake, and does not
  /// follow when the computer's clock is set. Starts again from 0 after 86400.
  virtual double Counter() const = 0;

  /// The computer's own time of day, for showing.
  virtual ClockTime TimeOfDay() const = 0;
  /// The same with its date.
  virtual DateTime Now() const = 0;
};

}  // namespace corvanel
