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
    int currentRound;
    bool inBreak;
    const char* finish;
    const char* breakAt;
    int16_t breakAfter = 4;
  };
  const Row rows[] = {
      {"no break", false, false, 1, false, "22:17", ""},
      {"break for a move", true, false, 1, false, "22:31", "20:53"},
      {"break and move", true, true, 1, false, "22:32", "20:53"},
      // The move that the break replaces is not taken off in the break round itself.
      {"from the break round", true, false, 4, false, "21:29", "19:50"},
      {"after the break round", true, false, 5, false, "20:53", ""},
      {"in the break", true, false, 4, true, "21:14", ""},
      {"last round", true, false, 8, false, "19:50", ""},
      {"break beyond the session", true, false, 1, false, "22:31", "", 8},
  };
  for (const Row& row : rows) {
    SessionSettings s = EightRounds();
    s.optBreak = row.optBreak;
    s.MoveAfterBreak = row.moveAfterBreak;
    s.BreakAfterRound = row.breakAfter;
    const Schedule schedule = CalcFinishTime(s, row.currentRound, kStart, row.inBreak);
    EXPECT_EQ(TimeText(schedule.finish), row.finish) << row.name;
    EXPECT_EQ(schedule.breakAt ? TimeText(*schedule.breakAt) : "", row.breakAt) << row.name;
  }
}

TEST(CalcRoundTimeTest, MeetsTheRequiredFinish) {
  struct Row {
    const char* required;
    TimeForm form;
    bool optBreak;
    bool moveAfterBreak;
    int currentRound;
    float minutes;
  };
  const Row rows[] = {
      {"22:30", TimeForm::Hours24, false, false, 1, 21.62F},  // 21.625, half to even
      {"10:30", TimeForm::Hours12, false, false, 1, 21.62F},
      {"10:30", TimeForm::Hours24, false, false, 1, 111.62F},  // 893 / 8 = 111.625
      {"", TimeForm::Hours24, false, false, 1, 21.62F},
      {"22:30", TimeForm::Hours24, true, false, 1, 19.88F},  // 159 / 8 = 19.875
      {"22:30", TimeForm::Hours24, true, true, 1, 19.75F},
      {"22:30", TimeForm::Hours24, true, true, 5, 44.25F},
      {"22:30", TimeForm::Hours24, false, false, 8, 180},
      {"19:34", TimeForm::Hours24, false, false, 1, 0},
      {"19:30", TimeForm::Hours24, false, false, 1, 0},
      {"00:30", TimeForm::Hours24, false, false, 1, 36.62F},
  };
  for (const Row& row : rows) {
    SessionSettings s = EightRounds();
    s.RequiredFinish = row.required;
    s.optBreak = row.optBreak;
    s.MoveAfterBreak = row.moveAfterBreak;
    EXPECT_FLOAT_EQ(CalcRoundTime(s, row.currentRound, kStart, row.form), row.minutes)
        << row.required << " from round " << row.currentRound;
  }
}

TEST(CalcRoundTimeLiveTest, SpreadsTheTimeOverTheRoundsReallyLeft) {
  Session session;
  session.settings = EightRounds();
  session.settings.RequiredFinish = "22:30";
  session.currentRound = 6;
  // 21:30, ten minutes of round 6 left, then two rounds and two moves.
  EXPECT_FLOAT_EQ(*CalcRoundTimeLive(session, {Phase::Round, 600, false}, ClockTime::At(21, 30)),
                  24);
  // In the move after round 6 there is one move less to come.
  EXPECT_FLOAT_EQ(*CalcRoundTimeLive(session, {Phase::Move, 60, false}, ClockTime::At(21, 30)), 29);
  EXPECT_FALSE(CalcRoundTimeLive(session, {Phase::Round, 600, false}, ClockTime::At(22, 31)));
  EXPECT_FALSE(CalcRoundTimeLive(session, {Phase::Round, 600, false}, ClockTime::At(22, 25)));
  // Just missed, with rounds enough to fill a whole day: it is not the one of tomorrow.
  session.currentRound = 3;
  EXPECT_FALSE(CalcRoundTimeLive(session, {Phase::Round, 600, false}, ClockTime::At(22, 31)));
  session.settings.RequiredFinish = "08:45";  // 11 hours for one round
  session.currentRound = 7;
  EXPECT_FALSE(CalcRoundTimeLive(session, {Phase::Round, 60, false}, ClockTime::At(21, 0)));
  session.currentRound = 8;
  EXPECT_FALSE(CalcRoundTimeLive(session, {Phase::Round, 600, false}, ClockTime::At(21, 30)));
}

TEST(TimetableTest, HoldsWhatTheClockWillRun) {
  SessionSettings s = EightRounds();
  s.nRounds = 3;
  s.optBreak = true;
  s.BreakAfterRound = 2;
  const auto phases = [&] {
    std::string text;
    for (const TimetableLine& line : Timetable(s, 1)) {
      text += line.phase == Phase::Round ? 'R' : line.phase == Phase::Move ? 'm' : 'B';
    }
    return text;
  };
  EXPECT_EQ(phases(), "RmRBR");
  s.MoveAfterBreak = true;
  EXPECT_EQ(phases(), "RmRBmR");
  EXPECT_EQ(Timetable(s, 1).back().startsIn, 20 + 1 + 20 + 15 + 1);
  s.BreakAfterRound = 3;
  EXPECT_EQ(phases(), "RmRmR");
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
  EXPECT_EQ(RoundCaption(8, 8), "Final Round");
}

}  // namespace
}  // namespace corvanel
