#pragma once

#include <QWidget>
#include <vector>

#include "session/evening_so_far.h"
#include "session/session.h"

namespace corvanel {

/// The evening at a glance: a field for each round and the break, as wide as it is long, with the
/// gaps of the moves between them. Above a gap stands what its move brings (S for a skip, A for an
/// arrow switch), below each field when it begins. What was played is dimmed.
class TimetableBar : public QWidget {
  Q_OBJECT

 public:
  explicit TimetableBar(QWidget* parent = nullptr);
  /// `session` tells the skips, the arrow switches and the form of times; it must outlive the bar.
  void Show(const Evening& evening, const Session& session);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  const TimetableLine* LineAt(double x) const;
  double Scale() const;
  QString MarksOf(int round) const;
  void PaintField(QPainter& painter, const TimetableLine& line) const;
  void PaintMarks(QPainter& painter, const TimetableLine& line) const;
  void PaintNow(QPainter& painter) const;

  Evening evening_;
  const Session* session_ = nullptr;
};

}  // namespace corvanel
