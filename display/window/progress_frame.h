#pragma once

#include <QWidget>

#include "display/table_grid.h"
#include "display/window/text_row.h"
#include "session/progress_face.h"

namespace corvanel {

/// One cell per table, or of very many tables the numbers of those that still play. What is
/// finished recedes, what still plays stands out, and the slow ones alone are filled: from the last
/// rows of the room a mark is seen before a colour is.
class TableGridView : public QWidget {
  Q_OBJECT

 public:
  explicit TableGridView(QWidget* parent);
  void Show(const std::vector<SectionCells>& sections);
  /// The height that it wants, pixels, being `width` wide in a window of this height; 0 when it has
  /// nothing to show.
  double HeightIn(double width, double windowHeight) const;
  /// `style` is that of the units' information; `background` that of the window; width and height
  /// as for HeightIn.
  void SetStyle(const ElementStyle& style, Colour background, double width, double windowHeight);
  /// Who is at the table whose cell is at a point of this view; empty where there is none.
  QString TipAt(const QPoint& point) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  TableGrid GridIn(double width, double windowHeight) const;
  void PaintCell(QPainter& painter, const TableCell& cell, const QRectF& place) const;
  void PaintNumber(QPainter& painter, const TableCell& cell, const QRectF& place) const;
  void PaintText(QPainter& painter, const QString& text, const QRectF& place,
                 Qt::Alignment alignment = Qt::AlignCenter) const;
  QColor Ink() const;
  QColor Receding(double share, double contrast) const;

  std::vector<SectionCells> sections_;
  bool listed_ = false;
  ElementStyle style_;
  Colour background_;
  double width_ = 0;
  double windowHeight_ = 0;
};

/// The progress of the tables at the foot of a display: a line that says who is slow and who still
/// plays, and the tables.
class ProgressFrame : public QWidget {
  Q_OBJECT

 public:
  explicit ProgressFrame(QWidget* parent);

  /// `line` and `tables`: what is to be shown of each.
  void Show(const std::string& line, const std::vector<SectionCells>& tables);
  double TablesHeightIn(double width, double windowHeight) const {
    return lblTable_->HeightIn(width, windowHeight);
  }
  /// Takes the layout's places for the line and for the tables, in a window of this back colour.
  void SetPlace(const Layout& layout, const ElementStyle& style, Colour background,
                double windowHeight);
  /// Who is at the table at a point of this frame; empty where there is none.
  QString TipAt(const QPoint& point) const;

 private:
  TextRow* lblProgress_;
  TableGridView* lblTable_;
};

}  // namespace corvanel
