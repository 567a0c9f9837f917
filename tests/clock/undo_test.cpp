#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "clock/undo_list.h"
#include "tests/support/evening.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(UndoTest, TimeGoesOnAsIfTheWrongPressHadNeverBeen) {
  using Command = void (*)(RoundClock&);
  const std::pair<const char*, Command> commands[] = {
      {"Undo pause", [](RoundClock& c) { c.Do(SessionCommand::Pause); }},
      {"Undo next round", [](RoundClock& c) { c.Do(SessionCommand::NextRound); }},
      {"Undo restart", [](RoundClock& c) { c.Do(SessionCommand::Restart); }},
      {"Undo +1 minute", [](RoundClock& c) { c.Do(SessionCommand::AddMinute); }},
      {"Undo −1 minute", [](RoundClock& c) { c.Do(SessionCommand::SubtractMinute); }},
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
  EXPECT_EQ(bench.face.undo, "Undo −1 minute, 10 s ago");
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

TEST(UndoTest, TheOldestCommandIsForgottenFirst) {
  ClockBench bench;
  BeginEvening(bench);
  for (size_t i = 0; i <= UndoList::kLevels; ++i) bench.clock.Do(SessionCommand::AddMinute);
  ASSERT_EQ(bench.face.countdown, "31:00");
  for (size_t i = 0; i <= UndoList::kLevels; ++i) bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.face.countdown, "11:00");  // the first of them stays
}

}  // namespace
}  // namespace corvanel
