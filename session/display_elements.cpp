#include "session/display_elements.h"

namespace corvanel {
namespace {

constexpr int32_t Rgb(int red, int green, int blue) {
  return blue << 16 | green << 8 | red;
}

constexpr int32_t kNight = Rgb(6, 17, 42);
constexpr int32_t kWhite = Rgb(255, 255, 255);

ElementStyle Style(float size, bool bold, int32_t fore, int32_t back) {
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
      Style(28, false, Rgb(176, 190, 214), kNight),         // Current time
      Style(24, false, Rgb(176, 190, 214), kNight),         // Finish time
      Style(48, true, kWhite, kNight),                      // Round information
      Style(48, true, Rgb(255, 216, 61), kNight),           // Time remaining
      Style(48, true, Rgb(0, 0, 0), Rgb(255, 221, 0)),      // Warning period
      Style(48, true, kWhite, Rgb(168, 0, 12)),             // Time up
      Style(48, true, Rgb(6, 17, 42), Rgb(178, 216, 255)),  // Between warnings
      Style(48, false, kWhite, kNight),                     // Screen background
      Style(40, true, kWhite, kNight),                      // Title
      Style(24, true, Rgb(255, 216, 61), kNight),           // unit info
  };
  return styles;
}

}  // namespace corvanel
