#pragma once

#include <QColor>

#include "session/display_elements.h"

namespace corvanel {

/// A colour as the window system has it.
QColor ColourOf(Colour colour);

/// `share` of one colour over another, 0 to 1.
QColor Mixed(const QColor& ink, const QColor& back, double share);

}  // namespace corvanel
