#include "scoring/window/play_time_page.h"

#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <cmath>

namespace corvanel {
namespace {

// A page in its own units, the shape of a sheet of paper laid across.
constexpr double kPageWidth = 1120;
constexpr double kPageHeight = 790;
constexpr double kMargin = 36;
constexpr double kPairsWidth = 380;
constexpr size_t kPairs = 16;  // ranked
constexpr int kPictureScale = 2;
constexpr double kLeastWait = 0.5;   // minutes, that are worth a word
constexpr double kNarrow = 64;       // a cell with no room for tenths of two numbers
constexpr double kLeastForTwo = 26;  // height of a cell that holds two lines

constexpr QColor kInk(0x1C, 0x25, 0x33);
constexpr QColor kQuiet(0x6B, 0x76, 0x86);
constexpr QColor kPaper(255, 255, 255);
constexpr QColor kBar(0x3F, 0x6F, 0xB5);

QString Minutes(double minutes) {
  return QString::number(minutes, 'f', minutes < 99.95 ? 1 : 0);
}

void SetFont(QPainter& painter, double pixels, QFont::Weight weight = QFont::Normal) {
  QFont font = painter.font();
  font.setPixelSize(std::max(static_cast<int>(pixels), 1));
  font.setWeight(weight);
  painter.setFont(font);
}

/// From a cool pale blue for the quickest to a warm red for the slowest; the number stands in the
/// cell too.
QColor HeatOf(double share) {
  const QColor cold(0xE3, 0xEE, 0xFA);
  const QColor middle(0xFF, 0xE0, 0x9A);
  const QColor hot(0xE0, 0x56, 0x3B);
  const QColor& from = share < 0.5 ? cold : middle;
  const QColor& to = share < 0.5 ? middle : hot;
  const double part = share < 0.5 ? share * 2 : share * 2 - 1;
  return QColor::fromRgbF(static_cast<float>(from.redF() + (to.redF() - from.redF()) * part),
                          static_cast<float>(from.greenF() + (to.greenF() - from.greenF()) * part),
                          static_cast<float>(from.blueF() + (to.blueF() - from.blueF()) * part));
}

struct Span {
  double least = 1e9;
  double greatest = 0;
  double Share(double minutes) const {
    return greatest > least ? (minutes - least) / (greatest - least) : 0.5;
  }
};

/// From the quickest to nearly the slowest: one that waited for an hour must not pale the rest.
Span SpanOf(const SectionTimes& section) {
  std::vector<double> all;
  for (const auto& [place, time] : section.times) all.push_back(time.minutes);
  std::sort(all.begin(), all.end());
  if (all.empty()) return {};
  return {all.front(), all[(all.size() - 1) * 97 / 100]};
}

}  // namespace

PlayTimePage::PlayTimePage(std::string title, std::vector<SectionTimes> times, QWidget* parent)
    : QWidget(parent), title_(std::move(title)), times_(std::move(times)) {
  setObjectName("pagePlayTime");
  FitInto(static_cast<int>(kPageWidth));
}

double PlayTimePage::WholeHeight() const {
  return kPageHeight * static_cast<double>(std::max<size_t>(times_.size(), 1));
}

void PlayTimePage::FitInto(int width) {
  scale_ = std::min(width / kPageWidth, 1.0);
  setFixedSize(static_cast<int>(kPageWidth * scale_), static_cast<int>(WholeHeight() * scale_));
}

void PlayTimePage::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.scale(scale_, scale_);
  PaintAll(painter);
}

void PlayTimePage::PaintAll(QPainter& painter) const {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(QRectF(0, 0, kPageWidth, WholeHeight()), kPaper);
  for (const SectionTimes& section : times_) {
    PaintSection(painter, section);
    painter.translate(0, kPageHeight);
  }
}

void PlayTimePage::PaintSection(QPainter& painter, const SectionTimes& section) const {
  painter.setPen(kInk);
  SetFont(painter, 26, QFont::DemiBold);
  painter.drawText(QRectF(kMargin, kMargin, kPageWidth - 2 * kMargin, 34), Qt::AlignLeft,
                   tr("Play times, section %1").arg(QString::fromStdString(section.letter)));
  painter.setPen(kQuiet);
  SetFont(painter, 16);
  painter.drawText(QRectF(kMargin, kMargin + 38, kPageWidth - 2 * kMargin, 24), Qt::AlignLeft,
                   QString::fromStdString(title_));
  SetFont(painter, 14);
  painter.drawText(QRectF(kMargin, kMargin + 62, kPageWidth - 2 * kMargin, 22), Qt::AlignLeft,
                   QString::fromUtf8(kWhatIsMeasured.data(), kWhatIsMeasured.size()));
  const double top = kMargin + 106;
  const double height = kPageHeight - top - kMargin;
  if (section.times.empty()) {
    painter.drawText(QRectF(kMargin, top, kPageWidth, 30), Qt::AlignLeft,
                     tr("No results with a time"));
    return;
  }
  const double mapWidth = kPageWidth - 3 * kMargin - kPairsWidth;
  PaintHeatMap(painter, section, QRectF(kMargin, top, mapWidth, height));
  PaintPairs(painter, section, QRectF(2 * kMargin + mapWidth, top, kPairsWidth, height));
}

void PlayTimePage::PaintHeatMap(QPainter& painter, const SectionTimes& section,
                                const QRectF& place) const {
  const double label = 52;
  const double head = 46;
  const Span span = SpanOf(section);
  const double cellWidth =
      std::min((place.width() - label) / static_cast<double>(section.rounds.size()), 90.0);
  const double cellHeight =
      std::min((place.height() - head - 30) / static_cast<double>(section.tables.size()), 46.0);
  const bool tellsMoves = std::any_of(section.times.begin(), section.times.end(),
                                      [](const auto& time) { return time.second.moved > 0; });
  const bool tellsWaits = cellHeight >= kLeastForTwo;
  QString heading = tr("Minutes of play, by table and round");
  if (tellsWaits)
    heading += tellsMoves ? tr("; below, waited + moved before") : tr("; below, until it began");
  painter.setPen(kQuiet);
  SetFont(painter, 15);
  painter.drawText(QRectF(place.x(), place.y(), place.width(), 20), Qt::AlignLeft, heading);
  const double top = place.y() + head;
  SetFont(painter, std::clamp(cellHeight * 0.45, 7.0, 15.0), QFont::DemiBold);
  for (size_t c = 0; c < section.rounds.size(); ++c) {
    const double x = place.x() + label + cellWidth * static_cast<double>(c);
    painter.setPen(kInk);
    painter.drawText(QRectF(x, top - 22, cellWidth, 20), Qt::AlignCenter,
                     QString::number(section.rounds[c].round));
    painter.setPen(kQuiet);
    const double foot = top + cellHeight * static_cast<double>(section.tables.size()) + 4;
    painter.drawText(QRectF(x, foot, cellWidth, 20), Qt::AlignCenter,
                     Minutes(section.rounds[c].minutes));
  }
  for (size_t r = 0; r < section.tables.size(); ++r) {
    const double y = top + cellHeight * static_cast<double>(r);
    painter.setPen(kInk);
    painter.drawText(QRectF(place.x(), y, label - 12, cellHeight),
                     Qt::AlignVCenter | Qt::AlignRight, QString::number(section.tables[r]));
    for (size_t c = 0; c < section.rounds.size(); ++c) {
      const auto time = section.times.find({section.tables[r], section.rounds[c].round});
      if (time == section.times.end()) continue;
      const QRectF cell(place.x() + label + cellWidth * static_cast<double>(c) + 1, y + 1,
                        cellWidth - 2, cellHeight - 2);
      const double share = std::clamp(span.Share(time->second.minutes), 0.0, 1.0);
      painter.setPen(Qt::NoPen);
      painter.setBrush(HeatOf(share));
      painter.drawRoundedRect(cell, 4, 4);
      painter.setPen(kInk);
      const QRectF played(cell.x(), cell.y() + 1, cell.width(), cell.height() * 0.6);
      painter.drawText(played, Qt::AlignCenter, Minutes(time->second.minutes));
      const auto [waited, moved] = std::pair(time->second.waited, time->second.moved);
      if (waited + moved < kLeastWait || !tellsWaits) continue;
      painter.save();
      SetFont(painter, std::clamp(cellHeight * 0.26, 7.0, 11.0));
      const QString both = cellWidth < kNarrow
                               ? QString("%1+%2").arg(std::lround(waited)).arg(std::lround(moved))
                               : QString("%1 + %2").arg(Minutes(waited), Minutes(moved));
      painter.drawText(QRectF(cell.x(), played.bottom(), cell.width(), cell.height() * 0.34),
                       Qt::AlignCenter, tellsMoves ? both : Minutes(waited));
      painter.restore();
    }
  }
}

void PlayTimePage::PaintPairs(QPainter& painter, const SectionTimes& section,
                              const QRectF& place) const {
  painter.setPen(kQuiet);
  SetFont(painter, 15);
  painter.drawText(QRectF(place.x(), place.y(), place.width(), 20), Qt::AlignLeft,
                   tr("Pairs: minutes a board beyond the others"));
  const size_t count = std::min(kPairs, section.byPair.size());
  const double row = std::min((place.height() - 46) / static_cast<double>(kPairs), 40.0);
  const double label = 56;
  const double longest = count == 0 ? 1 : std::max(section.byPair.front().excess, 0.1);
  for (size_t i = 0; i < count; ++i) {
    const PlayerTimes& pair = section.byPair[i];
    const double y = place.y() + 46 + row * static_cast<double>(i) - 22;
    painter.setPen(kInk);
    SetFont(painter, 15, QFont::DemiBold);
    painter.drawText(QRectF(place.x(), y, label - 10, row), Qt::AlignVCenter | Qt::AlignRight,
                     QString::fromStdString(pair.label));
    const double most = place.width() - label - 110;
    const double width = most * std::max(pair.excess, 0.0) / longest;
    const QRectF bar(place.x() + label, y + row * 0.08, width, row * 0.42);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kBar);
    painter.drawRoundedRect(bar, 3, 3);
    painter.setPen(kInk);
    painter.drawText(QRectF(bar.right() + 8, bar.y() - 4, 110, bar.height() + 8), Qt::AlignVCenter,
                     QString("%1 ± %2")
                         .arg(QString::fromStdString(SignedTenths(pair.excess)).replace('-', "−"))
                         .arg(pair.sure, 0, 'f', 1));
    painter.setPen(kQuiet);
    SetFont(painter, 12);
    const QString names =
        painter.fontMetrics().elidedText(QString::fromStdString(pair.names), Qt::ElideRight,
                                         static_cast<int>(place.width() - label));
    painter.drawText(QRectF(bar.x(), bar.bottom(), place.width() - label, row * 0.42),
                     Qt::AlignVCenter, names);
  }
}

bool PlayTimePage::Save(const QString& file) const {
  if (!file.endsWith(".pdf", Qt::CaseInsensitive)) {
    QImage image(static_cast<int>(kPageWidth) * kPictureScale,
                 static_cast<int>(WholeHeight()) * kPictureScale, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.scale(kPictureScale, kPictureScale);
    PaintAll(painter);
    painter.end();
    return image.save(file);
  }
  QPdfWriter pdf(file);
  pdf.setPageSize(QPageSize(QPageSize::A4));
  pdf.setPageOrientation(QPageLayout::Landscape);
  pdf.setPageMargins(QMarginsF());
  QPainter painter;
  if (!painter.begin(&pdf)) return false;
  const double scale = std::min(pdf.width() / kPageWidth, pdf.height() / kPageHeight);
  for (size_t page = 0; page < times_.size(); ++page) {
    if (page > 0) pdf.newPage();
    painter.save();
    painter.scale(scale, scale);
    PaintSection(painter, times_[page]);
    painter.restore();
  }
  return painter.end();
}

}  // namespace corvanel
