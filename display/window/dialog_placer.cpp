#include "display/window/dialog_placer.h"

#include <QDialog>
#include <QEvent>
#include <QScreen>
#include <algorithm>

#include "display/screen_plan.h"
#include "display/window/display_window.h"
#include "display/window/text_row.h"

namespace corvanel {
namespace {

constexpr int kTitleBar = 36;      // pixels; the frame is not known before the window is shown
constexpr int kLeastBeside = 150;  // pixels; a countdown is still legible in them

}  // namespace

DialogPlacer::DialogPlacer(std::vector<DisplayWindow*> displays) : displays_(std::move(displays)) {}

bool DialogPlacer::eventFilter(QObject* watched, QEvent* event) {
  if (event->spontaneous()) return false;
  if (event->type() == QEvent::Show) {
    if (auto* dialog = qobject_cast<QDialog*>(watched)) PlaceBeside(*dialog);
  } else if (event->type() == QEvent::Hide) {
    GiveBack(watched);
  }
  return false;
}

void DialogPlacer::GiveBack(const QObject* dialog) {
  if (std::erase_if(rooms_, [&](const Room& room) { return room.dialog == dialog; }) == 0) return;
  for (DisplayWindow* display : displays_) {
    const auto last = std::find_if(rooms_.rbegin(), rooms_.rend(),
                                   [&](const Room& room) { return room.display == display; });
    display->MakeRoom(last == rooms_.rend() ? 0 : last->width);
  }
}

void DialogPlacer::PlaceBeside(QDialog& dialog) {
  std::vector<Place> countdowns;
  for (const DisplayWindow* display : displays_) {
    if (display->isVisible()) countdowns.push_back(PlaceOf(display->CountdownOnScreen()));
  }
  if (countdowns.empty()) return;
  const QRect wanted = dialog.geometry().adjusted(0, -kTitleBar, 0, 0);
  const QRect screen = dialog.screen()->availableGeometry();
  const QRect place = Pixels(PlaceDialog(PlaceOf(screen), PlaceOf(wanted), countdowns));
  dialog.move(place.topLeft());
  for (DisplayWindow* display : displays_) {
    const int left = display->width() - place.width();
    if (!display->isVisible() || !place.intersects(display->CountdownOnScreen()) ||
        left < kLeastBeside) {
      continue;
    }
    dialog.move(display->geometry().right() - place.width(), place.y());
    display->MakeRoom(place.width());
    rooms_.push_back({&dialog, display, place.width()});
  }
}

}  // namespace corvanel
