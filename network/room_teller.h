#pragma once

#include <functional>

#include "clock/round_clock.h"
#include "network/room_state.h"

namespace corvanel {

/// Tells displays elsewhere, if there are any, how the session stands and goes on, whenever that
/// has changed. The seconds pass without a word.
class RoomTeller : public SessionListener {
 public:
  struct Parts {
    const Session& session;
    const RoundClock& clock;
    const TimeSource& time;
  };
  using Hearer = std::function<void(const RoomState& state)>;
  explicit RoomTeller(const Parts& parts) : parts_(parts) {}

  /// Tells this one from now on, and how things stand at once; none: nobody.
  void TellTo(Hearer hearer);

  void ShowFace(const ClockFace& face) override;
  void ShowTables(const ProgressFace& tables) override;
  void Happened(EventKind kind, const std::string& text) override;
  /// The computer's clock may have been set.
  void ShowTimeOfDay(const std::string& time) override;

 private:
  /// All that the faces to come follow from.
  struct Grounds {
    Session session;
    ClockState clock;
    std::string finish;

    bool operator==(const Grounds&) const = default;
  };
  void Tell();
  void SayWhenItBegan(FaceAhead& present, double now);

  Parts parts_;
  Hearer hearer_;
  Grounds grounds_;
  std::string timeOfDay_;
  ProgressFace tables_;
  RoomState told_;
  std::vector<std::string> heard_;  // names of sounds that were played since
};

}  // namespace corvanel
