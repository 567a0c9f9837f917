#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/evening.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(GapTest, AfterAGapTheSessionStandsWhereItWouldStand) {
  for (const double moment : kMoments) {
    for (const double gap : {0.3, 7.0, 29.0, 45.0, 400.0, 1000.0, 5000.0, 39000.0, 100000.0}) {
      const std::string where = std::to_string(gap) + " s from " + std::to_string(moment);
      ClockBench awake(ClockTime::At(23, 40));
      ClockBench away(ClockTime::At(23, 40));
      for (ClockBench* bench : {&awake, &away}) {
        BeginEvening(*bench);
        bench->Pass(moment);
      }
      awake.Pass(gap);
      const double due = *away.time.Due();
      away.time.PassTo(moment + gap);
      away.clock.Tick();
      awake.clock.Tick();
      const double late = moment + gap - due;
      ExpectSame(away, awake, where);
      EXPECT_EQ(away.clock.State().phase == Phase::Ended, moment + gap >= kEvening) << where;
      EXPECT_NEAR(away.face.away, late > 30 ? late : 0, 1e-6) << where;
      // What is less than half a minute late still rings.
      if (late <= 30) {
        EXPECT_EQ(away.played, awake.played) << where;
      }
    }
  }
}

TEST(GapTest, CuesOfLongAgoAreNotPlayed) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(100);
  bench.time.PassTo(665);  // both warnings and the end of the round lie in the gap
  bench.clock.Tick();
  EXPECT_EQ(bench.clock.State().round, 2);
  EXPECT_THAT(bench.played, IsEmpty());
  bench.time.PassTo(1275);  // the end of round 2 was fifteen seconds ago
  bench.clock.Tick();
  EXPECT_THAT(bench.played, ElementsAre("break"));
}

TEST(GapTest, IsTakenOutAsIfItHadNotBeen) {
  for (const double moment : kMoments) {
    for (const double thinks : {0.0, 20.0, 90.0}) {
      ClockBench awake;
      ClockBench away;
      for (ClockBench* bench : {&awake, &away}) {
        BeginEvening(*bench);
        bench->Pass(moment);
      }
      away.time.PassTo(*away.time.Due() + 800);
      away.clock.Tick();
      awake.Pass(*awake.time.Due() - awake.time.Elapsed());
      if (away.clock.State().phase != Phase::Ended) {
        EXPECT_EQ(away.face.away, 800);
      }
      away.Pass(thinks);
      awake.Pass(thinks);
      away.clock.Do(SessionCommand::TakeOutGap);
      awake.clock.Tick();
      EXPECT_EQ(away.clock.State().phase, awake.clock.State().phase) << moment;
      EXPECT_EQ(away.face.countdown, awake.face.countdown) << moment;
      EXPECT_EQ(away.clock.State().round, awake.clock.State().round) << moment;
      EXPECT_EQ(away.face.away, 0) << moment;
      EXPECT_NEAR(away.RunToEnd() - 800, awake.RunToEnd(), 1e-6) << moment;
    }
  }
}

TEST(GapTest, IsNoLongerOfferedAfterTheNextCommand) {
  ClockBench bench;
  BeginEvening(bench);
  bench.time.PassTo(100);
  bench.clock.Tick();
  EXPECT_EQ(bench.face.away, 99);
  bench.Pass(1);
  EXPECT_TRUE(bench.face.awayCanBeTakenOut);
  bench.clock.Do(SessionCommand::AddMinute);
  EXPECT_FALSE(bench.face.awayCanBeTakenOut);
  EXPECT_EQ(bench.face.away, 99);
  bench.Pass(300);
  EXPECT_EQ(bench.face.away, 0);
  const std::string countdown = bench.face.countdown;
  bench.clock.Do(SessionCommand::TakeOutGap);
  EXPECT_EQ(bench.face.countdown, countdown);
  // The key was pressed before the tick: told, but the minute is not thrown away with the gap.
  bench.time.PassTo(500);
  bench.clock.Do(SessionCommand::AddMinute);
  EXPECT_GT(bench.face.away, 90);
  EXPECT_FALSE(bench.face.awayCanBeTakenOut);
  const std::string minuteMore = bench.face.countdown;
  bench.clock.Do(SessionCommand::TakeOutGap);
  EXPECT_EQ(bench.face.countdown, minuteMore);
  bench.clock.Do(SessionCommand::LeaveGapIn);
  EXPECT_EQ(bench.face.away, 0);
  bench.clock.Do(SessionCommand::Pause);
  bench.time.PassTo(900);  // asleep in a pause: nothing was missed
  bench.clock.Tick();
  EXPECT_EQ(bench.face.away, 0);
}

TEST(GapTest, TwoGapsAreTakenOutTogether) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(10);
  for (const double gap : {100.0, 40.0}) {
    bench.time.PassTo(*bench.time.Due() + gap);
    bench.clock.Tick();
    bench.Pass(5);
  }
  EXPECT_NEAR(bench.face.away, 140, 1e-6);
  bench.clock.Do(SessionCommand::TakeOutGap);
  EXPECT_NEAR(bench.RunToEnd(), kEvening + 140, 1e-6);
}

TEST(GapTest, TimeThatTheProgramHeldIsNoGap) {
  ClockBench bench;
  BeginEvening(bench);
  bench.time.PassTo(100);
  bench.clock.WasHeld();
  bench.clock.Tick();
  EXPECT_EQ(bench.face.away, 0);
  EXPECT_EQ(bench.face.countdown, "8:20");
}

TEST(GapTest, AWarningThatIsRaisedMeanwhileRings) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(400.5);  // 3:20 left
  bench.played.clear();
  bench.session.settings.MinWarning = 4;
  bench.Pass(1);
  EXPECT_THAT(bench.played, ElementsAre("warning0"));
}

TEST(GapTest, SettingTheComputersClockChangesOnlyTheTimesOfDay) {
  for (const double set : {-7200.0, -3600.0, -0.7, 0.7, 3600.0, 20000.0}) {
    ClockBench bench(ClockTime::At(21, 0));
    BeginEvening(bench);
    bench.Pass(100);
    const double left = bench.clock.Now().secondsLeft;
    bench.time.SetClock(set);
    bench.Pass(1);
    EXPECT_NEAR(bench.clock.Now().secondsLeft, left - 1, 1e-6);
    bench.clock.TimerCurrentTime_Timer();
    EXPECT_EQ(bench.timeOfDay, TimeText(ClockTime::At(21, 1, 41 + set)));
    EXPECT_EQ(bench.face.finish,
              "Finish at " + TimeText(ToNearestMinute(ClockTime::At(21, 37, set))));
    EXPECT_EQ(bench.face.away, 0);
    EXPECT_NEAR(bench.RunToEnd(), kEvening, 1e-6);
  }
}

TEST(GapTest, IsNotOfferedOnceSomethingWasUndone) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(10);
  bench.clock.Do(SessionCommand::NextRound);
  bench.time.PassTo(100);
  bench.clock.Tick();
  ASSERT_TRUE(bench.face.awayCanBeTakenOut);
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_FALSE(bench.face.awayCanBeTakenOut);
  const std::string countdown = bench.face.countdown;
  bench.clock.Do(SessionCommand::TakeOutGap);
  EXPECT_EQ(bench.face.countdown, countdown);
}

// A gap stays on offer as long as nothing was done since, however long the director thinks.
TEST(GapTest, IsOfferedUntilSomethingIsDone) {
  ClockBench bench;
  BeginEvening(bench);
  bench.time.PassTo(100);
  bench.clock.Tick();
  bench.Pass(400);
  EXPECT_EQ(bench.face.away, 99);
  EXPECT_TRUE(bench.face.awayCanBeTakenOut);
}

TEST(GapTest, OfTheSessionBeforeIsForgottenAtTheNextStart) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(10);
  bench.time.PassTo(10000);  // asleep until long after the end
  bench.clock.Tick();
  ASSERT_EQ(bench.clock.State().phase, Phase::Ended);
  ASSERT_TRUE(bench.face.awayCanBeTakenOut);
  bench.clock.Start(1);
  EXPECT_EQ(bench.face.away, 0);
  bench.clock.Do(SessionCommand::TakeOutGap);
  EXPECT_EQ(bench.face.countdown, "10:00");
}

// The first of two gaps ran over the end of a round: taken out, the session is back in that round.
TEST(GapTest, TwoGapsOverTheEndOfARoundLeadBackBeforeTheFirst) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(500);
  for (const double gap : {300.0, 40.0}) {
    bench.time.PassTo(*bench.time.Due() + gap);
    bench.clock.Tick();
  }
  ASSERT_EQ(bench.clock.State().round, 2);
  bench.clock.Do(SessionCommand::TakeOutGap);
  EXPECT_EQ(bench.clock.State().round, 1);
  EXPECT_EQ(bench.face.countdown, "1:38");
}

TEST(GapTest, WhatRangSinceDoesNotRingAgainWhenItIsTakenOut) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(290);                             // 5:10 left of round 1
  bench.time.PassTo(*bench.time.Due() + 660);  // 5:09 left of round 2
  bench.clock.Tick();
  ASSERT_EQ(bench.face.countdown, "5:09");
  ASSERT_EQ(bench.clock.State().round, 2);
  bench.Pass(20);
  EXPECT_THAT(bench.played, ElementsAre("warning1"));
  bench.clock.Do(SessionCommand::TakeOutGap);
  ASSERT_EQ(bench.clock.State().round, 1);
  EXPECT_EQ(bench.face.countdownStyle, Element::EarlyWarning);
  EXPECT_THAT(bench.played, ElementsAre("warning1"));
}

}  // namespace
}  // namespace corvanel
