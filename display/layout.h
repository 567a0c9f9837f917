#pragma once

#include <array>
#include <string>
#include <vector>

#include "display/line_breaks.h"
#include "display/widest_texts.h"
#include "session/display_elements.h"

namespace corvanel {

/// Logical pixels, 15 twips each.
struct Place {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  double Right() const { return x + width; }
  double Bottom() const { return y + height; }
};

constexpr double kTwipsPerPixel = 15;
constexpr double kReferenceHeight = 768;                // pixels; chosen sizes hold for it
constexpr double kLeastWindow = 4000 / kTwipsPerPixel;  // pixels, each way
constexpr double kLeastTextPoints = 10;
constexpr double kLeastCountdownPoints = 40;

/// One text on the display: where its lines stand, and their size. Not shown when points is 0.
struct TextPlace {
  Place place;
  double points = 0;
  int lines = 1;
  bool capitals = false;  // a text in capitals: its lines stand closer than the font's own do
};

/// Where everything stands, in a window's own pixels.
struct Layout {
  TextPlace header;
  TextPlace now;
  Place panel;    // the field behind countdown and state word, in the countdown's back colour
  TextPlace tag;  // the word in its corner: "LAST WARNING"; two lines where each word has its own
  TextPlace countdown;
  TextPlace large;
  TextPlace caption;
  TextPlace finish;
  TextPlace unit;
  Place tables;  // as high as LayoutInput::tables
};

struct LayoutInput {
  double width = 0;  // of the window, pixels
  double height = 0;
  bool moving = false;  // the caption is the move message, and the news
  double tables = 0;    // height of the tables' grid, pixels; 0 when there is none
  WidestTexts texts;
  std::array<bool, 5> show = {true, true, true, true, true};  // as Options::Show

  bool operator==(const LayoutInput&) const = default;
};

/// What stays free at each edge of a window, pixels.
double MarginOf(double width, double height);

/// Places everything: the countdown as large as fits, every other text at the size chosen for it
/// (which holds for a window 768 pixels high and grows with the window) or as much smaller as the
/// window, or the tables, ask for; in a move the message as large as fits. All centred, nothing
/// overlapping, nothing beyond the margin.
Layout LayOut(const LayoutInput& input, const ElementStyles& styles, const TextMeasure& measure);

}  // namespace corvanel
