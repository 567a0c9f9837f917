#pragma once

#include <vector>

#include "display/layout.h"

namespace corvanel {

/// Where the two displays go when both are used. Pixels of the desktop.
struct ScreenPlan {
  size_t roomScreen = 0;  // index of the screen that the room display takes
  size_t twinScreen = 0;
  bool sideBySide = false;  // one screen for both: each takes a half, and neither is full screen
  Place room;               // a normal window's place
  Place twin;
};

/// With a second screen the room display goes to the one that does not hold the control window,
/// and the twin stays with the director. With one screen they share it without covering each
/// other. `screens`: the usable area of each, at least one; `controlScreen`: index of the
/// director's.
ScreenPlan PlanScreens(const std::vector<Place>& screens, size_t controlScreen);

/// Where a dialog opens on a screen: where it is wanted when that hides no countdown, else beside
/// them; where no place is free, where it hides least. `screen`: the usable area; `wanted`: the
/// dialog with its frame. Never reaches beyond the screen's left and upper edges.
Place PlaceDialog(const Place& screen, const Place& wanted, const std::vector<Place>& countdowns);

}  // namespace corvanel
