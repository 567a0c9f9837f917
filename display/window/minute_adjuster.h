#pragma once

#include <QAbstractSlider>

class QToolButton;

namespace corvanel {

/// Adds or takes off a minute: two buttons that move its value to -1 (one more) or 1 (one less). It
/// goes back to 0 by itself.
class MinuteAdjuster : public QAbstractSlider {
  Q_OBJECT

 public:
  explicit MinuteAdjuster(QWidget* parent);
  QToolButton* Less() const { return less_; }
  QToolButton* More() const { return more_; }
  QSize sizeHint() const override;

 signals:
  void Moved(int value);

 private:
  QToolButton* Add(const char* name, const QString& text, const QString& hint, int value);

  QToolButton* less_;
  QToolButton* more_;
};

}  // namespace corvanel
