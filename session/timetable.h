#pragma once

#include <optional>
#include <string>
#include <vector>

#include "basics/times.h"
#include "session/session.h"

namespace corvanel {

/// What the round clock is counting.
enum class Phase { Idle, Round, Move, Break, Ended };

/// How far the running session is: the phase, and the seconds left of it.
struct Progress {
  Phase phase = Phase::Idle;
  double secondsLeft = 0;
  bool inBreak = false;  // set from the start of the break until the next round starts

  bool Running() const {
    return phase == Phase::Round || phase == Phase::Move || phase == Phase::Break;
  }
};

/// When the session ends, and when its break begins and ends while one is ahead.
struct Schedule {
  ClockTime finish;
  std::optional<ClockTime> breakAt;
  std::optional<ClockTime> breakEnd;
};

/// The estimate from the settings: the rounds from `currentRound` on, the first of them beginning
/// at `start`. `inBreak`: the break is already being taken.
Schedule CalcFinishTime(const SessionSettings& settings, int currentRound, ClockTime start,
                        bool inBreak);

/// The live estimate while the clock runs or is paused: the moment at which the session ends if it
/// goes on at `now`. `currentRound` is the round being played or just finished.
Schedule CalcFinish(const SessionSettings& settings, int currentRound, const Progress& progress,
                    ClockTime now);

/// The minutes per round, to 2 decimals, with which the rounds from `currentRound` on end at
/// settings.RequiredFinish when the first begins at `start`. 0 when the time is too short.
/// With times in 12-hour form a finish up to twelve hours before the start is taken as the same
/// time in the other half of the day.
float CalcRoundTime(const SessionSettings& settings, int currentRound, ClockTime start,
                    TimeForm form);

/// The same for a running session: the time from `now` to the required finish, less what is left
/// of the present phase, spread over the rounds really left. Nothing when no round is left or the
/// required finish cannot be met any more.
std::optional<float> CalcRoundTimeLive(const Session& session, const Progress& progress,
                                       ClockTime now);

/// The required finish that an empty one stands for: three hours after the start, "hh:mm".
std::string DefaultRequiredFinish(ClockTime start);

/// One stretch of the evening. `round` is the round played, or the round that a move or break
/// follows; `startsIn` counts from the start of the first line. Minutes.
struct TimetableLine {
  Phase phase = Phase::Round;
  int round = 0;
  double startsIn = 0;
  double minutes = 0;
};

/// The evening from `currentRound` on as the clock will run it.
std::vector<TimetableLine> Timetable(const SessionSettings& settings, int currentRound);

}  // namespace corvanel
