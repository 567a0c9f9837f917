#include "display/screen_plan.h"

namespace corvanel {
namespace {

Place Inset(const Place& area, double share) {
  return {area.x + area.width * share, area.y + area.height * share, area.width * (1 - 2 * share),
          area.height * (1 - 2 * share)};
}

}  // namespace

ScreenPlan PlanScreens(const std::vector<Place>& screens, size_t controlScreen) {
  ScreenPlan plan;
  plan.twinScreen = controlScreen;
  if (screens.size() > 1) {
    plan.roomScreen = controlScreen == 0 ? 1 : 0;
    plan.room = Inset(screens[plan.roomScreen], 0.05);
    plan.twin = Inset(screens[plan.twinScreen], 0.05);
    return plan;
  }
  plan.roomScreen = controlScreen;
  plan.sideBySide = true;
  const Place& area = screens[controlScreen];
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

}  // namespace corvanel
