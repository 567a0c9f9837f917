#pragma once

#include <QWidget>
#include <vector>

#include "session/timetable.h"

namespace corvanel {

/// The evening at a glance: a field for each round and the break, as wide as it is long, with the
/// gaps of the moves between them.
class TimetableBar : public QWidget {
  Q_OBJECT

 public:
  explicit TimetableBar(QWidget* parent = nullptr);
  void Show(const std::vector<TimetableLine>& lines, ClockTime start, TimeForm form);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  const TimetableLine* LineAt(double x) const;
  double Scale() const;

  std::vector<TimetableLine> lines_;
  ClockTime start_;
  TimeForm form_ = TimeForm::Hours24;
};

}  // namespace corvanel
