#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "clock/undo_list.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Three rounds of ten minutes, a minute's move, a break of five minutes after round 2.
void BeginEvening(ClockBench& bench) {
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
void ExpectSame(const ClockBench& one, const ClockBench& other, const std::string& where) {
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

constexpr double kEvening = 37 * 60;
constexpr double kMoments[] = {10.25, 299.5, 301, 479, 595, 603, 655, 1200, 1255, 1555, 1602, 2150};

TEST(UndoTest, TimeGoesOnAsIfTheWrongPressHadNeverBeen) {
  using Command = void (*)(RoundClock&);
  const std::pair<const char*, Command> commands[] = {
      {"Undo pause", [](RoundClock& c) { c.Do(SessionCommand::Pause); }},
      {"Undo next round", [](RoundClock& c) { c.Do(SessionCommand::NextRound); }},
      {"Undo restart", [](RoundClock& c) { c.Do(SessionCommand::Restart); }},
      {"Undo +1 minute", [](RoundClock& c) { c.Do(SessionCommand::AddMinute); }},
      {"Undo -1 minute", [](RoundClock& c) { c.Do(SessionCommand::SubtractMinute); }},
      {"Undo automatic move", [](RoundClock& c) { c.Do(SessionCommand::AutoEnd); }},
      {"Undo automatic pause", [](RoundClock& c) { c.Do(SessionCommand::AutoPause); }},
      {"Undo start", [](RoundClock& c) { c.Start(1); }},
  };
  for (const auto& [label, command] : commands) {
    for (const double moment : kMoments) {
      for (const double later : {0.0, 12.0, 130.0, 700.0}) {
        ClockBench right(ClockTime::At(23, 40));
        ClockBench wrong(ClockTime::At(23, 40));
        for (ClockBench* bench : {&right, &wrong}) {
          BeginEvening(*bench);
          bench->Pass(moment);
        }
        command(wrong.clock);
        const std::string where = std::string(label) + " at " + std::to_string(moment) + " after " +
                                  std::to_string(later);
        if (wrong.face.undo.empty()) continue;  // nothing was done there
        EXPECT_TRUE(wrong.face.undo.starts_with(label)) << wrong.face.undo;
        right.Pass(later);
        wrong.Pass(later);
        wrong.clock.Do(SessionCommand::Undo);
        right.clock.Tick();
        ExpectSame(wrong, right, where);
        EXPECT_EQ(wrong.face.undo, "") << where;
        EXPECT_NEAR(wrong.RunToEnd(), right.RunToEnd(), 1e-6) << where;
      }
    }
  }
}

TEST(UndoTest, SeveralCommandsAreTakenBackOneByOne) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(60);
  bench.clock.Do(SessionCommand::AddMinute);
  bench.Pass(5);
  bench.clock.Do(SessionCommand::Pause);
  bench.Pass(5);
  bench.clock.Do(SessionCommand::Resume);
  bench.Pass(5);
  bench.clock.Do(SessionCommand::NextRound);
  bench.Pass(12);
  EXPECT_EQ(bench.face.undo, "Undo next round, 12 s ago");
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.clock.State().round, 1);
  EXPECT_EQ(bench.face.undo, "Undo resume, 17 s ago");
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_TRUE(bench.clock.State().paused);
  EXPECT_EQ(bench.face.countdown, "9:55");
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_FALSE(bench.clock.State().paused);
  EXPECT_EQ(bench.face.countdown, "9:33");
  bench.Pass(60);
  EXPECT_EQ(bench.face.undo, "Undo +1 minute, 1 min ago");
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.face.countdown, "7:33");
  bench.clock.Do(SessionCommand::Undo);  // nothing is left
  EXPECT_EQ(bench.face.countdown, "7:33");
}

TEST(UndoTest, WhatWasHeardIsNotHeardAgainAndWhatWasMissedIs) {
  ClockBench bench;
  BeginEvening(bench);
  bench.Pass(290);  // 5:10 left
  bench.clock.Do(SessionCommand::SubtractMinute);
  EXPECT_THAT(bench.played, ElementsAre("warning1"));
  bench.Pass(20);
  bench.clock.Do(SessionCommand::Undo);  // 4:50 left: its own moment was ten seconds ago
  EXPECT_THAT(bench.played, ElementsAre("warning1"));
  EXPECT_EQ(bench.face.countdownStyle, Element::EarlyWarning);
  bench.Pass(165);  // 2:05 left
  bench.clock.Do(SessionCommand::Pause);
  bench.Pass(15);
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_THAT(bench.played, ElementsAre("warning1", "warning0"));
}

TEST(UndoTest, WhatWasDoneLongAgoStays) {
  ClockBench bench;
  BeginEvening(bench);
  for (int i = 0; i < 30; ++i) bench.clock.Do(SessionCommand::AddMinute);
  EXPECT_EQ(bench.clock.UndoSteps().size(), UndoList::kLevels);
  bench.Pass(UndoList::kForgottenAfter - 1);
  EXPECT_EQ(bench.face.undo, "Undo +1 minute, 14 min ago");
  bench.Pass(1);
  EXPECT_EQ(bench.face.undo, "");
  const std::string before = bench.face.countdown;
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.face.countdown, before);
}

TEST(UndoTest, AnEndedSessionComesBack) {
  ClockBench bench;
  BeginEvening(bench);
  bench.clock.Start(3);
  bench.Pass(550);
  bench.clock.Do(SessionCommand::SubtractMinute);
  EXPECT_EQ(bench.clock.State().phase, Phase::Ended);
  bench.Pass(10);
  EXPECT_EQ(bench.face.undo, "Undo -1 minute, 10 s ago");
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.face.countdown, "0:40");
  bench.session.settings.nRounds = 2;  // a round is struck off; the point is of the third
  bench.clock.Do(SessionCommand::Restart);
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.clock.State().round, 2);
}

TEST(UndoTest, NothingLeadsBackIntoTheSessionBefore) {
  ClockBench bench;
  BeginEvening(bench);
  bench.clock.Start(3);
  bench.Pass(550);
  bench.clock.Do(SessionCommand::SubtractMinute);  // ends it
  bench.time.PassTo(5000);
  bench.clock.Start(1);
  EXPECT_EQ(bench.face.undo, "");
  bench.clock.Do(SessionCommand::Undo);
  bench.clock.Do(SessionCommand::TakeOutGap);
  EXPECT_EQ(bench.face.countdown, "10:00");
}

TEST(UndoTest, AStartBringsBackTheRoundThatRan) {
  ClockBench bench;
  BeginEvening(bench);
  bench.clock.Do(SessionCommand::NextRound);
  bench.Pass(100);
  const std::string finish = bench.face.finish;
  const double countsFrom = bench.face.countsFrom;
  bench.clock.Start(1);
  bench.Pass(10);
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.clock.State().round, 2);
  EXPECT_EQ(bench.face.countsFrom, countsFrom);
  EXPECT_EQ(bench.face.finish, finish);
  EXPECT_EQ(bench.face.countdown, "8:10");
}

TEST(UndoTest, AnEndedSessionKeepsItsFinish) {
  ClockBench bench;
  BeginEvening(bench);
  bench.RunToEnd();
  const std::string finish = bench.face.finish;
  bench.time.PassTo(bench.time.Elapsed() + 300);
  bench.clock.Do(SessionCommand::Restart);
  bench.Pass(20);
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.face.phase, Phase::Ended);
  EXPECT_EQ(bench.face.finish, finish);
}

TEST(UndoTest, AnAutomaticPauseIsNotMadeAgainInThisRoundButInTheNext) {
  for (const double later : {1.0, 120.0}) {
    ClockBench bench;
    BeginEvening(bench);
    bench.Pass(595);
    bench.clock.Do(SessionCommand::AutoPause);
    bench.Pass(later);
    bench.clock.Do(SessionCommand::Undo);
    EXPECT_EQ(bench.clock.State().mayAutoPause, bench.clock.State().round == 2);
  }
}

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

}  // namespace
}  // namespace corvanel
