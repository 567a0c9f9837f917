#include "basics/numbers.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "basics/runtime_error.h"

namespace corvanel {
namespace {

/// Without case, accented letters included. What is no UTF-8 stays as it is.
std::string Folded(std::string_view text) {
  utf8proc_uint8_t* folded = nullptr;
  const auto length = utf8proc_map(
      reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
      static_cast<utf8proc_ssize_t>(text.size()), &folded,
      static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD));
  if (length < 0) return std::string(text);
  std::string result(reinterpret_cast<const char*>(folded), static_cast<size_t>(length));
  std::free(folded);
  return result;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; });
}

char AsciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

double Val(std::string_view text) {
  const size_t start = text.find_first_not_of(" \t");
  if (start == std::string_view::npos) return 0;
  text.remove_prefix(start);
  if (text.front() == '+') text.remove_prefix(1);
  const size_t sign = text.starts_with('-') ? 1 : 0;
  // from_chars would also take "inf" and "nan", which no director means as a number.
  if (text.size() == sign ||
      (text[sign] != '.' && !std::isdigit(static_cast<unsigned char>(text[sign])))) {
    return 0;
  }
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() ? value : 0;
}

int16_t WholeNumber(std::string_view text) {
  const double value = std::trunc(Val(text));
  if (std::abs(value) > std::numeric_limits<int>::max()) throw RuntimeError::Overflow();
  return Checked16(static_cast<int>(value));
}

int16_t Checked16(int value) {
  if (value < std::numeric_limits<int16_t>::min() || value > std::numeric_limits<int16_t>::max()) {
    throw RuntimeError::Overflow();
  }
  return static_cast<int16_t>(value);
}

std::string SingleText(float value) {
  return fmt::format("{}", value);
}

double RoundTo2Decimals(double value) {
  // Hundredths that are an exact half in decimal are not quite one in binary: take a hair's
  // breadth around the half as the half.
  const double hundredths = value * 100;
  const double below = std::floor(hundredths);
  const bool half = std::abs(hundredths - below - 0.5) < 1e-6;
  if (!half) return std::round(hundredths) / 100;
  return (std::fmod(below, 2) == 0 ? below : below + 1) / 100;
}

std::string TwoDecimals(double value) {
  return fmt::format("{:.2f}", RoundTo2Decimals(value));
}

bool SameName(std::string_view a, std::string_view b) {
  if (!IsAscii(a) || !IsAscii(b)) return Folded(a) == Folded(b);
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return AsciiLower(x) == AsciiLower(y); });
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlank = " \t\r\n";
  const size_t first = text.find_first_not_of(kBlank);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

std::string_view FileName(std::string_view path) {
  const size_t separator = path.find_last_of("/\\");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

}  // namespace corvanel
