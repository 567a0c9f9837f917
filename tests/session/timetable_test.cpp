#include "session/timetable.h"

#include <gtest/gtest.h>

#include "session/captions.h"

namespace corvanel {
namespace {

SessionSettings EightRounds() {
  SessionSettings s;
  s.nRounds = 8;
  s.MinPerRound = 20;
  s.MinBetweenRounds = 1;
  s.optBreak = false;
  s.BreakAfterRound = 4;
  s.TimeForBreak = 15;
  s.MoveAfterBreak = false;
  return s;
}

const ClockTime kStart = ClockTime::At(19, 30);

TEST(CalcFinishTimeTest, CountsRoundsMovesAndBreak) {
  struct Row {
    const char* name;
    bool optBreak;
    bool moveAfterBreak;
    int round;
    const char* finish;
    const char* breakAt;
    int16_t breakAfter = 4;
  };
  const Row rows[] = {
      {"no break", false, false, 1, "22:17", ""},
      {"break for a move", true, false, 1, "22:31", "20:53"},
      {"break and move", true, true, 1, "22:32", "20:53"},
      // The move that the break replaces is not taken off in the break round itself.
      {"from the break round", true, false, 4, "21:29", "19:50"},
      {"after the break round", true, false, 5, "20:53", ""},
      {"last round", true, false, 8, "19:50", ""},
      {"break after the last round", true, false, 1, "22:17", "", 8},
      {"break beyond the session", true, true, 1, "22:17", "", 20},
  };
  for (const Row& row : rows) {
    SessionSettings s = EightRounds();
    s.optBreak = row.optBreak;
    s.MoveAfterBreak = row.moveAfterBreak;
    s.BreakAfterRound = row.breakAfter;
    const Schedule schedule = CalcFinishTime(s, row.round, kStart);
    EXPECT_EQ(TimeText(schedule.finish), row.finish) << row.name;
    EXPECT_EQ(schedule.breakAt ? TimeText(*schedule.breakAt) : "", row.breakAt) << row.name;
  }
}

TEST(CalcFinishTest, TimesThatAreWorkedOutAreToTheNearestMinute) {
  SessionSettings s = EightRounds();
  s.optBreak = true;
  s.MinPerRound = 20.1F;  // 20:53:24 is the break, 22:31:48 the end
  const Schedule plan = CalcFinishTime(s, 1, kStart);
  EXPECT_EQ(TimeText(plan.finish), "22:32");
  EXPECT_EQ(TimeText(*plan.breakAt), "20:53");
  EXPECT_EQ(TimeText(*plan.breakEnd), "21:08");
  EXPECT_EQ(CalcFinish(s, {Phase::Round, 1, 20.1 * 60}, kStart), plan);
}

// A finish that can be met is shown as it was required, wherever the minutes are spread.
TEST(CalcRoundTimeTest, ARequiredFinishIsShownAsRequired) {
  for (int seconds = 0; seconds < 3600; seconds += 7) {
    SessionSettings s = EightRounds();
    s.Calculate = 1;
    s.optBreak = seconds % 2 == 0;
    s.RequiredFinish = ClockTime::At(22, 30);
    const ClockTime start = kStart.PlusSeconds(seconds);
    const int round = 1 + seconds % 7;
    s.MinPerRound = CalcRoundTime(s, round, start, TimeForm::Hours24);
    EXPECT_EQ(TimeText(CalcFinishTime(s, round, start).finish), "22:30") << seconds;
    const Standing standing{Phase::Round, round, 61};
    s.MinPerRound = *CalcRoundTimeLive(s, standing, start, TimeForm::Hours24);
    EXPECT_EQ(TimeText(CalcFinish(s, standing, start).finish), "22:30") << seconds;
  }
}

TEST(CalcRoundTimeTest, MeetsTheRequiredFinish) {
  struct Row {
    const char* required;
    TimeForm form;
    bool optBreak;
    bool moveAfterBreak;
    int round;
    float minutes;
    int16_t breakAfter = 4;
  };
  const Row rows[] = {
      {"22:30", TimeForm::Hours24, false, false, 1, 21.62F},  // 21.625, half to even
      {"10:30", TimeForm::Hours12, false, false, 1, 21.62F},
      {"10:30", TimeForm::Hours24, false, false, 1, 111.62F},  // 893 / 8 = 111.625
      {"", TimeForm::Hours24, false, false, 1, 21.62F},
      {"22:30", TimeForm::Hours24, true, false, 1, 19.88F},  // 159 / 8 = 19.875
      {"22:30", TimeForm::Hours24, true, true, 1, 19.75F},
      {"22:30", TimeForm::Hours24, true, true, 5, 44.25F},
      {"22:30", TimeForm::Hours24, true, true, 1, 21.62F, 8},  // a break that never comes
      {"22:30", TimeForm::Hours24, false, false, 8, 180},
      {"19:34", TimeForm::Hours24, false, false, 1, 0},
      {"19:30", TimeForm::Hours24, false, false, 1, 0},
      {"00:30", TimeForm::Hours24, false, false, 1, 36.62F},
  };
  for (const Row& row : rows) {
    SessionSettings s = EightRounds();
    s.RequiredFinish = ParseTime(row.required);
    s.optBreak = row.optBreak;
    s.MoveAfterBreak = row.moveAfterBreak;
    s.BreakAfterRound = row.breakAfter;
    EXPECT_FLOAT_EQ(CalcRoundTime(s, row.round, kStart, row.form), row.minutes)
        << row.required << " from round " << row.round;
  }
}

TEST(CalcRoundTimeLiveTest, SpreadsTheTimeOverTheRoundsReallyLeft) {
  SessionSettings s = EightRounds();
  s.RequiredFinish = ClockTime::At(22, 30);
  const auto live = [&](const Standing& standing, ClockTime now) {
    return CalcRoundTimeLive(s, standing, now, TimeForm::Hours24);
  };
  // 21:30, ten minutes of round 6 left, then two rounds and two moves.
  EXPECT_FLOAT_EQ(*live({Phase::Round, 6, 600}, ClockTime::At(21, 30)), 24);
  // In the move after round 6 there is one move less to come.
  EXPECT_FLOAT_EQ(*live({Phase::Move, 6, 60}, ClockTime::At(21, 30)), 29);
  EXPECT_FALSE(live({Phase::Round, 6, 600}, ClockTime::At(22, 31)));
  EXPECT_FALSE(live({Phase::Round, 6, 600}, ClockTime::At(22, 25)));
  // Just missed, with rounds enough to fill a whole day: it is not the one of tomorrow.
  EXPECT_FALSE(live({Phase::Round, 3, 600}, ClockTime::At(22, 31)));
  EXPECT_FALSE(live({Phase::Round, 8, 600}, ClockTime::At(21, 30)));
  s.RequiredFinish = ClockTime::At(8, 45);  // 11 hours for one round
  EXPECT_FALSE(live({Phase::Round, 7, 60}, ClockTime::At(21, 0)));
}

TEST(TimetableTest, HoldsWhatTheClockWillRun) {
  SessionSettings s = EightRounds();
  s.nRounds = 3;
  s.optBreak = true;
  s.BreakAfterRound = 2;
  const auto phases = [&](const Standing& from) {
    std::string text;
    for (const TimetableLine& line : Timetable(s, from)) {
      text += line.phase == Phase::Round ? 'R' : line.phase == Phase::Move ? 'm' : 'B';
    }
    return text;
  };
  EXPECT_EQ(phases({}), "RmRBR");
  s.MoveAfterBreak = true;
  EXPECT_EQ(phases({}), "RmRBmR");
  EXPECT_EQ(Timetable(s, {}).back().startsIn, 20 + 1 + 20 + 15 + 1);
  EXPECT_EQ(phases({Phase::Move, 1, 30}), "mRBmR");
  EXPECT_EQ(phases({Phase::Break, 2, 60}), "BmR");
  EXPECT_EQ(phases({Phase::Move, 2, 30}), "mR");
  EXPECT_EQ(phases({Phase::Round, 3, 30}), "R");
  EXPECT_EQ(phases({Phase::Ended, 3, 0}), "");
  EXPECT_EQ(Timetable(s, {Phase::Break, 2, 90}).back().startsIn, 1.5 + 1);
  s.BreakAfterRound = 3;
  EXPECT_EQ(phases({}), "RmRmR");
  // Rounds struck off in the break: nothing comes after it.
  s.nRounds = 2;
  EXPECT_EQ(phases({Phase::Break, 2, 60}), "B");
}

TEST(CaptionsTest, SayWhatThePlayersMustDo) {
  SessionSettings s = EightRounds();
  s.Skip = "2";
  s.Arrow = "2,3";
  EXPECT_EQ(MoveMessage(s, 1), "MOVE FOR ROUND 2");
  EXPECT_EQ(MoveMessage(s, 2), "SKIP/ARROW - MOVE FOR ROUND 3");
  EXPECT_EQ(MoveMessage(s, 3), "ARROW - MOVE FOR ROUND 4");
  EXPECT_EQ(MoveMessage(s, 7), "MOVE FOR THE FINAL ROUND");
  EXPECT_EQ(RoundCaption(3, 8), "Time remaining for Round 3 of 8");
  EXPECT_EQ(RoundCaption(8, 8), "Final Round of 8");
  s.MoveAfterBreak = false;
  EXPECT_EQ(PhaseCaption(s, {Phase::Break, 2}), "SKIP/ARROW - Time remaining for the break");
  EXPECT_EQ(PhaseCaption(s, {Phase::Break, 1}), "Time remaining for the break");
  s.MoveAfterBreak = true;
  EXPECT_EQ(PhaseCaption(s, {Phase::Break, 2}), "Time remaining for the break");
}

TEST(CalcFinishTimeTest, ABreakThatNeverComesAddsNoMove) {
  SessionSettings s = EightRounds();
  s.optBreak = true;
  s.BreakAfterRound = 8;
  EXPECT_EQ(TimeText(CalcFinishTime(s, 8, kStart).finish), "19:50");
}

TEST(CaptionsTest, ATitleIsCutWhereItIsTooLong) {
  EXPECT_EQ(ShownTitle("Friday Pairs"), "Friday Pairs");
  std::string title;
  for (int i = 0; i < kLongestTitle; ++i) title += "é";
  EXPECT_EQ(ShownTitle(title), title);
  EXPECT_EQ(ShownTitle(title + "é b"), title + "…");
}

// Rounds that are added for another evening do not call players back into this one.
TEST(CaptionsTest, AnEndedSessionKeepsItsFinalRound) {
  EXPECT_EQ(PhaseCaption(EightRounds(), {Phase::Ended, 6, 0}), "Final Round of 6");
}

TEST(RoundListTest, ListsRoundsAsTheyAreWritten) {
  const RoundList list("3,07,12");
  EXPECT_TRUE(list.Lists(3));
  EXPECT_TRUE(list.Lists(12));
  EXPECT_FALSE(list.Lists(7));
}

}  // namespace
}  // namespace corvanel
