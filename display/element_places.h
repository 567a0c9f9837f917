#pragma once

#include <vector>

#include "display/layout.h"

namespace corvanel {

/// Where an entry of the element table stands; none for one that is not shown, and for the screen's
/// background. All four entries of the countdown stand in its panel.
std::vector<Place> PlacesOf(const Layout& layout, Element element);

/// The entry whose element stands at a point: the background where there is none. `countdown`: the
/// entry that the countdown is shown with.
Element ElementAt(const Layout& layout, Element countdown, double x, double y);

}  // namespace corvanel
