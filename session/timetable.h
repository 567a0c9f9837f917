#pragma once

#include <optional>
#include <vector>

#include "basics/times.h"
#include "session/session.h"

namespace corvanel {

/// What the round clock is counting.
enum class Phase { Idle, Round, Move, Break, Ended };

/// Whether a session is under way: counting down, or paused in it.
constexpr bool Runs(Phase phase) {
  return phase == Phase::Round || phase == Phase::Move || phase == Phase::Break;
}

/// Where a session stands: the phase with its seconds left, and the round in play or just over.
/// While idle, the round with which it is going to start.
struct Standing {
  Phase phase = Phase::Idle;
  int round = 1;
  double secondsLeft = 0;
};

/// One stretch of the evening. `round` is the round played, or the round that a move or break
/// follows; `startsIn` counts from the start of the first line. Minutes.
struct TimetableLine {
  Phase phase = Phase::Round;
  int round = 0;
  double startsIn = 0;
  double minutes = 0;

  /// When it begins, to the nearest minute, when the first line begins at `start`.
  ClockTime Begins(ClockTime start) const { return ToNearestMinute(start.PlusMinutes(startsIn)); }
  ClockTime Ends(ClockTime start) const {
    return ToNearestMinute(start.PlusMinutes(startsIn + minutes));
  }
};

/// The rest of the evening as the clock will run it, beginning with what is left of the phase in
/// which it stands. The one arithmetic of an evening: whatever tells a time of it is read off here.
/// Empty when the session has ended.
std::vector<TimetableLine> Timetable(const SessionSettings& settings, const Standing& from);

/// When the session ends, when its break begins while it is ahead, and when that ends until it has.
/// Times that are
/// worked out are to the nearest minute.
struct Schedule {
  ClockTime finish;
  std::optional<ClockTime> breakAt;
  std::optional<ClockTime> breakEnd;

  bool operator==(const Schedule&) const = default;
};

/// The estimate for a session that is to start with `round` at `start`.
Schedule CalcFinishTime(const SessionSettings& settings, int round, ClockTime start);

/// The live estimate while the clock runs or is paused: the session goes on from `standing` at
/// `now`.
Schedule CalcFinish(const SessionSettings& settings, const Standing& standing, ClockTime now);

/// The minutes per round, to 2 decimals, with which the rounds from `round` on end at
/// settings.RequiredFinish when the first begins at `start`. 0 when the time is too short.
/// With times in 12-hour form a finish up to twelve hours before the start is taken as the same
/// time in the other half of the day.
float CalcRoundTime(const SessionSettings& settings, int round, ClockTime start, TimeForm form);

/// The same for a running session: the time from `now` to the required finish, less what is left
/// of the present phase, spread over the rounds really left. Nothing when no round is left or the
/// required finish cannot be met any more.
std::optional<float> CalcRoundTimeLive(const SessionSettings& settings, const Standing& standing,
                                       ClockTime now, TimeForm form);

/// The finish that is required where none was given: three hours after the start.
ClockTime DefaultRequiredFinish(ClockTime start);

}  // namespace corvanel
