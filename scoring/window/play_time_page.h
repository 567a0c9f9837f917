#pragma once

#include <QWidget>
#include <vector>

#include "scoring/play_time.h"

class QPainter;

namespace corvanel {

/// The play times as a picture: for each section tables by rounds as a heat map, and the slow
/// pairs ranked.
class PlayTimePage : public QWidget {
  Q_OBJECT

 public:
  PlayTimePage(std::string title, std::vector<SectionTimes> times, QWidget* parent = nullptr);

  /// Makes the page as much smaller as it takes to be no wider than `width` pixels.
  void FitInto(int width);
  /// One section after the other, a page each. The file's ending says whether it becomes a PDF or
  /// a picture. False when it could not be written.
  bool Save(const QString& file) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double WholeHeight() const;
  void PaintAll(QPainter& painter) const;
  void PaintSection(QPainter& painter, const SectionTimes& section) const;
  void PaintHeatMap(QPainter& painter, const SectionTimes& section, const QRectF& place) const;
  void PaintPairs(QPainter& painter, const SectionTimes& section, const QRectF& place) const;

  double scale_ = 1;
  std::string title_;
  std::vector<SectionTimes> times_;
};

}  // namespace corvanel
