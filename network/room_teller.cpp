#include "network/room_teller.h"

#include <utility>

namespace corvanel {
namespace {

/// So many stretches ahead a page without contact can go on by itself.
constexpr size_t kFaces = 40;

}  // namespace

void RoomTeller::ShowFace(const ClockFace& face) {
  Grounds grounds{parts_.session, parts_.clock.State(), face.finish + face.breakLine};
  if (grounds == grounds_) return;
  grounds_ = std::move(grounds);
  Tell();
}

void RoomTeller::ShowTimeOfDay(const std::string& time) {
  if (std::exchange(timeOfDay_, time) != time) Tell();
}

void RoomTeller::ShowTables(const ProgressFace& tables) {
  tables_ = tables;
  Tell();
}

void RoomTeller::Tell() {
  RoomState state(parts_.session,
                  FacesAhead(parts_.session, parts_.clock.State(), parts_.time, kFaces), tables_,
                  parts_.time.ThisMoment(), parts_.time.TimeOfDay());
  if (!state.Tells(told_)) return;
  told_ = state;
  parts_.tell(state);
}

}  // namespace corvanel
