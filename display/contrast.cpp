#include "display/contrast.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace corvanel {
namespace {

double Linear(int32_t byte) {
  const double value = byte / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(int32_t colour) {
  return 0.2126 * Linear(colour & 0xFF) + 0.7152 * Linear(colour >> 8 & 0xFF) +
         0.0722 * Linear(colour >> 16 & 0xFF);
}

}  // namespace

int32_t Contrast(int32_t colour) {
  const std::string digits = fmt::format("{:X}", colour);
  // Meant so: the weights go to the pairs as they fall in the text. Where the blue byte is below
  // 10 hexadecimal the text is shorter and the pairs are not the colour's bytes.
  const auto pair = [&](size_t at) {
    return at < digits.size() ? std::stoi(digits.substr(at, 2), nullptr, 16) : 0;
  };
  const int weight = 28 * pair(0) + 151 * pair(2) + 77 * pair(4);
  constexpr int kHalf = 32640;
  return weight >= kHalf ? 0x000000 : 0xFFFFFF;
}

double ContrastRatio(int32_t one, int32_t other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace corvanel
