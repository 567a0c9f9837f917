#pragma once

#include <array>
#include <string>
#include <vector>

#include "clock/faces_ahead.h"
#include "display/units_shown.h"
#include "session/session.h"

namespace corvanel {

constexpr int kRoomStateVersion = 1;  // of the forms of its messages

/// The phase as other programs are told it: "move".
const char* NameOf(Phase phase);

/// All that a display elsewhere needs to show the session by itself: what it shows from which
/// moment on. A value; docs/network.md describes the two forms in which it goes out.
class RoomState {
 public:
  RoomState() = default;
  /// `progress`: of the tables. `clock` names the run of the computer that the uptimes belong to.
  RoomState(const Session& session, std::vector<FaceAhead> faces, const ProgressFace& progress,
            const Moment& now, ClockTime timeOfDay);

  /// The message for a page that gets it at the uptime `now`.
  std::string Message(double now) const;
  /// The shorter message for whoever shows many rooms, by a broker, at the uptime `now`.
  std::string Brief(double now) const;
  /// What was told to show at the uptime `now`; null when nothing was told.
  const FaceAhead* FaceAt(double now) const;
  /// How things stand at the uptime `now`, for other programs: one JSON object.
  std::string Now(double now) const;
  /// Whether a page that has `other` must be told anything.
  bool Tells(const RoomState& other) const;
  /// The file of a sound by its number in the message, as the settings have it; empty for others.
  std::string Sound(size_t number) const;
  bool HasSoundsOf(const RoomState& other) const { return sounds_ == other.sounds_; }

 private:
  std::string Headed(const std::string& body, double now) const;

  std::string clock_;         // the run of the computer
  double midnight_ = 0;       // uptime at the last midnight by the computer's clock
  std::string body_ = "{}";   // the message but for its head
  std::string brief_ = "{}";  // the same of the shorter one
  std::string tables_ = "[]";
  int rounds_ = 0;
  std::array<std::string, kCues> sounds_;
  std::vector<FaceAhead> faces_;
};

}  // namespace corvanel
