#pragma once

#include "session/display_elements.h"

namespace corvanel {

/// Black or white, whichever is to stand out on this back colour.
Colour Contrast(Colour back);

/// How well two colours can be told apart: 1 for the same colour up to 21 for black on white, by
/// relative luminance. Text across a room wants 7 or more.
double ContrastRatio(Colour one, Colour other);

/// Below this two colours are hard to tell apart across a room.
constexpr double kPoorContrast = 4.5;

}  // namespace corvanel
