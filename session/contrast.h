#pragma once

#include "session/display_elements.h"

namespace corvanel {

/// Black or white, whichever is to stand out on this back colour.
Colour Contrast(Colour back);

/// How well two colours can be told apart: 1 for the same colour up to 21 for black on white, by
/// relative luminance. Text across a room wants 7 or more.
double ContrastRatio(Colour one, Colour other);

/// A colour between two that recedes: the one with the least of `ink`, but at least this share of
/// it, and with at least this contrast to `back`, as far as the ink itself has that.
Colour Receding(Colour ink, Colour back, double share, double contrast);

/// The look of a countdown that stands still, in a window of that back colour: still legible, but
/// clearly not running.
ElementStyle Receded(ElementStyle countdown, Colour background);

/// How far what is finished recedes, as contrast to the background: its outline, and its text.
constexpr double kFaintLine = 1.5;
constexpr double kFaintText = 5;

/// Below this two colours are hard to tell apart across a room.
constexpr double kPoorContrast = 4.5;

}  // namespace corvanel
