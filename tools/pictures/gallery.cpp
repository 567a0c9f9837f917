#include "tools/pictures/gallery.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <array>
#include <vector>

#include "control/live_strip.h"
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

QString FileOf(const QString& folder, const char* window, const QSize& size, const char* state) {
  return QString("%1/%2 %3x%4 %5.png")
      .arg(folder, window)
      .arg(size.width())
      .arg(size.height())
      .arg(state);
}

/// What the director has to be told; one line more than fits.
std::vector<Notice> Lines() {
  return {
      {NoticeKind::SilentTable, "Table 8 has sent nothing for two rounds", "Leave it out", "8"},
      {NoticeKind::Sound, "The sound Bell.wav was not heard: no audio output is connected"},
      {NoticeKind::Awake,
       "Nothing keeps this computer awake: set its power settings so that the screen stays on"}};
}

/// The control window with a session under way, and with lines for the director.
bool RenderControl(Desktop& desktop, const QString& folder,
                   const std::vector<PictureState>& states) {
  FrmMain& window = desktop.MainWindow();
  desktop.Control().Display();
  window.OfferResume();
  window.show();
  bool written = true;
  for (const QSize& size : {kSizes[0], kSizes[2]}) {
    window.resize(size);
    for (const PictureState& state : states) {
      if (!Runs(state.face.phase) || !state.tables.sections.empty()) continue;
      window.ShowLive(LiveStripOf(state.face, {}, desktop.TheSession()));
      window.ShowNotices(Lines());
      QApplication::processEvents();  // its parts take their new places
      written &= window.grab().save(FileOf(folder, "control", size, state.name));
    }
  }
  window.ShowNotices({});
  window.hide();
  return written;
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
    window->ShowNotices(window == &desktop.TwinWindow() ? Lines() : std::vector<Notice>());
    window->show();
    for (const QSize& size : kSizes) {
      const int width = kThumbHeight * size.width() / size.height();
      int y = kGap;
      for (const PictureState& state : states) {
        const QImage picture = Picture(*window, size, state);
        written &= picture.save(FileOf(folder, name, size, state.name));
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
  written &= RenderControl(desktop, folder, states);
  return sheet.save(folder + "/contact-sheet.png") && written;
}

}  // namespace corvanel
