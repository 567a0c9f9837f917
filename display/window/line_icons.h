#pragma once

#include <QColor>
#include <QIcon>

namespace corvanel {

/// The signs of the command bar, all drawn in lines.
enum class LineIcon {
  Pause,
  Resume,
  NextRound,
  Restart,
  Less,
  More,
  FullScreen,
  Window,
  Sounds,
  Display,
  Back
};

/// A sign in one colour, `size` pixels high and wide; paler where its button is off.
QIcon IconOf(LineIcon icon, const QColor& colour, const QColor& off, int size);

}  // namespace corvanel
