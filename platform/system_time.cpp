#include "platform/system_time.h"

#include <time.h>

namespace corvanel {
namespace {

double Seconds(const timespec& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double SinceBoot() {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return Seconds(now);
}

ClockTime ComputersTimeOfDay() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  tm local{};
  localtime_r(&now.tv_sec, &local);
  return ClockTime::At(local.tm_hour, local.tm_min,
                       local.tm_sec + static_cast<double>(now.tv_nsec) * 1e-9);
}

}  // namespace

SystemTime::SystemTime()
    : startOfDay_(ComputersTimeOfDay().Seconds()), startOfCount_(SinceBoot()) {}

double SystemTime::Counter() const {
  return ClockTime(startOfDay_ + SinceBoot() - startOfCount_).Seconds();
}

ClockTime SystemTime::TimeOfDay() const {
  return ComputersTimeOfDay();
}

}  // namespace corvanel
