#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

#include "basics/times.h"

namespace corvanel {

/// A date and time of the local wall clock, to the second.
struct DateTime {
  int64_t seconds = 0;  // since 1970-01-01 00:00:00

  /// Of the days that databases count from 1899-12-30; nothing beyond the years 100 to 9999.
  static std::optional<DateTime> FromDays(double days);
  static DateTime Of(int year, int month, int day, ClockTime time = {});

  ClockTime TimeOfDay() const { return ClockTime(static_cast<double>(seconds)); }
  int Year() const;

  auto operator<=>(const DateTime&) const = default;  // NOLINT(modernize-use-nullptr)
};

/// "2026-11-20".
std::string DateText(DateTime time);
/// "2026-11-20T19:30:00".
std::string IsoText(DateTime time);
/// "2026-11-20 19:30", with the time as times are written.
std::string DateAndTimeText(DateTime time, TimeForm form = TimeForm::Hours24);

}  // namespace corvanel
