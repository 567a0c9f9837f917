#include "tools/pictures/gallery.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <array>
#include <vector>

#include "tools/pictures/states.h"

namespace corvanel {
namespace {

constexpr std::array<QSize, 5> kSizes = {QSize(1024, 768), QSize(1280, 720), QSize(1920, 1080),
                                         QSize(3840, 2160), QSize(1080, 1920)};
constexpr int kThumbHeight = 180;
constexpr int kGap = 8;

QImage Picture(DisplayWindow& window, const QSize& size, const PictureState& state) {
  window.resize(size);
  window.ShowFace(state.face);
  window.ShowTables(state.tables);
  window.Rearrange();
  return window.grab().toImage();
}

}  // namespace

bool RenderGallery(Desktop& desktop, const QString& folder) {
  QDir().mkpath(folder);
  ShapeForPictures(desktop.TheSession());
  const std::vector<PictureState> states = PictureStates(desktop.TheSession().settings);
  const std::array<std::pair<const char*, DisplayWindow*>, 2> windows = {
      std::pair<const char*, DisplayWindow*>("room", &desktop.Display()),
      std::pair<const char*, DisplayWindow*>("twin", &desktop.TwinWindow())};
  int rowWidth = kGap;
  for (const QSize& size : kSizes) rowWidth += kThumbHeight * size.width() / size.height() + kGap;
  QImage sheet(2 * rowWidth, static_cast<int>(states.size()) * (kThumbHeight + kGap) + kGap,
               QImage::Format_RGB32);
  sheet.fill(Qt::white);
  QPainter painter(&sheet);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  bool written = true;
  int x = kGap;
  for (const auto& [name, window] : windows) {
    window->ShowTimeOfDay("20:51");
    window->show();
    for (const QSize& size : kSizes) {
      const int width = kThumbHeight * size.width() / size.height();
      int y = kGap;
      for (const PictureState& state : states) {
        const QImage picture = Picture(*window, size, state);
        written &= picture.save(QString("%1/%2 %3x%4 %5.png")
                                    .arg(folder, name)
                                    .arg(size.width())
                                    .arg(size.height())
                                    .arg(state.name));
        painter.drawImage(QRect(x, y, width, kThumbHeight),
                          picture.scaled(2 * width, 2 * kThumbHeight, Qt::IgnoreAspectRatio,
                                         Qt::SmoothTransformation));
        y += kThumbHeight + kGap;
      }
      x += width + kGap;
    }
    x += kGap;
    window->hide();
  }
  painter.end();
  return sheet.save(folder + "/contact-sheet.png") && written;
}

}  // namespace corvanel
