#include "session/contrast.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace corvanel {
namespace {

double Linear(uint8_t byte) {
  const double value = byte / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Colour colour) {
  return 0.2126 * Linear(colour.red) + 0.7152 * Linear(colour.green) + 0.0722 * Linear(colour.blue);
}

}  // namespace

Colour Contrast(Colour back) {
  const std::string digits = fmt::format("{:X}", back.Stored());
  // Deliberate: the weights go to the pairs as they fall in the text. Where the blue byte is below
  // 10 hexadecimal the text is shorter and the pairs are not the colour's bytes.
  const auto pair = [&](size_t at) {
    return at < digits.size() ? std::stoi(digits.substr(at, 2), nullptr, 16) : 0;
  };
  const int weight = 28 * pair(0) + 151 * pair(2) + 77 * pair(4);
  constexpr int kHalf = 32640;
  return weight >= kHalf ? Colour{} : Colour{255, 255, 255};
}

double ContrastRatio(Colour one, Colour other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

Colour Receding(Colour ink, Colour back, double share, double contrast) {
  constexpr int kSteps = 50;
  for (int step = 0; step < kSteps; ++step) {
    const double part = share + (1 - share) * step / kSteps;
    const auto mixed = [part](uint8_t one, uint8_t other) {
      return static_cast<uint8_t>(std::lround(other + (one - other) * part));
    };
    const Colour blend{mixed(ink.red, back.red), mixed(ink.green, back.green),
                       mixed(ink.blue, back.blue)};
    if (ContrastRatio(blend, back) >= contrast) return blend;
  }
  return ink;
}

ElementStyle Receded(ElementStyle countdown, Colour background) {
  constexpr double kShare = 0.45;
  constexpr double kLargeTextContrast = 3;
  countdown.Backcolour = Receding(countdown.Backcolour, background, kShare, 1);
  countdown.Forecolour =
      Receding(countdown.Forecolour, countdown.Backcolour, kShare, kLargeTextContrast);
  return countdown;
}

}  // namespace corvanel
