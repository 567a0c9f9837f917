#include "display/contrast.h"

#include <algorithm>
#include <cmath>

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

double ContrastRatio(int32_t one, int32_t other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace corvanel
