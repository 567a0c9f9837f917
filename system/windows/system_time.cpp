#include "system/system_time.h"

#include <fmt/format.h>
#include <time.h>

#include "system/windows/system_call.h"

namespace corvanel {
namespace {

constexpr double kTicksPerSecond = 1e7;
constexpr double kFrom1601To1970 = 11'644'473'600;  // seconds

/// Time asleep counts. In steps of some 15 ms, which no second on a display is too late by.
double SinceBoot() {
  return static_cast<double>(GetTickCount64()) / 1000;
}

double RealTime() {
  FILETIME now{};
  GetSystemTimePreciseAsFileTime(&now);
  const uint64_t ticks = uint64_t{now.dwHighDateTime} << 32U | now.dwLowDateTime;
  return static_cast<double>(ticks) / kTicksPerSecond - kFrom1601To1970;
}

tm Local(time_t seconds) {
  tm local{};
  localtime_s(&local, &seconds);
  return local;
}

/// The system counts its starts; where it does not, the minute of the last one tells them apart.
std::string BootId() {
  constexpr const wchar_t* kKey =
      L"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Memory "
      L"Management\\PrefetchParameters";
  DWORD count = 0;
  DWORD size = sizeof count;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kKey, L"BootId", RRF_RT_REG_DWORD, nullptr, &count, &size) ==
      ERROR_SUCCESS) {
    return fmt::format("start {}", count);
  }
  return fmt::format("minute {:.0f}", (RealTime() - SinceBoot()) / 60);
}

}  // namespace

SystemTime::SystemTime() : boot_(BootId()) {}

Moment SystemTime::ThisMoment() const {
  return {boot_, SinceBoot(), RealTime()};
}

ClockTime SystemTime::TimeOfDay() const {
  const double now = RealTime();
  const auto seconds = static_cast<time_t>(now);
  const tm local = Local(seconds);
  return ClockTime::At(local.tm_hour, local.tm_min,
                       local.tm_sec + (now - static_cast<double>(seconds)));
}

DateTime SystemTime::Now() const {
  return LocalTime(static_cast<int64_t>(RealTime()));
}

DateTime LocalTime(int64_t seconds) {
  const tm local = Local(seconds);
  return DateTime::Of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                      ClockTime::At(local.tm_hour, local.tm_min, local.tm_sec));
}

}  // namespace corvanel
