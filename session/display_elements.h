#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvanel {

/// The ten entries of the display-element table, by their numbers.
enum class Element {
  CurrentTime,
  FinishTime,
  RoundInformation,
  TimeRemaining,
  LastWarning,
  TimeUp,
  EarlyWarning,
  ScreenBackground,
  Title,
  UnitInfo
};

constexpr int kElements = 10;

struct Colour {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;

  bool operator==(const Colour&) const = default;

  /// As stores have it: blue-green-red with red in the lowest byte. 0x0000FF is pure red.
  constexpr int32_t Stored() const { return blue << 16 | green << 8 | red; }
  static constexpr Colour FromStored(int32_t stored) {
    return {static_cast<uint8_t>(stored), static_cast<uint8_t>(stored >> 8),
            static_cast<uint8_t>(stored >> 16)};
  }
};

/// Font and colours of one display element.
struct ElementStyle {
  std::string Name = "Arial";
  float Size = 24;  // points; the countdown's and the unit line's are set by the layout
  bool Bold = false;
  bool Italic = false;
  bool Strikethrough = false;
  bool Underline = false;
  Colour Forecolour{255, 255, 255};
  Colour Backcolour{6, 17, 42};

  bool operator==(const ElementStyle&) const = default;
};

using ElementStyles = std::array<ElementStyle, kElements>;

/// The fonts and colours that the program ships with: yellow on dark blue for the running time,
/// dark on light blue for the early warning, black on yellow for the last one, white on red for
/// time up.
const ElementStyles& DefaultElementStyles();

/// The table's own names: "Current time", "Finish time", ... The unit line's name begins with the
/// name of the unit in use, which the caller puts before " info".
constexpr std::array<std::string_view, kElements> kElementNames = {
    "Current time", "Finish time",      "Round information", "Time remaining", "Warning period",
    "Time up",      "Between warnings", "Screen background", "Title",          " info"};

constexpr std::string_view NameOf(Element element) {
  return kElementNames[static_cast<size_t>(element)];
}

}  // namespace corvanel
