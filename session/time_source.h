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

/// The computer's clocks. What counts is measured by the uptime; times of day are only shown.
class TimeSource {
 public:
  virtual ~TimeSource() = default;

  /// Now, to be measured from: every mark is an uptime.
  virtual Moment ThisMoment() const = 0;
  double Uptime() const { return ThisMoment().uptime; }
  /// The computer's own time of day, for showing.
  virtual ClockTime TimeOfDay() const = 0;
  /// The same with its date.
  virtual DateTime Now() const = 0;
};

}  // namespace corvanel
