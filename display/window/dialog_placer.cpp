#include "display/window/dialog_placer.h"

#include <QDialog>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <iterator>

#include "display/screen_plan.h"
#include "display/window/display_window.h"
#include "display/window/text_row.h"

namespace corvanel {
namespace {

constexpr int kTitleBar = 36;      // pixels; the frame is not known before the window is shown
constexpr int kLeastBeside = 150;  // pixels; a countdown is still legible in them

}  // namespace

DialogPlacer::DialogPlacer(std::vector<DisplayWindow*> displays,
                           std::function<const QWidget*()> directors)
    : displays_(std::move(displays)), directors_(std::move(directors)) {}

bool DialogPlacer::eventFilter(QObject* watched, QEvent* event) {
  if (event->spontaneous()) return false;
  if (event->type() == QEvent::Polish) {
    auto* dialog = qobject_cast<QDialog*>(watched);
    const bool asked =
        dialog != nullptr && qobject_cast<DisplayWindow*>(dialog->parentWidget()) != nullptr;
    // A click beside it must not bring the full-screen display before it.
    if (asked) dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
  } else if (event->type() == QEvent::Show) {
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
  const auto shown = [](const QWidget* window) { return window->isVisible(); };
  if (std::none_of(displays_.begin(), displays_.end(), shown)) return;
  // Else GNOME pins it over the middle of the display, whatever place it asks for. On Wayland it
  // could not ask for one.
  const bool placed = QGuiApplication::platformName() != "wayland";
  if (placed && qobject_cast<DisplayWindow*>(dialog.parentWidget()) != nullptr) {
    dialog.windowHandle()->setTransientParent(nullptr);
  }
  const auto* asked = qobject_cast<const QDialog*>(dialog.parentWidget());
  const QRect over = (asked == nullptr ? directors_() : asked)->geometry();
  const QScreen* screen = QGuiApplication::screenAt(over.center());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  std::vector<DisplayWindow*> shownThere;
  std::copy_if(displays_.begin(), displays_.end(), std::back_inserter(shownThere),
               [&](const DisplayWindow* display) {
                 return display->isVisible() && screen->geometry().intersects(display->geometry());
               });
  std::vector<Place> countdowns;
  std::transform(
      shownThere.begin(), shownThere.end(), std::back_inserter(countdowns),
      [](const DisplayWindow* display) { return PlaceOf(display->CountdownOnScreen()); });
  // At the show it has its size, but no place yet.
  QRect wanted(QPoint(0, 0), dialog.size() + QSize(0, kTitleBar));
  wanted.moveCenter(over.center());
  const QRect place =
      Pixels(PlaceDialog(PlaceOf(screen->availableGeometry()), PlaceOf(wanted), countdowns));
  dialog.move(place.topLeft());
  for (DisplayWindow* display : shownThere) {
    const int left = display->width() - place.width();
    if (!place.intersects(display->CountdownOnScreen()) || left < kLeastBeside) continue;
    dialog.move(display->geometry().right() - place.width(), place.y());
    display->MakeRoom(place.width());
    rooms_.push_back({&dialog, display, place.width()});
  }
}

}  // namespace corvanel
