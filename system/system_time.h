#pragma once

#include "session/time_source.h"

namespace corvanel {

/// The computer's clocks. The uptime counts time asleep, and is not set with the time of day.
class SystemTime : public TimeSource {
 public:
  SystemTime();
  Moment ThisMoment() const override;
  ClockTime TimeOfDay() const override;
  DateTime Now() const override;

 private:
  std::string boot_;
};

/// The local wall clock's date and time for the seconds since 1970 in universal time.
DateTime LocalTime(int64_t seconds);

}  // namespace corvanel
