#pragma once

#include <vector>

#include "session/clock_face.h"
#include "session/timetable.h"

namespace corvanel {

/// An evening from its first line to its last, and where it stands.
struct Evening {
  std::vector<TimetableLine> lines;
  ClockTime start;       // of the first line
  double standsAt = -1;  // minutes after the start; negative before a session is under way
};

/// Notes when each round, break and move of a session under way really began, so that the evening
/// can be shown whole: what was played as it was, what is to come as the clock will run it.
class EveningSoFar {
 public:
  /// The clock's face came, at this uptime in seconds. What was taken back is forgotten.
  void Follow(const ClockFace& face, double uptime);
  /// Whether a session was under way when the last face came.
  bool UnderWay() const { return !begun_.empty(); }
  /// The whole evening at this moment, its rest being `ahead` (see `Timetable`).
  Evening Whole(const std::vector<TimetableLine>& ahead, double uptime, ClockTime timeOfDay) const;

 private:
  struct Begun {
    Phase phase;
    int round;
    double at;  // uptime, seconds
  };
  std::vector<Begun> begun_;  // the last one is under way
};

}  // namespace corvanel
