#include "display/window/text_measure.h"

#include <QFontMetricsF>
#include <algorithm>

namespace corvanel {

QFont FontOf(const ElementStyle& style, double points) {
  QFont font(QString::fromStdString(style.Name));
  font.setPointSizeF(points);
  font.setBold(style.Bold);
  font.setItalic(style.Italic);
  font.setStrikeOut(style.Strikethrough);
  font.setUnderline(style.Underline);
  // Widths must scale evenly with the size.
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

Extent QtTextMeasure::Line(const std::string& text, const ElementStyle& style,
                           double points) const {
  const QFontMetricsF metrics(FontOf(style, points));
  return {metrics.horizontalAdvance(QString::fromStdString(text)), metrics.height()};
}

double CellWidth(QChar character, const QFont& font) {
  const QFontMetricsF metrics(font);
  if (!character.isDigit()) return metrics.horizontalAdvance(character);
  double widest = 0;
  for (char digit = '0'; digit <= '9'; ++digit) {
    widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
  }
  return widest;
}

double DigitHeight(const QFont& font) {
  return -QFontMetricsF(font).tightBoundingRect(QStringLiteral("0123456789")).top();
}

Extent QtTextMeasure::Digits(const std::string& text, const ElementStyle& style,
                             double points) const {
  const QFont font = FontOf(style, points);
  Extent extent{0, DigitHeight(font)};
  for (const QChar character : QString::fromStdString(text)) {
    extent.width += CellWidth(character, font);
  }
  return extent;
}

}  // namespace corvanel
