#pragma once

#include <QWidget>

#include "display/table_grid.h"
#include "session/progress_face.h"

namespace corvanel {

/// Lines of text in the middle of their room, as large as chosen or as much smaller as they need.
class ProgressLines : public QWidget {
  Q_OBJECT

 public:
  explicit ProgressLines(QWidget* parent);
  void Show(const std::vector<std::string>& lines);
  void SetStyle(const ElementStyle& style, double points);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<std::string> lines_;
  ElementStyle style_;
  double points_ = 1;
};

/// One cell per table. How far a table is shows in the cell's shape and text, not only in its
/// colour: from the last rows of the room a mark is seen before a colour is.
class TableGridView : public QWidget {
  Q_OBJECT

 public:
  explicit TableGridView(QWidget* parent);
  void Show(const std::vector<SectionCells>& sections);
  void SetStyle(const ElementStyle& style);
  /// Who is at the table whose cell is at a point of this view; empty where there is none.
  QString TipAt(const QPoint& point) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  TableGrid Grid() const;
  void PaintCell(QPainter& painter, const TableCell& cell, const QRectF& place) const;
  void PaintText(QPainter& painter, const QString& text, const QRectF& place) const;

  std::vector<SectionCells> sections_;
  ElementStyle style_;
};

/// The progress of the tables at the foot of a display: who is slow and who still plays, and the
/// grid of tables.
class ProgressFrame : public QWidget {
  Q_OBJECT

 public:
  explicit ProgressFrame(QWidget* parent);

  /// The height that it wants in a window of this height, pixels; 0 when it has nothing to show.
  /// Lines have their room also while there are none, so that nothing jumps when they come.
  double HeightIn(double windowHeight) const;
  /// What is to be shown, in the font and colour of the units' information; `lines` and `grid` say
  /// whether each is wanted at all.
  void Show(const ProgressFace& face, bool lines, bool grid, const ElementStyle& style);
  /// Takes its place in a window of this back colour and height.
  void SetPlace(const QRect& place, Colour background, double windowHeight);
  /// Who is at the table at a point of this frame; empty where there is none.
  QString TipAt(const QPoint& point) const;

 private:
  double LinesHeight(double windowHeight) const;

  ProgressLines* lblProgress_;
  TableGridView* lblTable_;
  bool lines_ = false;
  size_t tables_ = 0;
  ElementStyle style_;
};

}  // namespace corvanel
