#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "clock/round_clock.h"
#include "tests/support/evening.h"

namespace corvanel {
namespace {

using testing::ElementsAre;

TEST(RoundClockTest, NextAfterTheEndPlaysARoundThatWasAdded) {
  ClockBench bench;
  SetShape(bench, 2, 10, 1);
  bench.clock.Start(2);
  bench.RunToEnd();
  bench.session.settings.nRounds = 3;
  bench.clock.Do(SessionCommand::NextRound);
  EXPECT_EQ(bench.face.caption, "Final Round of 3");
  EXPECT_EQ(bench.face.countdown, "10:00");
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.clock.State().phase, Phase::Ended);
}

// Every command in every state: the phase that follows, the round, and whether the clock is paused.
TEST(RoundClockTest, EveryCommandInEveryState) {
  using Command = void (*)(RoundClock&);
  const std::pair<const char*, Command> commands[] = {
      {"start", [](RoundClock& c) { c.Start(std::max<int16_t>(c.State().round, 2)); }},
      {"pause", [](RoundClock& c) { c.Do(SessionCommand::Pause); }},
      {"resume", [](RoundClock& c) { c.Do(SessionCommand::Resume); }},
      {"next", [](RoundClock& c) { c.Do(SessionCommand::NextRound); }},
      {"restart", [](RoundClock& c) { c.Do(SessionCommand::Restart); }},
      {"minute", [](RoundClock& c) { c.Do(SessionCommand::AddMinute); }},
      {"tick", [](RoundClock& c) { c.Tick(); }},
  };
  // One letter a phase (I R M B E), the round, "p" when paused; by command in the order above.
  struct Row {
    const char* state;
    double seconds;  // passed since the start of round 2
    bool pause;
    const char* after[7];
  };
  const Row rows[] = {
      {"idle", -1, false, {"R2", "I1", "I1", "I1", "I1", "I1", "I1"}},
      {"round", 30, false, {"R2", "R2p", "R2", "R3", "R2", "R2", "R2"}},
      {"break", 630, false, {"R2", "B2p", "B2", "R3", "R2", "B2", "B2"}},
      {"move", 1230, false, {"R2", "M2p", "M2", "R3", "R2", "M2", "M2"}},
      {"final round", 1300, false, {"R3", "R3p", "R3", "R3", "R3", "R3", "R3"}},
      {"ended", 2000, false, {"R3", "E3", "E3", "E3", "R3", "E3", "E3"}},
      {"round paused", 30, true, {"R2", "R2p", "R2", "R3", "R2", "R2p", "R2p"}},
      {"break paused", 630, true, {"R2", "B2p", "B2", "R3", "R2", "B2p", "B2p"}},
      {"move paused", 1230, true, {"R2", "M2p", "M2", "R3", "R2", "M2p", "M2p"}},
      {"final round paused", 1300, true, {"R3", "R3p", "R3", "R3p", "R3", "R3p", "R3p"}},
  };
  for (const Row& row : rows) {
    for (size_t i = 0; i < std::size(commands); ++i) {
      ClockBench bench;
      SetShape(bench, 3, 10, 1);
      bench.session.settings.optBreak = true;
      bench.session.settings.BreakAfterRound = 2;
      bench.session.settings.TimeForBreak = 10;
      if (row.seconds >= 0) bench.clock.Start(2);
      bench.Pass(std::max(row.seconds, 0.0));
      if (row.pause) bench.clock.Do(SessionCommand::Pause);
      bench.Pass(0.5);
      commands[i].second(bench.clock);
      const ClockState& state = bench.clock.State();
      const std::string after = std::string(1, "IRMBE"[static_cast<int>(state.phase)]) +
                                std::to_string(bench.clock.State().round) +
                                (state.paused ? "p" : "");
      EXPECT_EQ(after, row.after[i]) << row.state << ", " << commands[i].first;
      const bool asleep = state.phase == Phase::Idle || state.phase == Phase::Ended;
      EXPECT_NE(bench.time.Due().has_value(), asleep) << row.state << ", " << commands[i].first;
    }
  }
}

TEST(RoundClockTest, APauseIsNotCounted) {
  ClockBench bench(ClockTime::At(23, 50));
  SetShape(bench, 2, 20, 1);
  bench.clock.Start(1);
  bench.Pass(100.25);
  bench.clock.Do(SessionCommand::Pause);
  bench.clock.Do(SessionCommand::Pause);  // the second one keeps the first one's mark
  bench.Pass(1200);                       // over midnight
  const std::string finish = bench.face.finish;
  EXPECT_EQ(bench.face.countdown, "18:20");
  bench.clock.Do(SessionCommand::Resume);
  bench.clock.Do(SessionCommand::Resume);
  EXPECT_EQ(bench.face.finish, finish);
  EXPECT_NEAR(bench.clock.Now().secondsLeft, 1200 - 100.25, 1e-6);
  EXPECT_NEAR(bench.RunToEnd(), 41 * 60 + 1200, 1e-6);
}

TEST(RoundClockTest, APauseOfMoreThanADayIsNotCountedEither) {
  ClockBench bench(ClockTime::At(23, 58));
  SetShape(bench, 1, 500, 1);
  bench.clock.Start(1);
  bench.Pass(60);
  bench.clock.Do(SessionCommand::Pause);
  bench.time.PassTo(60 + 80000);
  bench.clock.Do(SessionCommand::Resume);
  EXPECT_NEAR(bench.RunToEnd(), 500 * 60 + 80000, 1e-6);
}

TEST(RoundClockTest, MinutesCanBeAddedAndTakenOffInRoundAndBreak) {
  ClockBench bench;
  SetShape(bench, 2, 10, 1);
  bench.clock.Start(1);
  bench.Pass(450);  // the second and the first warning's time has not come yet
  EXPECT_EQ(bench.face.countdown, "2:30");
  EXPECT_EQ(bench.face.finish, "Finish at 19:51");
  for (int i = 0; i < 3; ++i) bench.clock.Do(SessionCommand::AddMinute);
  EXPECT_EQ(bench.face.countdown, "5:30");
  EXPECT_EQ(bench.face.finish, "Finish at 19:54");
  // The last warning lies ahead again, the early one does not.
  EXPECT_EQ(bench.face.countdownStyle, Element::EarlyWarning);
  bench.Pass(200);
  EXPECT_EQ(bench.face.countdownStyle, Element::LastWarning);
  EXPECT_EQ(bench.played, (std::vector<std::string>{"warning1", "warning0", "warning0"}));
  for (int i = 0; i < 3; ++i) bench.clock.Do(SessionCommand::SubtractMinute);
  EXPECT_EQ(bench.face.phase, Phase::Move);
  bench.clock.Do(SessionCommand::AddMinute);
  EXPECT_EQ(bench.face.countdown, "1:00");
  for (int i = 0; i < 5000; ++i) bench.clock.Do(SessionCommand::AddMinute);
  EXPECT_EQ(bench.face.phase, Phase::Move);
}

TEST(RoundClockTest, NoNumberOfAddedMinutesEndsTheRound) {
  ClockBench bench;
  SetShape(bench, 2, 10, 1);
  bench.clock.Start(1);
  for (int i = 0; i < 2000; ++i) bench.clock.Do(SessionCommand::AddMinute);
  EXPECT_EQ(bench.face.phase, Phase::Round);
  EXPECT_EQ(bench.face.countdown, "600:00");
}

TEST(RoundClockTest, ASessionMadeShorterEndsAfterTheRoundInPlay) {
  ClockBench bench;
  SetShape(bench, 5, 10, 1);
  bench.clock.Start(2);
  bench.Pass(620);  // in the move
  bench.session.settings.nRounds = 2;
  bench.Pass(60);
  EXPECT_EQ(bench.face.phase, Phase::Ended);
  EXPECT_EQ(bench.clock.State().round, 2);
}

TEST(RoundClockTest, ASessionMadeShorterInTheBreakEndsWithIt) {
  ClockBench bench;
  SetShape(bench, 3, 10, 1);
  SessionSettings& s = bench.session.settings;
  s.optBreak = true;
  s.BreakAfterRound = 2;
  s.TimeForBreak = 5;
  s.MoveAfterBreak = true;
  bench.clock.Start(2);
  bench.Pass(660);
  ASSERT_EQ(bench.face.phase, Phase::Break);
  s.nRounds = 2;
  bench.Pass(240);
  EXPECT_EQ(bench.face.phase, Phase::Ended);
  EXPECT_THAT(bench.played, testing::Not(testing::Contains("end")));  // nobody moves any more
}

TEST(RoundClockTest, ARoundEndedByTheLinkWarnsNobodyOfItsEnd) {
  ClockBench bench;
  SetShape(bench, 2, 10, 1);
  bench.clock.Start(1);
  bench.Pass(60);
  bench.clock.Do(SessionCommand::AutoEnd);
  EXPECT_EQ(bench.face.phase, Phase::Move);
  EXPECT_THAT(bench.played, ElementsAre("end"));
}

}  // namespace
}  // namespace corvanel
