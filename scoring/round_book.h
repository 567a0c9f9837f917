#pragma once

#include <map>
#include <optional>

#include "basics/date_time.h"
#include "clock/round_clock.h"
#include "session/session_listener.h"
#include "session/time_source.h"

namespace corvanel {

/// When the clock began a round, and the move to it; the same where there was no move.
struct RoundStart {
  DateTime moved;
  DateTime began;

  bool operator==(const RoundStart&) const = default;
};

/// By round.
using RoundStarts = std::map<int, RoundStart>;

/// Writes down when the clock began the rounds of the evening.
class RoundBook : public SessionListener {
 public:
  RoundBook(const RoundClock& clock, const TimeSource& time) : clock_(clock), time_(time) {}

  void Happened(EventKind kind, const std::string& text) override;
  void ShowFace(const ClockFace& face) override;
  const RoundStarts& Starts() const { return starts_; }
  /// Goes on with what an earlier run of the program wrote.
  void GoOn(const RoundStarts& starts) { starts_ = starts; }

 private:
  const RoundClock& clock_;
  const TimeSource& time_;
  RoundStarts starts_;
  std::optional<DateTime> moved_;  // while the move lasts
};

}  // namespace corvanel
