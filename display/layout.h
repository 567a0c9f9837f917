#pragma once

#include <array>
#include <string>
#include <vector>

#include "session/display_elements.h"
#include "session/session.h"
#include "session/timetable.h"

namespace corvanel {

/// Logical pixels, 15 twips each.
struct Extent {
  double width = 0;
  double height = 0;
};

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

/// How large texts come out. The one thing that the layout asks of the window system.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  /// One line of text at this size: its advance width, and the height of its line.
  virtual Extent Line(const std::string& text, const ElementStyle& style, double points) const = 0;
  /// A countdown with every digit as wide as the widest one: width, and height of the digits alone.
  virtual Extent Digits(const std::string& text, const ElementStyle& style,
                        double points) const = 0;
};

/// The texts that the display has to hold, each in the widest form that the session can bring.
struct WidestTexts {
  std::string header;
  std::string now;
  std::string countdown;
  std::string caption;
  std::string message;
  std::string finish;  // finish and break line
  std::string unit;    // the scoring units' line; empty when there is none

  bool operator==(const WidestTexts&) const = default;
};

/// The widest texts of a session as it is set, with a countdown of `secondsLeft` under way.
WidestTexts WidestTextsOf(const Session& session, double secondsLeft);

/// One text on the display: where its lines stand, and their size. Not shown when points is 0.
struct TextPlace {
  Place place;
  double points = 0;
  int lines = 1;
};

/// Where everything stands, in a window's own pixels.
struct Layout {
  TextPlace header;
  TextPlace now;
  Place panel;    // the field behind countdown and state word, in the countdown's back colour
  TextPlace tag;  // the word for the state: "LAST WARNING"
  TextPlace countdown;
  TextPlace caption;  // round information, or the move message
  TextPlace finish;
  TextPlace unit;
};

struct LayoutInput {
  double width = 0;  // of the window, pixels
  double height = 0;
  bool moving = false;  // the caption's place holds the move message
  WidestTexts texts;
  std::array<bool, 5> show = {true, true, true, true, true};  // as Options::Show

  bool operator==(const LayoutInput&) const = default;
};

/// Places everything: the countdown as large as fits, every other text at the size chosen for it
/// (which holds for a window 768 pixels high and grows with the window) or as much smaller as the
/// window asks for, all centred, nothing overlapping, nothing beyond the margin.
Layout LayOut(const LayoutInput& input, const ElementStyles& styles, const TextMeasure& measure);

/// Breaks a text at blanks into at most `lines` lines of at most `width` pixels, as even as can
/// be; a last line that is still too long ends in an ellipsis.
std::vector<std::string> BreakLines(const std::string& text, int lines, double width,
                                    const ElementStyle& style, double points,
                                    const TextMeasure& measure);

/// The line of finish and break time, as the display shows it.
std::string FinishAndBreak(const std::string& finish, const std::string& breakLine);

/// The word that names the state of the clock beside its colour; empty for a round that simply
/// runs.
std::string StateWord(Phase phase, bool paused, Element countdownStyle);

}  // namespace corvanel
