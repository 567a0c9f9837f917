#pragma once

#include <utility>
#include <vector>

#include "session/session_listener.h"
#include "session/time_source.h"
#include "session/timetable.h"

namespace corvanel {

/// An evening from its first line to its last, and where it stands.
struct Evening {
  std::vector<TimetableLine> lines;
  ClockTime start;       // of the first line
  double standsAt = -1;  // minutes after the start; negative before a session is under way
};

/// A round, break or move that has begun.
struct PhaseBegun {
  Phase phase = Phase::Idle;
  int round = 0;
  double at = 0;  // uptime, seconds

  bool operator==(const PhaseBegun&) const = default;
};

/// Notes when each round, break and move of a session under way really began, so that the evening
/// can be shown whole: what was played as it was, what is to come as the clock will run it.
class EveningSoFar : public SessionListener {
 public:
  explicit EveningSoFar(const TimeSource& time) : time_(time) {}

  /// What was taken back is forgotten.
  void ShowFace(const ClockFace& face) override;
  /// All that has begun, the last of it under way; empty where no session is.
  const std::vector<PhaseBegun>& Begun() const { return begun_; }
  /// Goes on with what an earlier run of the program noted, by this run's uptime.
  void GoOn(std::vector<PhaseBegun> begun) { begun_ = std::move(begun); }
  /// The whole evening at this moment, its rest being `ahead` (see `Timetable`).
  Evening Whole(const std::vector<TimetableLine>& ahead) const;

 private:
  const TimeSource& time_;
  std::vector<PhaseBegun> begun_;
};

}  // namespace corvanel
