#pragma once

#include <array>
#include <string>
#include <string_view>

#include "session/session.h"
#include "session/timetable.h"

namespace corvanel {

/// All that the displays show of the clock. Both display windows are painted from one such value;
/// only what differs from the last one needs painting.
struct ClockFace {
  Phase phase = Phase::Idle;
  bool paused = false;
  std::string countdown;  // "12:47"
  double secondsLeft = 0;
  Element countdownStyle = Element::TimeRemaining;  // entry of the element table for it
  std::string caption;                              // round or break caption; empty during a move
  std::string message;                              // the move message; empty outside a move
  std::string finish;                               // "Finish at 22:31"
  std::string breakLine;  // "Break:20:53 End:21:08", empty when no break is ahead
  std::string undo;       // "Undo next round, 12 s ago"; empty when nothing can be taken back
  double away = 0;        // seconds that the computer was away, while that is worth telling
  bool awayCanBeTakenOut = false;

  bool operator==(const ClockFace&) const = default;
};

/// Where the round clock shows itself.
class ClockView {
 public:
  virtual ~ClockView() = default;
  /// The face changed, or a second passed.
  virtual void ShowFace(const ClockFace& face) = 0;
  /// The time of day, written in the director's form.
  virtual void ShowTimeOfDay(const std::string& time) = 0;
};

/// The one timer that wakes the clock up. When it fires, RoundClock::Tick is to be called.
class TickTimer {
 public:
  virtual ~TickTimer() = default;
  /// Fires once, `seconds` from now (0 or more), in place of any wake-up still outstanding.
  virtual void Arm(double seconds) = 0;
  virtual void Disarm() = 0;
};

/// What happened in the session, for whoever keeps a record of it.
/// Undo and Continue put the session somewhere else than it was.
enum class EventKind { Round, Warning, Sound, Move, Break, Pause, Resume, End, Undo, Continue };

/// The events' names in logs and listings, indexed by EventKind.
inline constexpr std::array<std::string_view, 10> kEventNames = {
    "round", "warning", "sound", "move", "break", "pause", "resume", "end", "undo", "continue"};

class ClockEvents {
 public:
  virtual ~ClockEvents() = default;
  virtual void Happened(EventKind kind, const std::string& text) = 0;
};

}  // namespace corvanel
