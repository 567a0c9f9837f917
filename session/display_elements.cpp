#include "session/display_elements.h"

namespace corvanel {
namespace {

constexpr Colour kNight{6, 17, 42};
constexpr Colour kWhite{255, 255, 255};

ElementStyle Style(float size, bool bold, Colour fore, Colour back) {
  ElementStyle style;
  style.Size = size;
  style.Bold = bold;
  style.Forecolour = fore;
  style.Backcolour = back;
  return style;
}

}  // namespace

const ElementStyles& DefaultElementStyles() {
  static const ElementStyles styles = {
      Style(28, false, {176, 190, 214}, kNight),      // Current time
      Style(24, false, {176, 190, 214}, kNight),      // Finish time
      Style(48, true, kWhite, kNight),                // Round information
      Style(48, true, {255, 216, 61}, kNight),        // Time remaining
      Style(48, true, {0, 0, 0}, {255, 221, 0}),      // Warning period
      Style(48, true, kWhite, {168, 0, 12}),          // Time up
      Style(48, true, {6, 17, 42}, {178, 216, 255}),  // Between warnings
      Style(48, false, kWhite, kNight),               // Screen background
      Style(40, true, kWhite, kNight),                // Title
      Style(24, true, {255, 216, 61}, kNight),        // unit info
  };
  return styles;
}

}  // namespace corvanel
