#pragma once

#include <QWidget>

#include "display/layout.h"
#include "display/window/text_measure.h"

namespace corvanel {

/// The countdown on its field, with the word that names its state. Every digit stands in a cell of
/// one width, so that nothing wobbles from second to second.
class CountdownPanel : public QWidget {
  Q_OBJECT

 public:
  CountdownPanel(const QString& name, QWidget* parent);
  void SetTexts(const std::string& countdown, const std::string& stateWord);
  /// Takes the state and round that a screen reader says after the time. True when it is another
  /// than before, which is worth saying unasked; that a second has passed is not.
  bool SetSpoken(const std::string& state);
  /// Places in the window; the panel covers the layout's panel.
  void SetPlace(const Layout& layout);
  /// `background`: of the window; a countdown on the same colour needs no field.
  void SetStyle(const ElementStyle& style, Colour background);
  const std::string& Countdown() const { return countdown_; }
  /// Where the digits stand, in this widget.
  QRect DigitsPlace() const;
  /// Of the widest countdown that the layout was made for, "88:88", pixels.
  QSizeF DigitsSize() const { return {CountdownWidth("88:88"), digitHeight_}; }
  /// The height of the capitals of the word, pixels.
  double WordCapitals() const { return DigitHeight(WordFont()); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont WordFont() const;
  void TakeFont();
  QRectF CellOf(size_t index) const;
  double CountdownWidth(const std::string& text) const;
  void UpdateChangedCells(const std::string& before);

  std::string countdown_;
  std::string stateWord_;
  std::string spoken_;  // the state, for a screen reader
  TextPlace place_;     // of the digits, in this widget
  TextPlace tag_;
  ElementStyle style_;
  QFont font_;
  double digitCell_ = 0;  // width of a digit's cell, and of the colon's
  double colonCell_ = 0;
  double digitHeight_ = 0;
  double colonLift_ = 0;  // pixels above where the font has it
  Colour background_;
};

}  // namespace corvanel
