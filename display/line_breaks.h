#pragma once

#include <string>
#include <vector>

#include "session/display_elements.h"

namespace corvanel {

/// Logical pixels, 15 twips each.
struct Extent {
  double width = 0;
  double height = 0;
};

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

/// The most even way to break a text at blanks into at most `count` lines. One in two parts, "SKIP
/// - MOVE FOR ROUND 4", breaks first between them; one of two facts at its dot, which then goes.
std::vector<std::string> Balance(const std::string& text, int count, const ElementStyle& style,
                                 double points, const TextMeasure& measure);

/// Fills lines word by word, none wider than `width` where a single word allows it.
std::vector<std::string> Fill(const std::string& text, double width, const ElementStyle& style,
                              double points, const TextMeasure& measure);

/// The width of the widest line, pixels.
double WidestLine(const std::vector<std::string>& lines, const ElementStyle& style, double points,
                  const TextMeasure& measure);

/// Breaks a text at blanks into at most `lines` lines of at most `width` pixels, as even as can
/// be; a last line that is still too long ends in an ellipsis.
std::vector<std::string> BreakLines(const std::string& text, int lines, double width,
                                    const ElementStyle& style, double points,
                                    const TextMeasure& measure);

}  // namespace corvanel
