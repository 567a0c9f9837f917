#pragma once

#include <QColor>
#include <QFont>

#include "display/layout.h"

namespace corvanel {

QFont FontOf(const ElementStyle& style, double points);

/// A colour as the window system has it.
QColor ColourOf(Colour colour);

/// Measures with the fonts of the window system.
class QtTextMeasure : public TextMeasure {
 public:
  Extent Line(const std::string& text, const ElementStyle& style, double points) const override;
  Extent Digits(const std::string& text, const ElementStyle& style, double points) const override;
};

/// Width of the cell in which a character of the countdown is centred.
double CellWidth(QChar character, const QFont& font);

/// Height of the font's digits above the line they stand on.
double DigitHeight(const QFont& font);

}  // namespace corvanel
