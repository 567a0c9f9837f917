#include "system/system_time.h"

#include <time.h>

#include <fstream>

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

timespec RealTime() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return now;
}

tm Local(time_t seconds) {
  tm local{};
  localtime_r(&seconds, &local);
  return local;
}

ClockTime ComputersTimeOfDay() {
  const timespec now = RealTime();
  const tm local = Local(now.tv_sec);
  return ClockTime::At(local.tm_hour, local.tm_min,
                       local.tm_sec + static_cast<double>(now.tv_nsec) * 1e-9);
}

/// The kernel's name for this run of the computer; another one after each start.
std::string BootId() {
  std::string id;
  std::ifstream("/proc/sys/kernel/random/boot_id") >> id;
  return id;
}

}  // namespace

SystemTime::SystemTime() : boot_(BootId()) {}

Moment SystemTime::ThisMoment() const {
  return {boot_, SinceBoot(), Seconds(RealTime())};
}

ClockTime SystemTime::TimeOfDay() const {
  return ComputersTimeOfDay();
}

DateTime SystemTime::Now() const {
  return LocalTime(RealTime().tv_sec);
}

DateTime LocalTime(int64_t seconds) {
  const tm local = Local(seconds);
  return DateTime::Of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                      ClockTime::At(local.tm_hour, local.tm_min, local.tm_sec));
}

}  // namespace corvanel
