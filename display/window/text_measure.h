#pragma once

#include <QFont>

#include "display/layout.h"
#include "widgets/colours.h"

namespace corvanel {

QFont FontOf(const ElementStyle& style, double points);

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
