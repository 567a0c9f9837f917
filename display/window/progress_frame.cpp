#include "display/window/progress_frame.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "display/window/text_measure.h"
#include "session/contrast.h"

namespace corvanel {
namespace {

constexpr double kCellGap = 0.06;  // of a cell's height
constexpr double kLeastCellText = 5;

constexpr QColor kNotPlaying(128, 128, 128);
constexpr QColor kSlow(0xFF, 0xB3, 0x00);

QRectF Rect(const Place& place) {
  return {place.x, place.y, place.width, place.height};
}

void PaintTick(QPainter& painter, const QRectF& place, const QColor& ink) {
  QPainterPath tick;
  const double unit = place.height() * 0.5;
  tick.moveTo(place.center() + QPointF(-unit, -unit * 0.1));
  tick.lineTo(place.center() + QPointF(-unit * 0.3, unit * 0.5));
  tick.lineTo(place.center() + QPointF(unit, -unit * 0.7));
  painter.setPen(QPen(ink, unit * 0.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(tick);
}

}  // namespace

TableGridView::TableGridView(QWidget* parent) : QWidget(parent) {
  setObjectName("lblTable");
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void TableGridView::Show(const std::vector<SectionCells>& sections) {
  size_t all = 0;
  for (const SectionCells& section : sections) all += section.cells.size();
  std::vector<SectionCells> shown = ShownTables(sections);
  if (shown == sections_ && listed_ == (all > kMostCells)) return;
  listed_ = all > kMostCells;
  sections_ = std::move(shown);
  update();
}

void TableGridView::SetStyle(const ElementStyle& style, Colour background, double width,
                             double windowHeight) {
  style_ = style;
  background_ = background;
  width_ = width;
  windowHeight_ = windowHeight;
  update();
}

QColor TableGridView::Ink() const {
  return ColourOf(Contrast(background_));
}

QColor TableGridView::Receding(double share, double contrast) const {
  return ColourOf(corvanel::Receding(Contrast(background_), background_, share, contrast));
}

void TableGridView::PaintText(QPainter& painter, const QString& text, const QRectF& place,
                              Qt::Alignment alignment) const {
  const double probe = 100;
  const QFontMetricsF metrics(FontOf(style_, probe));
  const double points = std::min(probe * place.height() / metrics.height(),
                                 probe * place.width() / metrics.horizontalAdvance(text));
  painter.setFont(FontOf(style_, std::max(points, 1.0)));
  painter.drawText(place, static_cast<int>(alignment) | Qt::TextDontClip, text);
}

void TableGridView::PaintCell(QPainter& painter, const TableCell& cell, const QRectF& place) const {
  const double gap = std::max(kCellGap * place.height(), 1.0);
  const QRectF box = place.adjusted(gap, gap, -gap, -gap);
  const double line = std::max(box.height() * 0.015, 1.0);
  const double round = box.height() * 0.1;
  QColor ink = Ink();
  QPen outline(ink, line * 3);
  QBrush fill = Qt::NoBrush;
  switch (cell.state) {
    case TableState::Finished:
      ink = Receding(0, kFaintText);
      outline = QPen(Receding(0, kFaintLine), line);
      break;
    case TableState::Playing:
    case TableState::LastBoard:
      break;
    case TableState::Slow:
      fill = kSlow;
      outline = Qt::NoPen;
      ink = Qt::black;
      break;
    case TableState::NotPlaying:
    case TableState::LeftOut:
      ink = kNotPlaying;
      outline = QPen(Receding(0, kFaintLine), line, Qt::DotLine);
      break;
    case TableState::Silent:
      outline.setStyle(Qt::DotLine);
      break;
  }
  painter.setPen(outline);
  painter.setBrush(fill);
  painter.drawRoundedRect(box, round, round);
  painter.setPen(ink);
  painter.setBrush(Qt::NoBrush);
  const QRectF inside = box.adjusted(round, 0, -round, 0);
  const QRectF upper(inside.x(), box.y() + box.height() * 0.06, inside.width(),
                     box.height() * 0.56);
  const QRectF lower(inside.x(), box.y() + box.height() * 0.6, inside.width(), box.height() * 0.32);
  PaintText(painter, QString::fromStdString(cell.number), upper);
  if (cell.state == TableState::Finished) {
    PaintTick(painter, lower.adjusted(0, lower.height() * 0.12, 0, -lower.height() * 0.12), ink);
  } else if (!cell.text.empty() && lower.height() >= kLeastCellText) {
    PaintText(painter, QString::fromStdString(cell.text), lower);
  }
}

/// A table in a list.
void TableGridView::PaintNumber(QPainter& painter, const TableCell& cell,
                                const QRectF& place) const {
  const bool slow = cell.state == TableState::Slow;
  if (slow) {
    const double radius = place.height() * 0.15;
    painter.setPen(Qt::NoPen);
    painter.setBrush(kSlow);
    painter.drawRoundedRect(place.adjusted(place.width() * 0.1, place.height() * 0.05,
                                           -place.width() * 0.1, -place.height() * 0.05),
                            radius, radius);
  }
  painter.setPen(slow ? QColor(Qt::black) : Ink());
  PaintText(painter, QString::fromStdString(cell.number),
            place.adjusted(place.width() * 0.12, place.height() * 0.03, -place.width() * 0.12,
                           -place.height() * 0.03));
}

TableGrid TableGridView::GridIn(double width, double windowHeight) const {
  std::vector<size_t> tables;
  for (const SectionCells& section : sections_) tables.push_back(section.cells.size());
  return listed_ ? LayOutLists(tables, width, windowHeight)
                 : LayOutTables(tables, width, windowHeight);
}

double TableGridView::HeightIn(double width, double windowHeight) const {
  return GridIn(width, windowHeight).height;
}

QString TableGridView::TipAt(const QPoint& point) const {
  const TableGrid grid = GridIn(width_, windowHeight_);
  for (size_t s = 0; s < grid.cells.size(); ++s) {
    for (size_t t = 0; t < grid.cells[s].size(); ++t) {
      if (Rect(grid.cells[s][t]).contains(point)) {
        return QString::fromStdString(sections_[s].cells[t].tip);
      }
    }
  }
  return {};
}

void TableGridView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const TableGrid grid = GridIn(width_, windowHeight_);
  for (size_t s = 0; s < sections_.size(); ++s) {
    if (!grid.boxes.empty()) {
      const QRectF box = Rect(grid.boxes[s]).adjusted(1, 1, -1, -1);
      painter.setPen(QPen(Receding(0, kFaintLine), std::max(windowHeight_ / 700, 1.0)));
      painter.setBrush(Qt::NoBrush);
      painter.drawRoundedRect(box, windowHeight_ * 0.008, windowHeight_ * 0.008);
    }
    if (!grid.letters.empty()) {
      painter.setPen(Receding(0, kFaintText));
      const QRectF place = Rect(grid.letters[s]);
      const double trim = place.height() * (listed_ ? 0.06 : 0.2);
      PaintText(painter, QString::fromStdString(sections_[s].letter),
                place.adjusted(0, trim, listed_ ? 0 : -place.width() * 0.2, -trim),
                listed_ ? Qt::AlignCenter : Qt::AlignRight | Qt::AlignVCenter);
    }
    for (size_t t = 0; t < sections_[s].cells.size(); ++t) {
      const QRectF place = Rect(grid.cells[s][t]);
      if (listed_) {
        PaintNumber(painter, sections_[s].cells[t], place);
      } else {
        PaintCell(painter, sections_[s].cells[t], place);
      }
    }
  }
}

ProgressFrame::ProgressFrame(QWidget* parent)
    : QWidget(parent),
      lblProgress_(new TextRow("lblProgress", this)),
      lblTable_(new TableGridView(this)) {
  setObjectName("fraProgress");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAutoFillBackground(true);
}

void ProgressFrame::Show(const std::string& line, const std::vector<SectionCells>& tables) {
  lblProgress_->SetText(line);
  lblTable_->Show(tables);
}

void ProgressFrame::SetPlace(const Layout& layout, const ElementStyle& style, Colour background,
                             double windowHeight) {
  const bool line = !lblProgress_->Text().empty() && layout.unit.points > 0;
  const QRect tables = Pixels(layout.tables);
  setVisible(line || layout.tables.height > 0);
  QRect place = tables;
  if (line) place = place.united(Pixels(layout.unit.place));
  setGeometry(place);
  QPalette colours = palette();
  colours.setColor(QPalette::Window, ColourOf(background));
  setPalette(colours);
  TextPlace row = line ? layout.unit : TextPlace{};
  row.place.x -= place.x();
  row.place.y -= place.y();
  lblProgress_->SetPlace(row, style, background);
  lblTable_->setGeometry(tables.translated(-place.topLeft()));
  lblTable_->SetStyle(style, background, layout.tables.width, windowHeight);
}

QString ProgressFrame::TipAt(const QPoint& point) const {
  return lblTable_->TipAt(point - lblTable_->pos());
}

}  // namespace corvanel
