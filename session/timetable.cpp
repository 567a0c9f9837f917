#include "session/timetable.h"

#include <algorithm>
#include <cmath>

#include "basics/numbers.h"

namespace corvanel {
namespace {

/// What the break adds to the evening: its length, less the move that it replaces.
double BreakExtra(const SessionSettings& s) {
  return s.TimeForBreak - (s.MoveAfterBreak ? 0 : s.MinBetweenRounds);
}

/// What a session that is under way still has before it, after the phase in progress.
struct Ahead {
  int rounds = 0;    // that have not begun
  int moves = 0;     // one after each round but the last, the break's included
  double extra = 0;  // minutes: the break ahead, or the move after the break in progress
  bool breakAhead = false;

  double Minutes(const SessionSettings& s) const {
    return rounds * double{s.MinPerRound} + moves * double{s.MinBetweenRounds} + extra;
  }
};

Ahead WhatIsAhead(const SessionSettings& s, int currentRound, const Progress& progress) {
  const bool playing = progress.phase == Phase::Round;
  Ahead ahead;
  ahead.rounds = std::max(s.nRounds - currentRound, 0);
  ahead.moves = std::max(ahead.rounds - (playing ? 0 : 1), 0);
  const int firstBreak = playing ? currentRound : currentRound + 1;
  ahead.breakAhead = s.optBreak && s.BreakAfterRound >= firstBreak && s.BreakAfterRound < s.nRounds;
  if (ahead.breakAhead) ahead.extra = BreakExtra(s);
  if (progress.phase == Phase::Break && s.MoveAfterBreak) ahead.extra += s.MinBetweenRounds;
  return ahead;
}

/// Minutes from start to required finish, as the director means them.
double MinutesAvailable(const SessionSettings& s, ClockTime start, TimeForm form) {
  const ClockTime finish = ParseTime(s.RequiredFinish).value_or(start.PlusMinutes(180));
  double available = std::trunc(finish.Seconds() - start.Seconds()) / 60;
  const bool halfDayMeant = form == TimeForm::Hours12 && available < 0 && available > -720;
  if (halfDayMeant) available += 720;
  if (available < 0) available += kMinutesPerDay;
  return available;
}

}  // namespace

Schedule CalcFinishTime(const SessionSettings& s, int currentRound, ClockTime start, bool inBreak) {
  const double perRound = s.MinPerRound;
  const double between = s.MinBetweenRounds;
  const int n = s.nRounds - currentRound + 1;
  double total = n * perRound + (n - 1) * between;
  Schedule schedule;
  if (s.optBreak && currentRound <= s.BreakAfterRound && !inBreak) {
    total += s.TimeForBreak;
    if (s.MoveAfterBreak) total += between;
    // Meant so: when the break round itself is the current one, the move that the break replaces
    // is not taken off.
    if (currentRound < s.BreakAfterRound) total -= between;
    // The sum counts it all the same, but a break after the last round never comes.
    if (s.BreakAfterRound < s.nRounds) {
      const int k = s.BreakAfterRound - currentRound + 1;
      const double untilBreak = std::max(k * perRound + (k - 1) * between, 0.0);
      schedule.breakAt = start.PlusMinutes(untilBreak);
      schedule.breakEnd = schedule.breakAt->PlusMinutes(s.TimeForBreak);
    }
  }
  schedule.finish = start.PlusMinutes(total);
  return schedule;
}

Schedule CalcFinish(const SessionSettings& s, int currentRound, const Progress& progress,
                    ClockTime now) {
  Schedule schedule;
  schedule.finish = now.PlusSeconds(progress.secondsLeft);
  if (!progress.Running()) return schedule;
  const Ahead ahead = WhatIsAhead(s, currentRound, progress);
  if (ahead.breakAhead) {
    const int moves = s.BreakAfterRound - currentRound - (progress.phase == Phase::Round ? 0 : 1);
    double minutes = (s.BreakAfterRound - currentRound) * double{s.MinPerRound} +
                     moves * double{s.MinBetweenRounds};
    if (progress.phase == Phase::Break && s.MoveAfterBreak) minutes += s.MinBetweenRounds;
    schedule.breakAt = schedule.finish.PlusMinutes(minutes);
    schedule.breakEnd = schedule.breakAt->PlusMinutes(s.TimeForBreak);
  }
  schedule.finish = schedule.finish.PlusMinutes(ahead.Minutes(s));
  return schedule;
}

float CalcRoundTime(const SessionSettings& s, int currentRound, ClockTime start, TimeForm form) {
  const int n = std::max(s.nRounds - currentRound + 1, 1);
  double available = MinutesAvailable(s, start, form);
  available -= (n - 1) * double{s.MinBetweenRounds};
  if (s.optBreak && currentRound <= s.BreakAfterRound) available -= BreakExtra(s);
  return static_cast<float>(RoundTo2Decimals(std::max(available, 0.0) / n));
}

std::optional<float> CalcRoundTimeLive(const Session& session, const Progress& progress,
                                       ClockTime now) {
  SessionSettings fixed = session.settings;
  fixed.MinPerRound = 0;
  const Ahead ahead = WhatIsAhead(fixed, session.currentRound, progress);
  const double toFinish = MinutesAvailable(fixed, now, session.options.Form());
  // More than half a day ahead is the finish that has just been missed.
  if (ahead.rounds == 0 || toFinish > kMinutesPerDay / 2) return std::nullopt;
  const double available = toFinish - progress.secondsLeft / 60 - ahead.Minutes(fixed);
  const auto perRound = static_cast<float>(RoundTo2Decimals(available / ahead.rounds));
  if (perRound <= 0 || perRound > kLongestPhase) return std::nullopt;
  return perRound;
}

std::string DefaultRequiredFinish(ClockTime start) {
  return TimeText(start.PlusMinutes(180));
}

std::vector<TimetableLine> Timetable(const SessionSettings& s, int currentRound) {
  std::vector<TimetableLine> lines;
  double at = 0;
  const auto add = [&](Phase phase, int round, double minutes) {
    lines.push_back({phase, round, at, minutes});
    at += minutes;
  };
  for (int round = currentRound; round <= s.nRounds; ++round) {
    add(Phase::Round, round, s.MinPerRound);
    if (round == s.nRounds) break;
    const bool breakHere = s.optBreak && round == s.BreakAfterRound;
    if (breakHere) add(Phase::Break, round, s.TimeForBreak);
    if (!breakHere || s.MoveAfterBreak) add(Phase::Move, round, s.MinBetweenRounds);
  }
  return lines;
}

}  // namespace corvanel
