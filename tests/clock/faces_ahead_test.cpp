#include "clock/faces_ahead.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/support/fakes.h"

namespace corvanel {
namespace {

std::string Described(const ClockFace& face) {
  return fmt::format("{} {} {} {} {} {} {} {} {}", static_cast<int>(face.phase), face.round,
                     face.paused, std::string(NameOf(face.countdownStyle)), face.caption,
                     face.message, face.finish, face.breakLine, face.can.minutes);
}

SessionSettings AnyShape(std::mt19937& random) {
  const auto upTo = [&](int most) {
    return static_cast<int>(random() % (static_cast<unsigned>(most) + 1));
  };
  SessionSettings s;
  s.nRounds = static_cast<int16_t>(1 + upTo(5));
  s.MinPerRound = static_cast<float>(5 + upTo(100)) / 10;
  s.MinBetweenRounds = static_cast<float>(1 + upTo(20)) / 10;
  s.MinWarning = static_cast<float>(upTo(50)) / 10;
  s.MinWarning1 = static_cast<float>(upTo(80)) / 10;
  s.optBreak = upTo(1) == 1;
  s.BreakAfterRound = static_cast<int16_t>(1 + upTo(4));
  s.TimeForBreak = static_cast<float>(upTo(80)) / 10;
  s.MoveAfterBreak = upTo(1) == 1;
  s.Header = "Friday pairs";
  for (size_t i = 0; i < s.sounds.files.size(); ++i) s.sounds.files[i] = fmt::format("{}.wav", i);
  return s;
}

// What was foretold at any moment is what then comes, at its moment and with its sounds.
TEST(FacesAheadTest, WhatWasForetoldComes) {
  std::mt19937 random(20261123);
  for (int evening = 0; evening < 100; ++evening) {
    SCOPED_TRACE(evening);
    ClockBench bench;
    bench.session.settings = AnyShape(random);
    bench.clock.Start(1);
    bench.Pass(static_cast<double>(random() % 300));
    if (random() % 3 == 0) bench.clock.Do(SessionCommand::AddMinute);
    if (random() % 3 == 0) bench.clock.OmitWarnings(true, false);
    bench.clock.Tick();
    const auto foretold = FacesAhead(bench.session, bench.clock.State(), bench.time, 1000);
    ASSERT_FALSE(foretold.empty());
    EXPECT_EQ(Described(foretold[0].face), Described(bench.face));
    for (size_t i = 1; i < foretold.size(); ++i) {
      bench.played.clear();
      bench.Pass(foretold[i].from + 0.01 - bench.time.Elapsed());
      EXPECT_EQ(Described(foretold[i].face), Described(bench.face)) << i;
      EXPECT_EQ(foretold[i].sounds, bench.played) << i;
      EXPECT_EQ(foretold[i].ends, bench.clock.UnderWay() ? bench.clock.State().EndMark() : 0);
    }
    EXPECT_EQ(bench.clock.State().phase, Phase::Ended);
    if (HasFailure()) break;
  }
}

TEST(FacesAheadTest, AClockThatStandsHasOneFace) {
  ClockBench bench;
  EXPECT_EQ(FacesAhead(bench.session, bench.clock.State(), bench.time, 9).size(), 1U);
  bench.clock.Start(2);
  bench.Pass(90);
  EXPECT_EQ(FacesAhead(bench.session, bench.clock.State(), bench.time, 9).size(), 9U);
  bench.clock.Do(SessionCommand::Pause);
  bench.Pass(30);
  const auto faces = FacesAhead(bench.session, bench.clock.State(), bench.time, 9);
  ASSERT_EQ(faces.size(), 1U);
  EXPECT_EQ(Described(faces[0].face), Described(bench.face));
  EXPECT_EQ(faces[0].ends, 0);
}

}  // namespace
}  // namespace corvanel
