#pragma once

#include <QWidget>

#include "display/layout.h"

namespace corvanel {

/// One text of the display: a label that breaks its lines as the layout foresaw. Takes no part in
/// mouse events; they are the window's.
class TextRow : public QWidget {
  Q_OBJECT

 public:
  TextRow(const QString& name, QWidget* parent);
  void SetText(const std::string& text);
  const std::string& Text() const { return text_; }
  /// Takes its place, font and colours; hidden when the place has no size. `background`: of the
  /// window, on which a text of the same back colour needs no field of its own.
  void SetPlace(const TextPlace& place, const ElementStyle& style, Colour background);
  /// Whether the present text stands within the row whole.
  bool Fits() const;
  /// The height of its capitals, pixels.
  double Capitals() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Break();
  double LineHeight() const;

  std::string text_;
  TextPlace place_;
  ElementStyle style_;
  bool field_ = false;
  std::vector<std::string> lines_;
};

/// A layout's place in whole pixels of the window.
QRect Pixels(const Place& place);
/// The way back.
Place PlaceOf(const QRect& pixels);

}  // namespace corvanel
