#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/evening_fixture.h"

namespace corvanel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;

TEST_F(EveningTest, ARoundHeldAtItsEndIsReleasedByTheTables) {
  EXPECT_EQ(bench.session.settings.MinPerRound, 21);
  bench.PassWithPolls(7 * 60);
  EXPECT_THAT(Lines(), IsEmpty());  // no result yet: the units say nothing of this round
  AllSend(1, 1);
  bench.PassWithPolls(60);
  EXPECT_THAT(Lines(), ElementsAre("8 tables playing"));
  AllSend(1, 1);
  bench.PassWithPolls(6 * 60 + 30);
  EXPECT_THAT(Lines(), ElementsAre("8 tables playing"));
  for (const int table : {1, 2, 3, 4, 6}) Send(table, 1, 1);
  bench.PassWithPolls(6 * 60);
  EXPECT_THAT(Lines(), ElementsAre("Tables 5 7 8 still playing"));
  EXPECT_EQ(bench.face.sections[0].cells[4],
            (TableCell{"5", TableState::Playing, "2/3", "5: NS   5, EW  13"}));
  EXPECT_EQ(bench.face.info, "Bridgemate: 5 of 8 tables finished");
  EXPECT_FALSE(State().paused);
  bench.PassWithPolls(25);
  EXPECT_TRUE(State().paused);  // three are late, at most 12 seconds before the end
  EXPECT_THAT(bench.clocks.played, Contains("bell"));
  EXPECT_EQ(bench.face.info, "Bridgemate: waiting for 3 tables");
  EXPECT_THAT(bench.log, Contains(EndsWith(" Table 5: NS   5, EW  13")));
  EXPECT_THAT(bench.log, Not(Contains(EndsWith(" Table 1: NS   1, EW   9"))));
  bench.PassWithPolls(120);
  EXPECT_TRUE(State().paused);
  Send(7, 1, 1);
  bench.PassWithPolls(5);
  EXPECT_FALSE(State().paused);
  EXPECT_EQ(State().phase, Phase::Round);
  bench.PassWithPolls(15);
  EXPECT_EQ(State().phase, Phase::Move);
  bench.PassWithPolls(5);
  EXPECT_THAT(Lines(), ElementsAre("Tables 5 8 still playing"));
}

TEST_F(EveningTest, TheRoundEndsWithTheLastTable) {
  AllSend(1, 3);
  evening.received.pop_back();
  bench.Write(evening);
  bench.PassWithPolls(60);
  EXPECT_EQ(State().phase, Phase::Round);
  Send(8, 1, 0);
  evening.received.push_back(ResultOf(8, 1, 99));
  bench.Write(evening);
  bench.PassWithPolls(5);
  EXPECT_EQ(State().phase, Phase::Move);
  EXPECT_THAT(bench.log, Contains("19:31:05 End of round 1"));
  EXPECT_THAT(bench.clocks.played, ElementsAre("end"));
  bench.PassWithPolls(60);
  EXPECT_EQ(bench.clocks.clock.State().round, 2);
  EXPECT_EQ(State().phase, Phase::Round);
}

TEST_F(EveningTest, ASecondLookMustAgree) {
  const auto before = std::make_shared<ScoringPicture>(evening);
  AllSend(1, 3);
  const auto whole = std::make_shared<ScoringPicture>(evening);
  bench.monitor.TimerBWS_Timer();
  ASSERT_EQ(State().phase, Phase::Move);
  bench.clocks.clock.Do(SessionCommand::Restart);
  bench.Write(*before);
  bench.PassWithPolls(5);
  bench.database.next = {whole, before};
  bench.monitor.TimerBWS_Timer();
  EXPECT_EQ(State().phase, Phase::Round);
  bench.database.next = {whole, whole};
  bench.monitor.TimerBWS_Timer();
  EXPECT_EQ(State().phase, Phase::Move);
}

TEST_F(EveningTest, ARestartedRoundWaitsForATableThatPlays) {
  AllSend(1, 3);
  bench.PassWithPolls(5);
  ASSERT_EQ(State().phase, Phase::Move);
  bench.clocks.clock.Do(SessionCommand::Restart);
  bench.PassWithPolls(60);
  EXPECT_EQ(State().phase, Phase::Round);
  evening.received.pop_back();
  bench.Write(evening);
  bench.PassWithPolls(5);
  Send(8, 1, 0);
  evening.received.push_back(ResultOf(8, 1, 99));
  bench.Write(evening);
  bench.PassWithPolls(5);
  EXPECT_EQ(State().phase, Phase::Move);
}

TEST_F(EveningTest, TheDirectorsOwnPauseAndResumeHold) {
  AllSend(1, 2);
  bench.PassWithPolls(20 * 60 + 50);
  ASSERT_TRUE(State().paused);
  bench.clocks.clock.Do(SessionCommand::Resume);  // P pressed while held
  bench.PassWithPolls(60);
  EXPECT_EQ(State().phase, Phase::Move);
  EXPECT_FALSE(State().autoPaused);
  bench.PassWithPolls(60);
  bench.clocks.clock.Do(SessionCommand::Pause);
  AllSend(1, 1);
  AllSend(2, 3);
  bench.PassWithPolls(300);
  EXPECT_TRUE(State().paused);  // all have finished, but the pause is not the monitor's
  EXPECT_EQ(bench.clocks.clock.State().round, 2);
}

TEST_F(EveningTest, ADeadUnitNeitherPausesNorHoldsNorEnds) {
  bench.session.options.BMPauseTables = 0;
  for (int table = 1; table <= 7; ++table) Send(table, 1, 3);
  bench.PassWithPolls(20 * 60 + 50);
  ASSERT_TRUE(State().paused);  // in its first round nobody can know that it is dead
  bench.clocks.clock.Do(SessionCommand::NextRound);
  for (int table = 1; table <= 7; ++table) Send(table, 2, 3);
  bench.PassWithPolls(60);
  EXPECT_EQ(State().phase, Phase::Round);
  EXPECT_THAT(Lines(), IsEmpty());
  EXPECT_EQ(bench.face.info, "Bridgemate: nothing from table 8");
  EXPECT_EQ(bench.face.sections[0].cells[7],
            (TableCell{"8", TableState::Silent, "?", "8: NS   8, EW  15"}));
  bench.PassWithPolls(20 * 60);
  EXPECT_EQ(State().phase, Phase::Move);
}

TEST_F(EveningTest, ABlindLinkLetsTheClockGo) {
  AllSend(1, 2);
  bench.PassWithPolls(20 * 60 + 50);
  ASSERT_TRUE(State().paused);
  bench.database.unreadable = true;
  bench.PassWithPolls(55);
  EXPECT_TRUE(State().paused);
  EXPECT_EQ(bench.face.info, "Bridgemate: waiting for 8 tables");
  bench.PassWithPolls(10);
  EXPECT_FALSE(State().paused);
  bench.PassWithPolls(90);
  EXPECT_EQ(bench.face.info, "Bridgemate: no data for 2 min");
  EXPECT_THAT(bench.face.sections, IsEmpty());
  bench.database.unreadable = false;
  bench.PassWithPolls(5);
  EXPECT_EQ(bench.face.info, "Bridgemate: 0 of 8 tables finished");
}

TEST_F(EveningTest, ClosingTheFileOrSwitchingTheRuleOffLetsGo) {
  AllSend(1, 2);
  bench.PassWithPolls(20 * 60 + 50);
  ASSERT_TRUE(State().paused);
  bench.session.options.BMAutoPause = false;
  bench.PassWithPolls(5);
  EXPECT_FALSE(State().paused);
  bench.clocks.clock.Do(SessionCommand::Restart);
  bench.session.options.BMAutoPause = true;
  bench.session.options.BMPauseMinutes = 21;  // at any time
  bench.PassWithPolls(5);
  ASSERT_TRUE(State().paused);
  bench.link.mnuCloseFile_Click();
  bench.monitor.FileChanged();
  EXPECT_FALSE(State().paused);
  EXPECT_EQ(bench.face, ProgressFace());
  EXPECT_EQ(bench.shownFile, "");
}

TEST_F(EveningTest, NothingIsEndedInTheBreakOrWithoutTheOption) {
  bench.session.settings.optBreak = true;
  bench.session.settings.BreakAfterRound = 1;
  bench.session.options.BMAutoMove = false;
  AllSend(1, 3);
  bench.PassWithPolls(10 * 60);
  EXPECT_EQ(State().phase, Phase::Round);
  bench.session.options.BMAutoMove = true;
  bench.PassWithPolls(5);
  EXPECT_EQ(State().phase, Phase::Break);
  bench.PassWithPolls(60);
  EXPECT_EQ(State().phase, Phase::Break);
}

TEST_F(EveningTest, WarningsOfRoundsAreOmittedWhileAFileIsOpen) {
  bench.session.settings.MinWarning1 = 5;
  bench.session.options.BMOmitwarning2 = false;
  bench.clocks.clock.Do(SessionCommand::Restart);
  bench.clocks.Pass(20 * 60);
  EXPECT_THAT(bench.clocks.played, ElementsAre("warning1"));
  bench.link.mnuCloseFile_Click();
  bench.clocks.clock.Do(SessionCommand::Restart);
  bench.clocks.Pass(20 * 60);
  EXPECT_THAT(bench.clocks.played, ElementsAre("warning1", "warning1", "warning0"));
}

TEST_F(EveningTest, AnOldFileOpenedInASessionEndsNothing) {
  AllSend(1, 3);
  const ScoringPicture lastWeek = evening;
  bench.link.mnuCloseFile_Click();
  bench.clocks.clock.Do(SessionCommand::Restart);
  bench.clocks.Pass(300);
  bench.Open(lastWeek);
  bench.PassWithPolls(60);
  EXPECT_EQ(State().phase, Phase::Round);
}

TEST_F(EveningTest, OnASlowShareTheNextPollIsTheSecondLook) {
  AllSend(1, 2);
  bench.PassWithPolls(60);
  AllSend(1, 1);
  const auto finished = std::make_shared<ScoringPicture>(evening);
  bench.database.unreadable = true;
  bench.database.next = {finished};
  bench.monitor.TimerBWS_Timer();
  EXPECT_EQ(State().phase, Phase::Round);
  bench.database.next = {finished};
  bench.monitor.TimerBWS_Timer();
  EXPECT_EQ(State().phase, Phase::Move);
}

TEST_F(EveningTest, AnAutomaticEndThatWasUndoneIsNotMadeAgain) {
  AllSend(1, 2);
  bench.PassWithPolls(60);
  AllSend(1, 1);
  bench.PassWithPolls(5);
  ASSERT_EQ(State().phase, Phase::Move);
  bench.clocks.clock.Do(SessionCommand::Undo);
  bench.PassWithPolls(120);
  EXPECT_EQ(State().phase, Phase::Round);
  EXPECT_EQ(bench.clocks.clock.State().round, 1);
}

TEST_F(EveningTest, NobodyIsWaitedForBeforeTheFirstResultOfTheRound) {
  bench.PassWithPolls(21 * 60 - 5);
  EXPECT_FALSE(State().paused);
  bench.PassWithPolls(10);
  EXPECT_EQ(State().phase, Phase::Move);
}

TEST_F(EveningTest, ThePauseSoundHasASwitch) {
  bench.session.options.BMPausePlay = false;
  AllSend(1, 2);
  bench.PassWithPolls(20 * 60 + 50);
  ASSERT_TRUE(State().paused);
  EXPECT_EQ(std::count(bench.clocks.played.begin(), bench.clocks.played.end(), "bell"), 0);
}

TEST_F(EveningTest, ATableThatHasFinishedShowsNoCount) {
  Send(1, 1, 3);
  Send(2, 1, 1);
  bench.PassWithPolls(10);
  EXPECT_EQ(bench.face.sections[0].cells[0],
            (TableCell{"1", TableState::Finished, "", "1: NS   1, EW   9"}));
  EXPECT_EQ(bench.face.sections[0].cells[1].text, "1/3");
}

TEST_F(EveningTest, AFileThatIsGoneIsSaidAtOnce) {
  bench.link.Reopen({"/scoring/gone.bws", {1}, "", {}});
  bench.monitor.FileChanged();
  EXPECT_EQ(bench.face.info, "Bridgemate: no data");
}

TEST_F(EveningTest, InTheBreakEveryTableThatStillPlaysIsSlow) {
  SessionSettings& s = bench.session.settings;
  s.optBreak = true;
  s.BreakAfterRound = 1;
  s.TimeForBreak = 15;
  bench.session.options.BMAutoPause = false;
  AllSend(1, 1);
  bench.PassWithPolls(21 * 60 + 10);
  ASSERT_EQ(State().phase, Phase::Break);
  EXPECT_THAT(Lines(), ElementsAre("8 slow tables", "8 tables playing"));
}

TEST_F(EveningTest, NothingRingsInTheDirectorsOwnPause) {
  bench.session.options.BMPauseMinutes = 21;  // at any time
  bench.clocks.clock.Do(SessionCommand::Pause);
  AllSend(1, 2);
  bench.PassWithPolls(20);
  EXPECT_THAT(bench.clocks.played, IsEmpty());
  EXPECT_FALSE(State().autoPaused);
}

TEST_F(EveningTest, ARoundThatAllHaveFinishedAlreadyIsPlayedInFull) {
  AllSend(1, 2);
  AllSend(2, 3);  // of last week
  bench.PassWithPolls(5);
  bench.clocks.clock.Do(SessionCommand::NextRound);
  bench.PassWithPolls(60);
  EXPECT_EQ(State().phase, Phase::Round);
  EXPECT_EQ(State().round, 2);
}

TEST_F(EveningTest, AfterAGapWasTakenOutAFinishedRoundIsNotEndedAtOnce) {
  AllSend(1, 2);
  bench.PassWithPolls(60);
  bench.clocks.time.PassTo(bench.clocks.time.Elapsed() + 600);
  bench.clocks.clock.Tick();
  AllSend(1, 1);
  ASSERT_TRUE(bench.link.ReadNow());
  bench.clocks.clock.Do(SessionCommand::TakeOutGap);
  bench.PassWithPolls(60);
  EXPECT_EQ(State().phase, Phase::Round);
}

TEST_F(EveningTest, ATableThatSitsOutIsNotCounted) {
  evening.sections[0].MissingPair = 16;
  Send(1, 1, 3);
  bench.PassWithPolls(10);
  EXPECT_EQ(bench.face.info, "Bridgemate: 1 of 7 tables finished");
}

TEST_F(EveningTest, AfterTheEveningNothingIsRead) {
  bench.session.settings.nRounds = 1;
  bench.session.options.BMAutoPause = false;
  AllSend(1, 2);
  bench.PassWithPolls(22 * 60);
  ASSERT_EQ(State().phase, Phase::Ended);
  int reads = bench.database.reads;
  bench.PassWithPolls(60);
  EXPECT_GT(bench.database.reads, reads);  // they still play
  AllSend(1, 1);
  bench.PassWithPolls(10);
  EXPECT_EQ(bench.face.info, "Bridgemate: 8 of 8 tables finished");
  reads = bench.database.reads;
  bench.PassWithPolls(60);
  EXPECT_EQ(bench.database.reads, reads);
}

TEST_F(EveningTest, AnotherFileIsNotBlindYet) {
  bench.database.unreadable = true;
  bench.PassWithPolls(130);
  ASSERT_EQ(bench.face.info, "Bridgemate: no data for 2 min");
  bench.link.Reopen({"/scoring/other.bws", {1}, "", {}});
  bench.monitor.FileChanged();
  EXPECT_EQ(bench.face.info, "Bridgemate: no data");
}

}  // namespace
}  // namespace corvanel
