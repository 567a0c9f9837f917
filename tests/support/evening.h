#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/fakes.h"

namespace corvanel {

inline ClockBench& SetShape(ClockBench& bench, int rounds, float perRound, float between) {
  bench.session.settings.nRounds = static_cast<int16_t>(rounds);
  bench.session.settings.MinPerRound = perRound;
  bench.session.settings.MinBetweenRounds = between;
  return bench;
}

/// Three rounds of ten minutes, a minute's move, a break of five minutes after round 2.
inline void BeginEvening(ClockBench& bench) {
  SessionSettings& s = bench.session.settings;
  s.nRounds = 3;
  s.MinPerRound = 10;
  s.MinBetweenRounds = 1;
  s.MinWarning = 2;
  s.MinWarning1 = 5;
  s.optBreak = true;
  s.BreakAfterRound = 2;
  s.TimeForBreak = 5;
  bench.clock.Start(1);
}

/// Both sessions stand at the same place and look the same in the room.
inline void ExpectSame(const ClockBench& one, const ClockBench& other, const std::string& where) {
  const ClockState& a = one.clock.State();
  const ClockState& b = other.clock.State();
  EXPECT_EQ(a.phase, b.phase) << where;
  EXPECT_EQ(a.paused, b.paused) << where;
  EXPECT_EQ(a.warningPending, b.warningPending) << where;
  EXPECT_EQ(a.round, b.round) << where;
  EXPECT_NEAR(a.countsFrom, b.countsFrom, 1e-6) << where;
  EXPECT_EQ(one.face.countdown, other.face.countdown) << where;
  EXPECT_EQ(one.face.countdownStyle, other.face.countdownStyle) << where;
  EXPECT_EQ(one.face.caption, other.face.caption) << where;
  EXPECT_EQ(one.face.message, other.face.message) << where;
  EXPECT_EQ(one.face.finish, other.face.finish) << where;
  EXPECT_EQ(one.face.breakLine, other.face.breakLine) << where;
  EXPECT_NEAR(one.clock.Now().secondsLeft, other.clock.Now().secondsLeft, 1e-6) << where;
}

inline constexpr double kEvening = 37 * 60;
inline constexpr double kMoments[] = {10.25, 299.5, 301,  479,  595,  603,
                                      655,   1200,  1255, 1555, 1602, 2150};

}  // namespace corvanel
