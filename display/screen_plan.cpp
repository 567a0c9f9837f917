#include "display/screen_plan.h"

#include <algorithm>

namespace corvanel {
namespace {

// Pixels; a window's frame is not known before it is shown.
constexpr double kTitleBar = 36;
constexpr double kFrame = 4;

Place Inset(const Place& area, double share) {
  return {area.x + area.width * share, area.y + area.height * share, area.width * (1 - 2 * share),
          area.height * (1 - 2 * share)};
}

/// Moved, never resized, until it stands on the screen; a larger one shows its upper left corner.
Place OnScreen(Place place, const Place& screen) {
  place.x = std::max(screen.x, std::min(place.x, screen.Right() - place.width));
  place.y = std::max(screen.y, std::min(place.y, screen.Bottom() - place.height));
  return place;
}

/// All of a screen that a framed window can have.
Place BelowTitle(Place screen) {
  screen.y += kTitleBar;
  screen.height -= kTitleBar + kFrame;
  return screen;
}

double Overlap(const Place& a, const Place& b) {
  const double width = std::min(a.Right(), b.Right()) - std::max(a.x, b.x);
  const double height = std::min(a.Bottom(), b.Bottom()) - std::max(a.y, b.y);
  return std::max(0.0, width) * std::max(0.0, height);
}

}  // namespace

ScreenPlan PlanScreens(const std::vector<Place>& screens, size_t controlScreen) {
  ScreenPlan plan;
  plan.twinScreen = controlScreen;
  if (screens.size() > 1) {
    plan.roomScreen = controlScreen == 0 ? 1 : 0;
    plan.room = Inset(screens[plan.roomScreen], 0.05);
    plan.twin = BelowTitle(screens[plan.twinScreen]);
    return plan;
  }
  plan.roomScreen = controlScreen;
  plan.sideBySide = true;
  const Place area = BelowTitle(screens[controlScreen]);
  plan.room = plan.twin = area;
  if (area.width >= area.height) {
    plan.room.width = plan.twin.width = area.width / 2;
    plan.twin.x = plan.room.Right();
  } else {
    plan.room.height = plan.twin.height = area.height / 2;
    plan.twin.y = plan.room.Bottom();
  }
  return plan;
}

Place PlaceDialog(const Place& screen, const Place& wanted, const std::vector<Place>& countdowns) {
  std::vector<Place> candidates = {wanted};
  const auto add = [&](double x, double y) {
    candidates.push_back({x, y, wanted.width, wanted.height});
  };
  for (const Place& countdown : countdowns) {
    add(countdown.Right(), wanted.y);
    add(countdown.x - wanted.width, wanted.y);
    add(wanted.x, countdown.Bottom());
    add(wanted.x, countdown.y - wanted.height);
  }
  for (const double x : {screen.Right(), screen.x}) {
    for (const double y : {screen.Bottom(), screen.y}) add(x, y);
  }
  const auto hidden = [&](const Place& place) {
    double area = 0;
    for (const Place& countdown : countdowns) area += Overlap(place, countdown);
    return area;
  };
  for (Place& candidate : candidates) candidate = OnScreen(candidate, screen);
  return *std::min_element(candidates.begin(), candidates.end(),
                           [&](const Place& a, const Place& b) { return hidden(a) < hidden(b); });
}

}  // namespace corvanel
