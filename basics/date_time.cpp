#include "basics/date_time.h"

#include <fmt/format.h>

#include <chrono>
#include <cmath>

namespace corvanel {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int64_t kDay = 86400;
constexpr int64_t kDaysTo1970 = 25569;  // from 1899-12-30
constexpr double kFirstDay = -657434;   // 0100-01-01
constexpr double kLastDay = 2958466;    // 10000-01-01

year_month_day Date(DateTime time) {
  const int64_t day = time.seconds / kDay - (time.seconds % kDay < 0 ? 1 : 0);
  return sys_days(days(day));
}

}  // namespace

std::optional<DateTime> DateTime::FromDays(double days) {
  if (!(days >= kFirstDay && days < kLastDay)) return std::nullopt;
  return DateTime{std::llround(days * kDay) - kDaysTo1970 * kDay};
}

DateTime DateTime::Of(int year, int month, int day, ClockTime time) {
  const sys_days date = std::chrono::year(year) / month / day;
  return {date.time_since_epoch().count() * kDay + std::llround(time.Seconds())};
}

int DateTime::Year() const {
  return static_cast<int>(Date(*this).year());
}

std::string DateText(DateTime time) {
  const year_month_day date = Date(time);
  return fmt::format("{:04}-{:02}-{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
}

std::string IsoText(DateTime time) {
  return DateText(time) + 'T' + TimeTextWithSeconds(time.TimeOfDay());
}

std::string DateAndTimeText(DateTime time, TimeForm form) {
  return DateText(time) + ' ' + TimeText(time.TimeOfDay(), form);
}

}  // namespace corvanel
