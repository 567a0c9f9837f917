#include "display/element_places.h"

#include <algorithm>

namespace corvanel {

std::vector<Place> PlacesOf(const Layout& layout, Element element) {
  std::vector<Place> places;
  switch (element) {
    case Element::CurrentTime:
      places = {layout.now.place};
      break;
    case Element::FinishTime:
      places = {layout.finish.place};
      break;
    case Element::RoundInformation:
      places = {layout.large.place, layout.caption.place};
      break;
    case Element::TimeRemaining:
    case Element::LastWarning:
    case Element::TimeUp:
    case Element::EarlyWarning:
      places = {layout.panel};
      break;
    case Element::Title:
      places = {layout.header.place};
      break;
    case Element::UnitInfo:
      places = {layout.unit.place, layout.tables};
      break;
    case Element::ScreenBackground:
      break;
  }
  std::erase_if(places, [](const Place& place) { return place.width <= 0 || place.height <= 0; });
  return places;
}

Element ElementAt(const Layout& layout, Element countdown, double x, double y) {
  for (const Element element :
       {Element::CurrentTime, Element::FinishTime, Element::RoundInformation, countdown,
        Element::Title, Element::UnitInfo}) {
    const std::vector<Place> places = PlacesOf(layout, element);
    const auto holds = [x, y](const Place& place) {
      return x >= place.x && x < place.Right() && y >= place.y && y < place.Bottom();
    };
    if (std::any_of(places.begin(), places.end(), holds)) return element;
  }
  return Element::ScreenBackground;
}

}  // namespace corvanel
