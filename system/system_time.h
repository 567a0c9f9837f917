#pragma once

#include "session/time_source.h"

namespace corvanel {

/// The computer's clocks. The counter starts at the time of day at which this object was made and
/// goes on with a clock that counts time asleep and is not set with the time of day.
class SystemTime : public TimeSource {
 public:
  SystemTime();
  double Counter() const override;
  Moment ThisMoment() const override;
  ClockTime TimeOfDay() const override;
  DateTime Now() const override;

 private:
  std::string boot_;
  double startOfDay_ = 0;
  double startOfCount_ = 0;
};

/// The local wall clock's date and time for the seconds since 1970 in universal time.
DateTime LocalTime(int64_t seconds);

}  // namespace corvanel
