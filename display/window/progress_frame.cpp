#include "display/window/progress_frame.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "display/window/text_measure.h"
#include "display/window/text_row.h"

namespace corvanel {
namespace {

constexpr double kLineHeight = 1.75;  // pixels for each point of the text
constexpr int kLines = 2;
constexpr double kCellGap = 0.05;  // of a cell's height
constexpr double kLeastCellText = 5;

constexpr QColor kNotPlaying(128, 128, 128);
constexpr QColor kFinished(0x2E, 0x7D, 0x32);
constexpr QColor kSlow(0xFF, 0xB3, 0x00);

QRectF Rect(const Place& place) {
  return {place.x, place.y, place.width, place.height};
}

}  // namespace

ProgressLines::ProgressLines(QWidget* parent) : QWidget(parent) {
  setObjectName("lblProgress");
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ProgressLines::Show(const std::vector<std::string>& lines) {
  if (lines == lines_) return;
  lines_ = lines;
  QStringList texts;
  for (const std::string& line : lines_) texts << QString::fromStdString(line);
  setAccessibleName(texts.join('\n'));
  update();
}

void ProgressLines::SetStyle(const ElementStyle& style, double points) {
  style_ = style;
  points_ = points;
  update();
}

void ProgressLines::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(ColourOf(style_.Forecolour));
  const double height = this->height() / static_cast<double>(kLines);
  double y = (this->height() - height * static_cast<double>(lines_.size())) / 2;
  for (const std::string& line : lines_) {
    const QString text = QString::fromStdString(line);
    double points = points_;
    const double wide = QFontMetricsF(FontOf(style_, points)).horizontalAdvance(text);
    if (wide > width()) points *= 0.98 * width() / wide;
    painter.setFont(FontOf(style_, points));
    painter.drawText(QRectF(0, y, width(), height), Qt::AlignCenter, text);
    y += height;
  }
}

TableGridView::TableGridView(QWidget* parent) : QWidget(parent) {
  setObjectName("lblTable");
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void TableGridView::Show(const std::vector<SectionCells>& sections) {
  if (sections == sections_) return;
  sections_ = sections;
  update();
}

void TableGridView::SetStyle(const ElementStyle& style) {
  style_ = style;
  update();
}

void TableGridView::PaintText(QPainter& painter, const QString& text, const QRectF& place) const {
  const double probe = 100;
  const QFontMetricsF metrics(FontOf(style_, probe));
  const double points = std::min(probe * place.height() / metrics.height(),
                                 probe * place.width() / metrics.horizontalAdvance(text));
  painter.setFont(FontOf(style_, std::max(points, 1.0)));
  painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, text);
}

void TableGridView::PaintCell(QPainter& painter, const TableCell& cell, const QRectF& place) const {
  const double gap = std::max(kCellGap * place.height(), 1.0);
  const QRectF box = place.adjusted(gap, gap, -gap, -gap);
  const double line = std::max(box.height() * 0.04, 1.0);
  const double round = box.height() * 0.16;
  QColor ink = ColourOf(style_.Forecolour);
  QPen outline(ink, line);
  QBrush fill = Qt::NoBrush;
  switch (cell.state) {
    case TableState::Finished:
      fill = kFinished;
      outline = Qt::NoPen;
      ink = Qt::white;
      break;
    case TableState::Playing:
      break;
    case TableState::LastBoard:
      outline.setWidthF(line * 2.5);
      break;
    case TableState::Slow:
      fill = kSlow;
      outline = Qt::NoPen;
      ink = Qt::black;
      break;
    case TableState::NotPlaying:
      ink = kNotPlaying;
      outline = Qt::NoPen;
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
  const QString number = QString::fromStdString(cell.number);
  const QRectF inside = box.adjusted(round, 0, -round, 0);
  const QRectF upper(inside.x(), box.y() + box.height() * 0.06, inside.width(),
                     box.height() * 0.56);
  const QRectF lower(inside.x(), box.y() + box.height() * 0.6, inside.width(), box.height() * 0.34);
  PaintText(painter, number, upper);
  if (cell.state == TableState::Finished) {
    QPainterPath tick;
    const double unit = lower.height() * 0.5;
    tick.moveTo(lower.center() + QPointF(-unit, -unit * 0.1));
    tick.lineTo(lower.center() + QPointF(-unit * 0.3, unit * 0.5));
    tick.lineTo(lower.center() + QPointF(unit, -unit * 0.7));
    painter.setPen(QPen(ink, line * 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(tick);
  } else if (!cell.text.empty() && lower.height() >= kLeastCellText) {
    const QString text = QString::fromStdString(cell.text);
    PaintText(painter, cell.state == TableState::Slow ? tr("slow %1").arg(text) : text, lower);
  }
}

TableGrid TableGridView::Grid() const {
  std::vector<size_t> tables;
  for (const SectionCells& section : sections_) tables.push_back(section.cells.size());
  return LayOutTables(tables, width(), height());
}

QString TableGridView::TipAt(const QPoint& point) const {
  const TableGrid grid = Grid();
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
  const TableGrid grid = Grid();
  for (size_t s = 0; s < sections_.size(); ++s) {
    if (!grid.letters.empty()) {
      painter.setPen(ColourOf(style_.Forecolour));
      const QRectF place = Rect(grid.letters[s]);
      PaintText(painter, QString::fromStdString(sections_[s].letter),
                place.adjusted(0, place.height() * 0.15, 0, -place.height() * 0.15));
    }
    for (size_t t = 0; t < sections_[s].cells.size(); ++t) {
      PaintCell(painter, sections_[s].cells[t], Rect(grid.cells[s][t]));
    }
  }
}

QString ProgressFrame::TipAt(const QPoint& point) const {
  return lblTable_->TipAt(point - lblTable_->pos());
}

ProgressFrame::ProgressFrame(QWidget* parent)
    : QWidget(parent), lblProgress_(new ProgressLines(this)), lblTable_(new TableGridView(this)) {
  setObjectName("fraProgress");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAutoFillBackground(true);
}

double ProgressFrame::LinesHeight(double windowHeight) const {
  return lines_ ? kLines * kLineHeight * style_.Size * windowHeight / kReferenceHeight : 0;
}

double ProgressFrame::HeightIn(double windowHeight) const {
  return LinesHeight(windowHeight) + (tables_ > 0 ? GridShare(tables_) * windowHeight : 0);
}

void ProgressFrame::Show(const ProgressFace& face, bool lines, bool grid,
                         const ElementStyle& style) {
  style_ = style;
  lines_ = lines && !face.sections.empty();
  tables_ = 0;
  for (const SectionCells& section : face.sections) tables_ += grid ? section.cells.size() : 0;
  lblProgress_->Show(lines_ ? face.lines : std::vector<std::string>());
  lblTable_->Show(tables_ > 0 ? face.sections : std::vector<SectionCells>());
}

void ProgressFrame::SetPlace(const QRect& place, Colour background, double windowHeight) {
  setVisible(HeightIn(windowHeight) > 0);
  setGeometry(place);
  QPalette colours = palette();
  colours.setColor(QPalette::Window, ColourOf(background));
  setPalette(colours);
  const int lines = static_cast<int>(std::lround(LinesHeight(windowHeight)));
  const int margin = place.height() / 40;
  const int side = place.width() / 50;
  lblProgress_->setGeometry(side, 0, place.width() - 2 * side, lines);
  lblProgress_->SetStyle(style_, style_.Size * windowHeight / kReferenceHeight);
  lblTable_->setGeometry(side, lines, place.width() - 2 * side, place.height() - lines - margin);
  lblTable_->SetStyle(style_);
}

}  // namespace corvanel
