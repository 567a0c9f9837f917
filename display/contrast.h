#pragma once

#include <cstdint>

namespace corvanel {

/// Black or white, whichever is to stand out on this back colour (blue-green-red, red lowest).
int32_t Contrast(int32_t colour);

/// How well two colours (blue-green-red, red lowest) can be told apart: 1 for the same colour up
/// to 21 for black on white, by relative luminance. Text across a room wants 7 or more.
double ContrastRatio(int32_t one, int32_t other);

/// Below this two colours are hard to tell apart across a room.
constexpr double kPoorContrast = 4.5;

}  // namespace corvanel
