#pragma once

#include <QWidget>
#include <string>

#include "session/display_elements.h"

namespace corvanel {

/// The countdown of the session under way in the control window, in the colours that the room sees.
class LiveCountdown : public QWidget {
  Q_OBJECT

 public:
  explicit LiveCountdown(QWidget* parent);
  void Show(const std::string& countdown, const ElementStyle& style);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont DigitFont() const;

  QString countdown_;
  ElementStyle style_;
};

}  // namespace corvanel
