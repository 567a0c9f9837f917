#include "basics/times.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <vector>

#include "basics/numbers.h"

namespace corvanel {

ClockTime::ClockTime(double seconds) : seconds_(std::fmod(seconds, kSecondsPerDay)) {
  if (seconds_ < 0) seconds_ += kSecondsPerDay;
  if (seconds_ >= kSecondsPerDay) seconds_ = 0;  // a hair below 0 became a whole day
}

namespace {

ClockTime ToWholeSecond(ClockTime time) {
  return ClockTime(std::floor(time.Seconds() + 0.5));
}

std::string WithForm(int hour, std::string_view rest, TimeForm form) {
  if (form == TimeForm::Hours24) return fmt::format("{:02}:{}", hour, rest);
  const int shown = hour % 12 == 0 ? 12 : hour % 12;
  return fmt::format("{}:{}{}", shown, rest, hour < 12 ? "am" : "pm");
}

/// Takes a run of digits off the front of `text`; nothing when there is none or it is over 4 long.
std::optional<int> TakeNumber(std::string_view& text) {
  size_t length = 0;
  int value = 0;
  while (length < text.size() && std::isdigit(static_cast<unsigned char>(text[length]))) {
    if (length == 4) return std::nullopt;
    value = value * 10 + (text[length] - '0');
    ++length;
  }
  if (length == 0) return std::nullopt;
  text.remove_prefix(length);
  return value;
}

bool TakeOne(std::string_view& text, std::string_view anyOf) {
  if (text.empty() || anyOf.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

/// Numbers joined by one of `separators`: "21:30:15" gives 21, 30, 15.
std::vector<int> TakeNumbers(std::string_view& text, std::string_view separators) {
  std::vector<int> numbers;
  do {
    const auto number = TakeNumber(text);
    if (!number) return {};
    numbers.push_back(*number);
  } while (TakeOne(text, separators));
  return numbers;
}

bool IsDate(const std::vector<int>& n) {
  if (n.size() != 3) return false;
  const bool yearFirst = n[0] > 31;
  const int day = yearFirst ? n[2] : n[0];
  const int month = n[1];
  return day >= 1 && day <= 31 && month >= 1 && month <= 12;
}

/// Whether the text is empty or says before noon or after noon ("am", "a", "pm", "p").
bool ApplyHalfOfDay(std::string_view half, int& hour) {
  if (half.empty()) return hour <= 23;
  const bool before = SameName(half, "am") || SameName(half, "a");
  const bool after = SameName(half, "pm") || SameName(half, "p");
  if (!before && !after) return false;
  if (hour > 12 || (hour == 0 && after)) return after && hour >= 13 && hour <= 23;
  hour = hour % 12 + (after ? 12 : 0);
  return true;
}

}  // namespace

std::string TimeText(ClockTime time, TimeForm form) {
  time = ToTheMinute(time);
  return WithForm(time.Hour(), fmt::format("{:02}", time.Minute()), form);
}

ClockTime ToTheMinute(ClockTime time) {
  time = ToWholeSecond(time);
  return ClockTime::At(time.Hour(), time.Minute());
}

ClockTime ToNearestMinute(ClockTime time) {
  return ToTheMinute(time.PlusSeconds(30));
}

std::string TimeTextWithSeconds(ClockTime time, TimeForm form) {
  time = ToWholeSecond(time);
  const int second = static_cast<int>(time.Seconds()) % 60;
  return WithForm(time.Hour(), fmt::format("{:02}:{:02}", time.Minute(), second), form);
}

std::optional<ClockTime> ParseTime(std::string_view text) {
  text = Trimmed(text);
  std::string_view rest = text;
  if (IsDate(TakeNumbers(rest, "/-"))) {
    if (rest.empty()) return ClockTime();
    if (!TakeOne(rest, " T")) return std::nullopt;
    text = Trimmed(rest);
  }
  const std::vector<int> parts = TakeNumbers(text, ":.");
  if (parts.empty() || parts.size() > 3) return std::nullopt;
  const std::string_view half = Trimmed(text);
  int hour = parts[0];
  if (parts.size() == 1 && half.empty()) return std::nullopt;
  if (!ApplyHalfOfDay(half, hour)) return std::nullopt;
  if (std::any_of(parts.begin() + 1, parts.end(), [](int part) { return part > 59; })) {
    return std::nullopt;
  }
  return ClockTime::At(hour, parts.size() > 1 ? parts[1] : 0, parts.size() > 2 ? parts[2] : 0);
}

ClockTime NextQuarterHour(ClockTime now) {
  const int quarter = now.Minute() / 15 + 1;
  return ClockTime::At(now.Hour(), quarter * 15);
}

std::string MinutesAndSeconds(double seconds) {
  const auto whole = static_cast<long long>(std::floor(std::max(seconds, 0.0) + 0.5));
  return fmt::format("{}:{:02}", whole / 60, whole % 60);
}

std::string LengthText(double seconds) {
  const long whole = std::lround(seconds);
  if (whole < 60) return fmt::format("{} s", whole);
  if (whole < 3600) return fmt::format("{} min {} s", whole / 60, whole % 60);
  return fmt::format("{} h {} min", whole / 3600, whole / 60 % 60);
}

std::string AgoText(double seconds) {
  const std::string length = LengthText(seconds);
  return length.substr(0, length.find(' ', length.find(' ') + 1)) + " ago";
}

}  // namespace corvanel
