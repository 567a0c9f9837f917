#include "clock/round_clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "tests/support/evening.h"

namespace corvanel {
namespace {

using testing::ElementsAre;

TEST(RoundClockTest, RunsAnEveningInItsOrder) {
  ClockBench bench;
  SetShape(bench, 3, 10, 1);
  SessionSettings& s = bench.session.settings;
  s.optBreak = true;
  s.BreakAfterRound = 2;
  s.TimeForBreak = 15;
  s.MoveAfterBreak = true;
  s.Skip = "1";
  s.Arrow = "1";
  bench.clock.Start(1);
  EXPECT_EQ(bench.RunToEnd(), (3 * 10 + 15 + 2) * 60);
  EXPECT_THAT(bench.log,
              ElementsAre("19:30:00 round Time remaining for Round 1 of 3",
                          "19:33:00 warning Between warnings", "19:33:00 sound warning1",
                          "19:37:00 warning Warning period", "19:37:00 sound warning0",
                          "19:40:00 move SKIP/ARROW - MOVE FOR ROUND 2", "19:40:00 sound skip",
                          "19:40:00 sound arrow", "19:41:00 round Time remaining for Round 2 of 3",
                          "19:44:00 warning Between warnings", "19:44:00 sound warning1",
                          "19:48:00 warning Warning period", "19:48:00 sound warning0",
                          "19:51:00 break Time remaining for the break", "19:51:00 sound break",
                          "20:03:00 warning Warning period", "20:03:00 sound endbreak",
                          "20:06:00 move MOVE FOR THE FINAL ROUND", "20:06:00 sound end",
                          "20:07:00 round Final Round of 3", "20:10:00 warning Between warnings",
                          "20:14:00 warning Warning period", "20:17:00 end End of the session"));
  EXPECT_EQ(bench.face.countdown, "0:00");
  EXPECT_EQ(bench.face.caption, "Final Round of 3");
  EXPECT_EQ(bench.face.countdownStyle, Element::TimeUp);
  EXPECT_EQ(bench.clock.State().round, 3);
  EXPECT_TRUE(bench.errors.reports.empty());
}

TEST(RoundClockTest, TheBreakWithoutAMoveLeadsStraightToTheNextRound) {
  ClockBench bench;
  SetShape(bench, 4, 5, 1);
  SessionSettings& s = bench.session.settings;
  s.optBreak = true;
  s.BreakAfterRound = 3;
  s.TimeForBreak = 2;
  s.MoveAfterBreak = false;
  s.MinWarning = 0;
  s.MinWarning1 = 0;
  bench.clock.Start(3);
  bench.Pass(5 * 60 + 30);
  EXPECT_EQ(bench.face.phase, Phase::Break);
  EXPECT_EQ(bench.face.caption, "Time remaining for the break");
  EXPECT_EQ(bench.face.countdownStyle, Element::TimeRemaining);
  bench.Pass(90);
  EXPECT_EQ(bench.face.caption, "Final Round of 4");
  EXPECT_THAT(bench.played, ElementsAre("break"));  // no bell with a first warning of 0
}

TEST(RoundClockTest, ABreakOfNoLengthIsNone) {
  ClockBench bench;
  SetShape(bench, 4, 5, 1);
  SessionSettings& s = bench.session.settings;
  s.optBreak = true;
  s.BreakAfterRound = 2;
  s.TimeForBreak = 0;
  s.MoveAfterBreak = false;
  s.MinWarning = 0;
  s.MinWarning1 = 0;
  bench.clock.Start(1);
  EXPECT_EQ(bench.face.breakLine, "");
  bench.Pass(11 * 60 + 30);
  EXPECT_EQ(bench.face.phase, Phase::Move);
  EXPECT_THAT(bench.played, ElementsAre("end", "end"));
}

TEST(RoundClockTest, SecondsStepEvenly) {
  for (const double perRound : {0.3, 0.305, 0.55, 15.0}) {
    ClockBench bench(ClockTime::At(23, 59, 57.25));
    SetShape(bench, 3, static_cast<float>(perRound), 0.1F);
    bench.clock.Start(1);
    int last = -1;
    for (double elapsed = 0; bench.clock.State().phase != Phase::Ended;
         elapsed = bench.time.Elapsed()) {
      bench.time.PassToWakeUp();
      // The machine is busy: some ticks come late by up to nearly half a second.
      bench.time.PassTo(bench.time.Elapsed() + (static_cast<int>(elapsed * 7) % 5) * 0.09);
      bench.clock.Tick();
    }
    for (const std::string& countdown : bench.countdowns) {
      const size_t colon = countdown.find(':');
      const int seconds =
          std::stoi(countdown.substr(0, colon)) * 60 + std::stoi(countdown.substr(colon + 1));
      if (last > 0 && seconds < last) {
        ASSERT_EQ(seconds, last - 1) << perRound;
      }
      last = seconds;
    }
  }
}

TEST(RoundClockTest, ALateTickCatchesUpAndTheNextComesInTime) {
  ClockBench bench;
  SetShape(bench, 2, 5, 1);
  bench.clock.Start(1);
  bench.time.PassTo(63.4);
  bench.clock.Tick();
  EXPECT_EQ(bench.face.countdown, "3:57");
  EXPECT_NEAR(*bench.time.Due(), 64, 1e-6);
  bench.clock.Tick();  // doubled: changes nothing
  EXPECT_EQ(bench.face.countdown, "3:57");
}

TEST(RoundClockTest, MidnightPassesUnseenInRoundAndMove) {
  for (const auto start : {ClockTime::At(23, 55), ClockTime::At(23, 49, 30)}) {
    ClockBench bench(start);
    SetShape(bench, 2, 10, 1);
    bench.clock.Start(1);
    double last = 601;
    for (int second = 0; second < 665; ++second) {
      const double left = bench.clock.Now().secondsLeft;
      const bool goesOn = bench.face.phase == Phase::Round && last != 0 && left < 599;
      if (goesOn) {
        ASSERT_NEAR(left, last - 1, 1e-6);
      }
      last = bench.face.phase == Phase::Round ? left : 0;
      bench.Pass(1);
    }
    EXPECT_NEAR(bench.RunToEnd(), 21 * 60, 1e-6);
  }
  EXPECT_EQ(SecondsRemaining(100.5, 100), 0);
  EXPECT_EQ(SecondsRemaining(100.6, 100), 100.6 - 100);
}

TEST(RoundClockTest, MovesShowTenthsOfMinutesAndSetTheStartTime) {
  ClockBench bench(ClockTime::At(19, 30, 45));
  SetShape(bench, 2, 1, 0.1F);
  bench.clock.Start(1);
  bench.Pass(60);
  EXPECT_EQ(bench.face.countdown, "0:06");
  EXPECT_EQ(bench.face.message, "MOVE FOR THE FINAL ROUND");
  EXPECT_EQ(bench.face.countsFrom, 60);
  bench.Pass(6.01);
  EXPECT_EQ(bench.face.message, "");
}

TEST(RoundClockTest, WarningsFollowTheirSwitches) {
  struct Row {
    const char* name;
    std::function<void(SessionSettings&)> set;
    std::vector<std::string> played;
    Element style;
  };
  const Row rows[] = {
      {"first without a sound",
       [](SessionSettings& s) { s.sounds.play[0] = false; },
       {"warning1"},
       Element::LastWarning},
      {"second off: neither sound nor colour",
       [](SessionSettings& s) {
         s.sounds.play[1] = false;
         s.MinWarning = 0;
       },
       {},
       Element::TimeRemaining},
      {"warning of 0",
       [](SessionSettings& s) { s.MinWarning = 0; },
       {"warning1"},
       Element::EarlyWarning},
      {"both at once: element 0, then element 1",
       [](SessionSettings& s) {
         s.MinWarning = 20;
         s.MinWarning1 = 20;
       },
       {"warning0", "warning1"},
       Element::EarlyWarning},
      {"an empty file plays nothing",
       [](SessionSettings& s) { s.sounds.files[0] = ""; },
       {"warning1"},
       Element::LastWarning},
  };
  for (const Row& row : rows) {
    ClockBench bench;
    SetShape(bench, 2, 10, 1);
    row.set(bench.session.settings);
    bench.clock.Start(1);
    bench.Pass(9 * 60);
    EXPECT_EQ(bench.played, row.played) << row.name;
    EXPECT_EQ(bench.face.countdownStyle, row.style) << row.name;
  }
}

TEST(RoundClockTest, TheFinalRoundIsSilentUnlessItsSwitchIsOn) {
  ClockBench bench;
  SetShape(bench, 1, 10, 1);
  bench.session.settings.sounds.playFinalRound = {true, false};
  bench.clock.Start(1);
  bench.RunToEnd();
  EXPECT_THAT(bench.played, ElementsAre("warning0"));
  EXPECT_EQ(std::count_if(bench.log.begin(), bench.log.end(),
                          [](const auto& line) { return line.find("warning") == 9; }),
            2);
}

TEST(RoundClockTest, TheCountdownMovesInStepsAndEndsInSeconds) {
  EXPECT_EQ(CountdownStep(1), 1);
  EXPECT_EQ(CountdownStep(7), 5);
  EXPECT_EQ(CountdownStep(-4), 1);
  EXPECT_EQ(CountdownStep(99), 60);
  const std::tuple<double, int, double> rows[] = {{600, 60, 600}, {599, 60, 600}, {541, 60, 600},
                                                  {540, 60, 540}, {61, 60, 120},  {60, 60, 60},
                                                  {59, 60, 59},   {0, 60, 0},     {43, 15, 45}};
  for (const auto& [left, step, shown] : rows) EXPECT_EQ(ShownSeconds(left, step), shown) << left;
  ClockBench bench;
  SetShape(bench, 1, 10, 1);
  bench.session.options.TimeChange = 30;
  bench.clock.Start(1);
  bench.Pass(3 * 60);  // the second warning's moment
  EXPECT_EQ(bench.face.countdown, "7:00");
  EXPECT_EQ(bench.face.countdownStyle, Element::EarlyWarning);
  bench.Pass(1);
  EXPECT_EQ(bench.face.countdown, "7:00");
  EXPECT_EQ(bench.RunToEnd(), 600);
  EXPECT_EQ(bench.face.countdown, "0:00");
}

TEST(RoundClockTest, TheTimeOfDayIsTheComputersOwnInTheDirectorsForm) {
  ClockBench bench(ClockTime::At(21, 5));
  bench.session.options.TimeAs24hour = false;
  SetShape(bench, 2, 10, 1);
  bench.clock.Start(1);
  EXPECT_EQ(bench.timeOfDay, "9:05pm");
  EXPECT_EQ(bench.face.finish, "Finish at 9:26pm");
}

// "Break:… End:…" as the room reads it, in every phase, with the break ahead, over, or never to
// come.
TEST(RoundClockTest, TheBreakLineTellsTheBreakThatIsAhead) {
  struct Row {
    const char* when;
    double seconds;  // since the start of round 1 at 19:30
    int breakAfter;
    const char* line;
  };
  const Row rows[] = {
      {"in round 1", 60, 2, "Break:19:51 End:20:06"},
      {"in the move after round 1", 630, 2, "Break:19:51 End:20:06"},
      {"in the break round", 700, 2, "Break:19:51 End:20:06"},
      {"in the break", 1300, 2, ""},
      {"in the move after the break", 2180, 2, ""},
      {"in the round after the break", 2300, 2, ""},
      {"after the last round", 60, 4, ""},
      {"beyond the last round", 60, 9, ""},
  };
  for (const Row& row : rows) {
    ClockBench bench;
    SetShape(bench, 4, 10, 1);
    SessionSettings& s = bench.session.settings;
    s.optBreak = true;
    s.BreakAfterRound = static_cast<int16_t>(row.breakAfter);
    s.TimeForBreak = 15;
    s.MoveAfterBreak = true;
    bench.clock.Start(1);
    bench.Pass(row.seconds);
    EXPECT_EQ(bench.face.breakLine, row.line) << row.when;
    EXPECT_EQ(bench.face.finish, row.breakAfter == 2 ? "Finish at 20:28" : "Finish at 20:13")
        << row.when;
  }
}

}  // namespace
}  // namespace corvanel
