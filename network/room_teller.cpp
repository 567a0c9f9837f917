#include "network/room_teller.h"

#include <algorithm>
#include <utility>

#include "basics/numbers.h"

namespace corvanel {
namespace {

/// So many stretches ahead a page without contact can go on by itself.
constexpr size_t kFaces = 40;
constexpr double kSameMoment = 0.25;  // seconds; no two stretches lie so close

/// Whether two faces are of the same stretch of the evening.
bool Alike(const ClockFace& one, const ClockFace& other) {
  return one.phase == other.phase && one.round == other.round && one.paused == other.paused &&
         one.countdownStyle == other.countdownStyle;
}

}  // namespace

void RoomTeller::TellTo(Hearer hearer) {
  hearer_ = std::move(hearer);
  told_ = {};
  heard_.clear();
  Tell();
}

void RoomTeller::ShowFace(const ClockFace& face) {
  if (!hearer_) return;
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

void RoomTeller::Happened(EventKind kind, const std::string& text) {
  if (kind == EventKind::Sound && hearer_) heard_.push_back(text);
}

/// A face that was told before began when it was told to begin, with the sounds that it had: a page
/// that has gone on to it by itself plays them once. Any other begins now.
void RoomTeller::SayWhenItBegan(FaceAhead& present, double now) {
  const FaceAhead* told = told_.FaceAt(now + kSameMoment);
  if (told != nullptr && Alike(told->face, present.face)) {
    present.from = told->from;
    present.sounds = told->sounds;
  } else {
    present.sounds.clear();
    const auto& files = parts_.session.settings.sounds.files;
    for (const std::string& name : heard_) {
      const auto* const file = std::find_if(
          files.begin(), files.end(), [&](const std::string& f) { return FileName(f) == name; });
      if (file != files.end()) present.sounds.push_back(*file);
    }
  }
  heard_.clear();
}

void RoomTeller::Tell() {
  if (!hearer_) return;
  auto faces = FacesAhead(parts_.session, parts_.clock.State(), parts_.time, kFaces);
  SayWhenItBegan(faces.front(), parts_.time.Uptime());
  RoomState state(parts_.session, std::move(faces), tables_, parts_.time.ThisMoment(),
                  parts_.time.TimeOfDay());
  if (!state.Tells(told_)) return;
  told_ = state;
  hearer_(state);
}

}  // namespace corvanel
