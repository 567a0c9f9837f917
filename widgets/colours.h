#pragma once

#include <QColor>

#include "session/display_elements.h"

namespace corvanel {

/// The one colour that stands out in the windows; white on it is legible.
constexpr QColor kAccent(0x1F, 0x5F, 0xBF);

/// A colour as the window system has it.
QColor ColourOf(Colour colour);

/// `share` of one colour over another, 0 to 1.
QColor Mixed(const QColor& ink, const QColor& back, double share);

}  // namespace corvanel
