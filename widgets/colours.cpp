#include "widgets/colours.h"

namespace corvanel {

QColor ColourOf(Colour colour) {
  return {colour.red, colour.green, colour.blue};
}

QColor Mixed(const QColor& ink, const QColor& back, double share) {
  const auto mixed = [share](int one, int other) {
    return static_cast<int>(other + (one - other) * share);
  };
  return {mixed(ink.red(), back.red()), mixed(ink.green(), back.green()),
          mixed(ink.blue(), back.blue())};
}

}  // namespace corvanel
