#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace corvanel {

/// A time of day in seconds since midnight, 0 up to but not including 86400.
class ClockTime {
 public:
  ClockTime() = default;
  /// Any number of seconds; whole days are taken off or added.
  explicit ClockTime(double seconds);
  static ClockTime At(int hour, int minute, double second = 0) {
    return ClockTime(hour * 3600.0 + minute * 60.0 + second);
  }

  double Seconds() const { return seconds_; }
  int Hour() const { return static_cast<int>(seconds_) / 3600; }
  int Minute() const { return static_cast<int>(seconds_) / 60 % 60; }

  /// This time moved by seconds (or by minutes), forward or back, over midnight where need be.
  ClockTime PlusSeconds(double seconds) const { return ClockTime(seconds_ + seconds); }
  ClockTime PlusMinutes(double minutes) const { return PlusSeconds(minutes * 60); }

  auto operator<=>(const ClockTime&) const = default;

 private:
  double seconds_ = 0;
};

constexpr double kSecondsPerDay = 86400;
constexpr double kMinutesPerDay = 1440;

/// How a time of day is written: "21:30", or "9:30pm" (no blank, lower case, so that every time
/// box takes it back).
enum class TimeForm { Hours24, Hours12 };

/// A time of day to the minute. Rounded to the second first, then the seconds are dropped.
std::string TimeText(ClockTime time, TimeForm form = TimeForm::Hours24);

/// A time of day to the second: "21:30:05", "9:30:05pm".
std::string TimeTextWithSeconds(ClockTime time, TimeForm form = TimeForm::Hours24);

/// To the minute as it is shown: the seconds are dropped.
ClockTime ToTheMinute(ClockTime time);

/// A time that was worked out, as it is shown.
ClockTime ToNearestMinute(ClockTime time);

/// Reads a time of day as a person writes it: 21:30, 21.30, 21:30:15, 9:30pm, 9 pm, 12am, with or
/// without a date before it (21/11/2026 19:30, 2026-11-21 19:30). A date alone means midnight;
/// a bare number is no time. Nothing when the text cannot be read so.
std::optional<ClockTime> ParseTime(std::string_view text);

/// The next quarter hour strictly after `now`: 21:45:30 gives 22:00, 23:50 gives 00:00.
ClockTime NextQuarterHour(ClockTime now);

/// Minutes, ":", two digits of seconds: 125 gives "2:05", 5400 gives "90:00". The seconds are
/// rounded before minutes are split off, so "0:60" cannot occur.
std::string MinutesAndSeconds(double seconds);

/// A length of time: "12 s", "3 min 5 s", "2 h 5 min".
std::string LengthText(double seconds);

/// How long ago something was, in its one fitting unit: "12 s ago", "3 min ago", "2 h ago".
std::string AgoText(double seconds);

}  // namespace corvanel
