#include <gtest/gtest.h>

#include <cmath>

#include "basics/numbers.h"
#include "basics/result.h"
#include "basics/runtime_error.h"
#include "basics/times.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

TEST(SameNameTest, GoesByUnicodeAndNotByTheLocale) {
  EXPECT_TRUE(SameName("TIMER", "timer"));
  EXPECT_TRUE(SameName("Éric's", "éRIC'S"));
  EXPECT_FALSE(SameName("Timer", "Timers"));
  EXPECT_FALSE(SameName("\xC3", "\xC4"));  // no UTF-8
}

TEST(Numbers, ValReadsTheNumberInFront) {
  const std::pair<const char*, double> rows[] = {
      {"", 0},      {"12", 12}, {" 7.5 min", 7.5}, {"abc", 0}, {"1e9", 1e9}, {"-5", -5},
      {"+3", 3},    {",,", 0},  {".5", 0.5},       {"-", 0},   {"inf", 0},   {"nan", 0},
      {"1e999", 0}, {"7,5", 7}, {"0x10", 0},       {"--3", 0}, {"5.", 5},
  };
  for (const auto& [text, value] : rows) EXPECT_EQ(Val(text), value) << text;
}

TEST(Numbers, WholeNumbersNeverWrap) {
  EXPECT_EQ(WholeNumber("32767"), 32767);
  EXPECT_EQ(WholeNumber("2.9"), 2);
  for (const char* text : {"32768", "99999", "1e9", "-40000", "1e300"}) {
    EXPECT_THROW(WholeNumber(text), RuntimeError) << text;
  }
}

TEST(Numbers, SinglesAreWrittenShortAndReadBackTheSame) {
  for (const float value : {15.0F, 7.5F, 0.1F, 21.62F, 1.0F / 3, 0.0F, 599.99F}) {
    EXPECT_EQ(static_cast<float>(Val(SingleText(value))), value);
  }
  EXPECT_EQ(SingleText(15), "15");
  EXPECT_EQ(SingleText(7.5F), "7.5");
}

TEST(Numbers, ExactHalvesGoToTheEvenDigit) {
  const std::pair<double, const char*> rows[] = {
      {21.625, "21.62"}, {1.005, "1.00"}, {1.015, "1.02"}, {2.675, "2.68"},
      {8, "8.00"},       {0.006, "0.01"}, {0.004, "0.00"}, {12.344999, "12.34"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(TwoDecimals(value), text) << value;
}

TEST(Numbers, RoundListsHoldWholeRounds) {
  EXPECT_TRUE(RoundList("3,7").Lists(3));
  EXPECT_TRUE(RoundList("3,7").Lists(7));
  EXPECT_FALSE(RoundList("3,7").Lists(30));
  EXPECT_FALSE(RoundList("13,37").Lists(3));
  EXPECT_FALSE(RoundList("").Lists(1));
}

TEST(Numbers, FileNamesOfBothSystems) {
  EXPECT_EQ(FileName("C:\\Corvanel\\Fx2 Move.wav"), "Fx2 Move.wav");
  EXPECT_EQ(FileName("/usr/lib/corvanel\\Bell.wav"), "Bell.wav");
  EXPECT_EQ(FileName("Bell.wav"), "Bell.wav");
}

TEST(Times, AreReadAsPeopleWriteThem) {
  const std::pair<const char*, const char*> rows[] = {
      {"21:30", "21:30"},
      {"9:30pm", "21:30"},
      {"9 pm", "21:00"},
      {"9pm", "21:00"},
      {"9p", "21:00"},
      {"12am", "00:00"},
      {"12:05 PM", "12:05"},
      {" 7:05 ", "07:05"},
      {"19.30", "19:30"},
      {"23:59:59", "23:59"},
      {"13:10pm", "13:10"},
      {"21/11/2026 19:30", "19:30"},
      {"2026-11-21 9:15am", "09:15"},
      {"21/11/2026", "00:00"},
  };
  for (const auto& [text, time] : rows) {
    ASSERT_TRUE(ParseTime(text)) << text;
    EXPECT_EQ(TimeText(*ParseTime(text)), time) << text;
  }
  for (const char* text : {"", "25:00", "24:00", "21:60", "9", "1930", "abc", "pm", "21:3x", ":30",
                           "0pm", "13am", "21:30:75", "99999:00", "1:2:3:4", "9:30pmm", "-5:00"}) {
    EXPECT_FALSE(ParseTime(text)) << text;
  }
}

TEST(Times, TwelveHourTextIsTakenBackByEveryTimeBox) {
  for (int minute = 0; minute < 1440; ++minute) {
    const ClockTime time = ClockTime::At(0, minute);
    for (const TimeForm form : {TimeForm::Hours24, TimeForm::Hours12}) {
      const std::string text = TimeText(time, form);
      ASSERT_EQ(ParseTime(text), time) << text;
      ASSERT_EQ(text.find_first_not_of("0123456789:amp"), std::string::npos) << text;
    }
  }
  EXPECT_EQ(TimeText(ClockTime::At(21, 30), TimeForm::Hours12), "9:30pm");
}

TEST(Times, RoundToTheSecondBeforeTheMinute) {
  EXPECT_EQ(TimeText(ClockTime::At(21, 29, 59.6)), "21:30");
  EXPECT_EQ(TimeText(ClockTime::At(23, 59, 59.9)), "00:00");
  EXPECT_EQ(MinutesAndSeconds(59.6), "1:00");
  EXPECT_EQ(MinutesAndSeconds(125), "2:05");
  EXPECT_EQ(MinutesAndSeconds(5400), "90:00");
  EXPECT_EQ(MinutesAndSeconds(-3), "0:00");
}

TEST(Times, TheNextQuarterHourIsStrictlyAfterNow) {
  EXPECT_EQ(TimeText(NextQuarterHour(ClockTime::At(21, 45, 30))), "22:00");
  EXPECT_EQ(TimeText(NextQuarterHour(ClockTime::At(22, 0))), "22:15");
  EXPECT_EQ(TimeText(NextQuarterHour(ClockTime::At(23, 50))), "00:00");
}

TEST(HandlerStepsTest, AFailingStepIsReportedAndTheNextOneRuns) {
  FakeErrors errors;
  int done = 0;
  HandlerSteps step(errors, "frmMain");
  EXPECT_TRUE(step([&] { ++done; }));
  EXPECT_FALSE(step([] { throw RuntimeError::Overflow(); }));
  EXPECT_FALSE(step([] { throw std::runtime_error("odd"); }));
  EXPECT_TRUE(step([&] { ++done; }));
  EXPECT_EQ(done, 2);
  EXPECT_EQ(errors.reports, (std::vector<std::string>{"6 frmMain 2", "51 frmMain 3"}));
}

}  // namespace
}  // namespace corvanel
