#include "display/window/dialog_placer.h"

#include <QDialog>
#include <QEvent>
#include <QScreen>

#include "display/screen_plan.h"
#include "display/window/display_window.h"
#include "display/window/text_row.h"

namespace corvanel {
namespace {

constexpr int kTitleBar = 36;  // pixels; the frame is not known before the window is shown

Place PlaceOf(const QRect& rect) {
  return {static_cast<double>(rect.x()), static_cast<double>(rect.y()),
          static_cast<double>(rect.width()), static_cast<double>(rect.height())};
}

}  // namespace

DialogPlacer::DialogPlacer(std::vector<const DisplayWindow*> displays)
    : displays_(std::move(displays)) {}

bool DialogPlacer::eventFilter(QObject* watched, QEvent* event) {
  auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
  if (dialog == nullptr || event->spontaneous()) return false;
  std::vector<Place> countdowns;
  for (const DisplayWindow* display : displays_) {
    if (display->isVisible()) countdowns.push_back(PlaceOf(display->CountdownOnScreen()));
  }
  if (countdowns.empty()) return false;
  const QRect wanted = dialog->geometry().adjusted(0, -kTitleBar, 0, 0);
  const Place place =
      PlaceDialog(PlaceOf(dialog->screen()->availableGeometry()), PlaceOf(wanted), countdowns);
  dialog->move(Pixels(place).topLeft());
  return false;
}

}  // namespace corvanel
