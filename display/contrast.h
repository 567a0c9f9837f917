#pragma once

#include <cstdint>

namespace corvanel {

/// How well two colours (blue-green-red, red lowest) can be told apart: 1 for the same colour up
/// to 21 for black on white, by relative luminance. Text across a room wants 7 or more.
double ContrastRatio(int32_t one, int32_t other);

}  // namespace corvanel
