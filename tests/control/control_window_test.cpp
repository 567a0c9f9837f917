#include "control/control_window.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/control_window_fixture.h"

namespace corvanel {
namespace {

TEST_F(ControlWindowTest, FillingTheWindowCalculatesOnce) {
  view.calculations = 0;
  window.Display();
  EXPECT_EQ(view.calculations, 1);
  EXPECT_FALSE(view.favouriteOffered);
  EXPECT_EQ(Value(Box::MinPerRound), "20");
  EXPECT_EQ(view.labels[Label::lblFinishTime], "22:17");
  EXPECT_EQ(view.labels[Label::cmdStart], "Start Timer from Round 1");
}

TEST_F(ControlWindowTest, EntriesAreStoredCorrectedAndCalculated) {
  struct Row {
    Box box;
    const char* typed;
    const char* shown;
  };
  const Row rows[] = {
      {Box::nRounds, "9", "9"},
      {Box::MinPerRound, "7.50", "7.5"},
      {Box::MinPerRound, "", "0"},
      {Box::MinBetweenRounds, "0", "0.1"},
      {Box::MinBetweenRounds, "", "0.1"},
      {Box::MinBetweenRounds, "2", "2"},
      {Box::MinWarning0, "4", "4"},
      {Box::MinWarning1, ".5", "0.5"},
      {Box::Skip, "12", "12"},
      {Box::Arrow, "3,7", "3,7"},
      {Box::BreakRound, "4", "4"},
      {Box::BreakRound, "round 4", "0"},
      {Box::BreakLength, "12.5min", "12.5"},
      {Box::CurrentRound, "0", "1"},
      {Box::CurrentRound, "77", "9"},
      {Box::CurrentRound, "-3", "1"},
      {Box::StartTime, "9pm", "21:00"},
      {Box::StartTime, "19.45", "19:45"},
      {Box::Header, "Friday Pairs", "Friday Pairs"},
  };
  for (const Row& row : rows) {
    const int before = view.calculations;
    EXPECT_TRUE(Enter(row.box, row.typed)) << row.typed;
    EXPECT_EQ(Value(row.box), row.shown) << row.typed;
    EXPECT_GT(view.calculations, before) << row.typed;
  }
  EXPECT_TRUE(prompts.texts.empty());
  EXPECT_TRUE(view.favouriteOffered);
}

TEST_F(ControlWindowTest, WrongEntriesAreToldOnceAndTheOldValueStays) {
  struct Row {
    Box box;
    const char* typed;
    const char* message;
    bool mayLeave;
  };
  const Row rows[] = {
      {Box::nRounds, "0", "The number of rounds must be greater than 0", false},
      {Box::nRounds, "", "The number of rounds must be greater than 0", false},
      {Box::StartTime, "25:00", "Please enter a valid time, e.g. 19:30", false},
      {Box::FinishTime, "", "Please enter a valid time, e.g. 19:30", false},
      {Box::BreakLength, "1e9", "Please enter a number of minutes from 0 to 600", false},
      {Box::BreakLength, "-5", "Please enter a number of minutes from 0 to 600", false},
      {Box::BreakRound, "-5", "Please enter the number of a round, e.g. 6", false},
      {Box::MinPerRound, "99999", "Please enter a number of minutes from 0 to 600", false},
  };
  const Session before = session;
  for (const Row& row : rows) {
    prompts.texts.clear();
    EXPECT_EQ(Enter(row.box, row.typed), row.mayLeave) << row.typed;
    ASSERT_EQ(prompts.texts.size(), 1U) << row.typed;
    EXPECT_EQ(prompts.texts[0], row.message) << row.typed;
    EXPECT_EQ(session.settings, before.settings) << row.typed;
  }
  EXPECT_FALSE(Enter(Box::nRounds, "99999"));
  EXPECT_EQ(bench.errors.reports, std::vector<std::string>{"6 frmMain.LostFocus 1"});
  EXPECT_EQ(Value(Box::nRounds), "8");
}

TEST_F(ControlWindowTest, AnEntryEndedByAButtonTellsTheOtherExample) {
  EXPECT_FALSE(window.Commit(Box::FinishTime, "nonsense"));
  EXPECT_EQ(prompts.texts.back(), "Please enter a valid time, e.g. 21:30");
  EXPECT_EQ(view.focus, Box::FinishTime);
  view.texts[Box::StartTime] = "nonsense";
  EXPECT_FALSE(window.Commit(Box::StartTime, "nonsense"));
  EXPECT_EQ(prompts.texts.back(), "Please enter a valid time, e.g. 19:30");
  EXPECT_EQ(Value(Box::StartTime), "19:30");
}

TEST_F(ControlWindowTest, FewerRoundsThanTheCurrentOneBeginAtOneAgain) {
  Enter(Box::CurrentRound, "6");
  EXPECT_EQ(view.labels[Label::cmdStart], "Start Timer from round 6");
  Enter(Box::nRounds, "5");
  EXPECT_EQ(Value(Box::CurrentRound), "1");
  EXPECT_EQ(view.labels[Label::cmdStart], "Start Timer from round 1");
}

TEST_F(ControlWindowTest, EnterWalksTheChain) {
  std::string chain = "txtnRounds";
  Box box = Box::nRounds;
  do {
    box = window.EnterLeadsTo(box);
    chain += ' ' + std::string(RuleOf(box).name);
  } while (box != Box::nRounds);
  EXPECT_EQ(chain,
            "txtnRounds txtMinPerRound txtMinBetweenRounds txtMinWarning_1 txtMinWarning_0 txtSkip "
            "txtArrow txtBreakRound txtBreakLength txtCurrentRound txtStartTime txtHeader "
            "txtnRounds");
  window.optCalc_Click(1);
  EXPECT_EQ(window.EnterLeadsTo(Box::nRounds), Box::MinBetweenRounds);
  EXPECT_EQ(window.EnterLeadsTo(Box::MinBetweenRounds), Box::FinishTime);
  EXPECT_EQ(window.EnterLeadsTo(Box::FinishTime), Box::MinWarning1);
}

TEST_F(ControlWindowTest, TheRequiredFinishSetsTheMinutes) {
  Enter(Box::StartTime, "19:30");
  s.optBreak = false;
  s.RequiredFinish.reset();
  const std::string typed = Value(Box::MinPerRound);
  window.optCalc_Click(1);
  EXPECT_EQ(Value(Box::FinishTime), "22:30");
  EXPECT_EQ(view.labels[Label::lblFinish], "Required Finish Time");
  EXPECT_EQ(Value(Box::MinPerRound), "21.62");
  EXPECT_EQ(view.labels[Label::lblMinPerRound], "21.62");
  EXPECT_EQ(view.labels[Label::lblFinishTime], "22:30");
  Enter(Box::FinishTime, "9:30pm");
  EXPECT_EQ(s.RequiredFinish, ClockTime::At(21, 30));
  EXPECT_EQ(Value(Box::FinishTime), "21:30");
  window.optCalc_Click(0);
  EXPECT_EQ(view.labels[Label::lblFinish], "Estimated Finish Time");
  EXPECT_EQ(Value(Box::MinPerRound), typed);
}

TEST_F(ControlWindowTest, TheTitleBoxFollowsTheTitleWhileTitlesAreShown) {
  Enter(Box::Header, "Friday");
  EXPECT_TRUE(view.ticks[Tick::chkHeader]);
  EXPECT_TRUE(session.options.Show[kShowTitle]);
  Enter(Box::Header, "");
  EXPECT_FALSE(view.ticks[Tick::chkHeader]);
  EXPECT_FALSE(session.options.Show[kShowTitle]);
  Enter(Box::Header, "Friday");
  window.chkHeader_Click(false);
  window.cmdStart_Click();
  EXPECT_FALSE(session.options.ShowTitle);
  EXPECT_EQ(store.GetSetting("Timer", "ShowTitle"), "False");
  Enter(Box::Header, "Saturday");
  EXPECT_FALSE(session.options.Show[kShowTitle]);
}

TEST(EntryRulesTest, KeysAreFilteredBoxByBox) {
  EXPECT_FALSE(Takes(Box::nRounds, 'x'));
  EXPECT_FALSE(Takes(Box::nRounds, '.'));
  EXPECT_TRUE(Takes(Box::MinPerRound, '.'));
  EXPECT_FALSE(Takes(Box::Skip, ','));
  EXPECT_TRUE(Takes(Box::Arrow, ','));
  EXPECT_TRUE(Takes(Box::FinishTime, 'p'));
  EXPECT_FALSE(Takes(Box::FinishTime, ' '));
  EXPECT_FALSE(Takes(Box::Arrow, U'\u0663'));  // an Arabic 3
  EXPECT_TRUE(Takes(Box::Header, U'\u00e9'));
}

TEST(EntryRulesTest, PastedTextIsFilteredWhatStoodThereStays) {
  struct Row {
    Box box;
    const char* before;
    const char* after;
    const char* text;
    size_t cursor;
    bool refused;
  };
  const Row rows[] = {
      {Box::nRounds, "12", "1x2", "12", 1, true},
      {Box::nRounds, "12", "1e9", "12", 1, true},
      {Box::nRounds, "", " 12 ", "12", 2, false},
      {Box::nRounds, "", "1 2", "", 0, true},
      {Box::nRounds, "1234", "12345", "1234", 4, true},
      {Box::nRounds, "123456", "1234567", "1234567", 7, false},  // nonsense that stood there
      {Box::MinPerRound, "7", "7,", "7.", 2, false},
      {Box::MinPerRound, "", "7,5", "7.5", 3, false},
      {Box::BreakLength, "", "7,5", "7.5", 3, false},
      {Box::MinPerRound, "", "0.333333", "0.333333", 8, false},
      {Box::Skip, "", "3,5", "", 0, true},
      {Box::Arrow, "", "3, 5", "3,5", 3, false},
      {Box::FinishTime, "", "9:30 PM", "9:30PM", 6, false},
      {Box::nRounds, "12", "abc", "12", 0, true},
      {Box::nRounds, "12", "", "", 0, false},
      {Box::nRounds, "12", "1342", "1342", 3, false},
      {Box::Skip, "3,7", "3,71", "3,71", 4, false},  // a list that was taken over
      {Box::Skip, "3,7", "3,7,1", "3,7", 3, true},
      {Box::Arrow, "3", "3, 7é", "3", 1, true},
      {Box::Header, "é", "éé", "éé", 4, false},
  };
  for (const Row& row : rows) {
    const FilteredEdit edit = FilterEdit(row.box, row.before, row.after);
    EXPECT_EQ(edit.text, row.text) << row.after;
    EXPECT_EQ(edit.cursor, row.cursor) << row.after;
    EXPECT_EQ(edit.refused, row.refused) << row.after;
  }
}

// Thousands of random entries into every box, idle and while a session runs: nothing nonsensical
// is ever stored, and the clock goes on.
TEST_F(ControlWindowTest, NoEntryHarmsTheSession) {
  std::mt19937 random(7);
  const std::string alphabet = "0123456789.,:-+eapmx \xC3\xA9\t";
  for (int i = 0; i < 20000; ++i) {
    if (i == 10000) window.cmdStart_Click();
    std::string text;
    for (unsigned long n = random() % 7; n > 0; --n) text += alphabet[random() % alphabet.size()];
    const auto box = static_cast<Box>(random() % kBoxes);
    const std::string typed = FilterEdit(box, "", text).text;
    if (random() % 2 == 0) {
      Enter(box, typed);
    } else {
      window.Commit(box, typed);
    }
    if (random() % 50 == 0) window.optCalc_Click(static_cast<int>(random() % 2));
    if (i >= 10000) bench.Pass(1);
    ASSERT_GE(s.nRounds, 1);
    ASSERT_TRUE(window.Planned().round >= 1 && window.Planned().round <= s.nRounds);
    ASSERT_LE(bench.clock.UnderWay() ? bench.clock.State().round : 1, s.nRounds);
    ASSERT_TRUE(s.MinPerRound >= 0 && s.MinPerRound <= 1440) << typed;
    ASSERT_TRUE(s.MinBetweenRounds >= kShortestMove && s.MinBetweenRounds <= kLongestPhase);
    ASSERT_TRUE(s.TimeForBreak >= 0 && s.TimeForBreak <= kLongestPhase);
    ASSERT_GE(s.BreakAfterRound, 0);
  }
}

TEST_F(ControlWindowTest, ATitleThatWasNotWantedStaysAwayTheNextEvening) {
  Enter(Box::Header, "Friday");
  window.chkHeader_Click(false);
  window.cmdStart_Click();
  bench.RunToEnd();
  base.favourites.Reload();  // as the next start of the program does
  EXPECT_EQ(Value(Box::Header), "Friday");
  EXPECT_FALSE(view.ticks[Tick::chkHeader]);
  EXPECT_FALSE(session.options.Show[kShowTitle]);
}

TEST_F(ControlWindowTest, TheBoxesOfTheBreakCalculateAtOnce) {
  s.BreakAfterRound = 4;
  s.MoveAfterBreak = false;
  window.chkBreak_Click(true);
  EXPECT_EQ(view.labels[Label::lblFinishTime], "22:31");
  EXPECT_EQ(view.labels[Label::lblBreakTime], "20:53");
  EXPECT_TRUE(view.favouriteOffered);
  window.chkMoveAfterBreak_Click(true);
  EXPECT_EQ(view.labels[Label::lblFinishTime], "22:32");
  window.chkBreak_Click(false);
  EXPECT_EQ(view.labels[Label::lblFinishTime], "22:17");
  EXPECT_EQ(view.labels[Label::lblBreakTime], "");
}

TEST_F(ControlWindowTest, EveryTimeIsRewrittenInItsNewForm) {
  s.RequiredFinish = ClockTime::At(22, 30);
  window.Display();
  session.options.TimeAs24hour = false;
  window.RewriteTimes();
  EXPECT_EQ(Value(Box::StartTime), "7:30pm");
  EXPECT_EQ(Value(Box::FinishTime), "10:30pm");
  EXPECT_EQ(view.labels[Label::lblFinishTime], "10:17pm");
}

TEST_F(ControlWindowTest, TheBoxOfTheSecondDisplayIsStoredAndShown) {
  window.chkMonitor_Click(true);
  EXPECT_TRUE(s.ExtraMonitor);
  EXPECT_TRUE(view.favouriteOffered);
  window.Display();
  EXPECT_TRUE(view.ticks[Tick::chkMonitor]);
}

}  // namespace
}  // namespace corvanel
