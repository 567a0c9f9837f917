#include "tests/support/control_window_fixture.h"

namespace corvanel {
namespace {

TEST_F(ControlWindowTest, StartSavesStartsAndShowsTheDisplays) {
  Enter(Box::CurrentRound, "3");
  bench.time.PassTo(65);
  window.cmdStart_Click();
  EXPECT_EQ(store.GetSetting("Timer", "nRounds"), "8");
  EXPECT_EQ(Value(Box::StartTime), "19:31:05");
  EXPECT_EQ(bench.face.caption, "Time remaining for Round 3 of 8");
  EXPECT_TRUE(view.displaysShown);
  EXPECT_TRUE(view.resumeOffered);
  EXPECT_EQ(bench.timeOfDay, "19:31");
}

TEST_F(ControlWindowTest, TheFirstThreeSessionsBeginWithAHint) {
  for (int session = 1; session <= 4; ++session) {
    prompts.answers = {Answer::Yes};  // to a second start
    window.cmdStart_Click();
    EXPECT_EQ(view.hints, std::min(session, 3));
  }
  EXPECT_EQ(store.GetSetting("Timer", "HintsGiven"), "3");
}

TEST_F(ControlWindowTest, StartRefusesARoundWithoutMinutes) {
  Enter(Box::MinPerRound, "0");
  window.cmdStart_Click();
  EXPECT_EQ(prompts.texts.back(), "The minutes per round must be greater than 0");
  Enter(Box::MinPerRound, "20");
  window.optCalc_Click(1);
  Enter(Box::FinishTime, "23:00");
  bench.time.PassTo(3.49 * 3600);  // a minute before the required finish
  window.cmdStart_Click();
  EXPECT_EQ(prompts.texts.size(), 2U);
  EXPECT_EQ(bench.face.phase, Phase::Idle);
  view.commit = [] { return false; };
  window.cmdStart_Click();
  EXPECT_EQ(prompts.texts.size(), 2U);
  EXPECT_FALSE(view.displaysShown);
}

TEST_F(ControlWindowTest, AStoreThatCannotBeWrittenDoesNotStopTheSession) {
  store.full = true;
  window.cmdStart_Click();
  EXPECT_EQ(bench.errors.reports, std::vector<std::string>{"61 frmMain.cmdStart_Click 1"});
  EXPECT_EQ(bench.face.phase, Phase::Round);
}

TEST_F(ControlWindowTest, WhileASessionRunsOnlyChangedBoxesCount) {
  s.optBreak = false;
  window.cmdStart_Click();
  bench.Pass(5 * 21 * 60 + 600);  // ten minutes into round 6
  EXPECT_EQ(Value(Box::CurrentRound), "6");
  EXPECT_EQ(Value(Box::StartTime), "21:14");
  EXPECT_EQ(view.labels[Label::lblFinishTime], "22:17");
  const int before = view.calculations;
  for (const Box box : {Box::nRounds, Box::StartTime, Box::MinPerRound, Box::CurrentRound}) {
    EXPECT_TRUE(window.Leave(box, Value(box)));
  }
  EXPECT_EQ(view.calculations, before);
  Enter(Box::MinPerRound, "10");  // rounds 7 and 8 get shorter, the one in play does not
  EXPECT_EQ(view.labels[Label::lblFinishTime], "21:57");
  EXPECT_EQ(bench.face.finish, "Finish at 21:57");
  EXPECT_EQ(bench.face.countdown, "10:00");
  EXPECT_FALSE(Enter(Box::MinPerRound, "0"));
  EXPECT_EQ(s.MinPerRound, 10);
}

// A slip in the rounds box must not send a running evening anywhere.
TEST_F(ControlWindowTest, TheRoundInPlayIsTheClocks) {
  s.optBreak = false;
  window.cmdStart_Click();
  bench.Pass(4 * 21 * 60 + 60);
  ASSERT_EQ(bench.face.caption, "Time remaining for Round 5 of 8");
  Enter(Box::nRounds, "4");
  EXPECT_EQ(prompts.texts.back(),
            "Round 5 is in play, so the number of rounds was set to 5, not 4");
  EXPECT_EQ(Value(Box::nRounds), "5");
  EXPECT_EQ(bench.face.caption, "Final Round of 5");  // right at once
  EXPECT_EQ(bench.face.finish, "Finish at 21:14");
  Enter(Box::nRounds, "8");
  EXPECT_EQ(bench.face.caption, "Time remaining for Round 5 of 8");
  EXPECT_EQ(Value(Box::CurrentRound), "5");
  // What is planned for the next start does not touch it.
  const std::string finish = bench.face.finish;
  Enter(Box::CurrentRound, "2");
  window.cmdResume_Click();
  bench.Pass(60);
  EXPECT_EQ(Value(Box::CurrentRound), "2");
  EXPECT_EQ(bench.face.caption, "Time remaining for Round 5 of 8");
  EXPECT_EQ(bench.face.finish, finish);
  EXPECT_EQ(view.labels[Label::lblFinishTime], "22:17");
  bench.Pass(18 * 60 + 30);
  EXPECT_EQ(bench.face.message, "MOVE FOR ROUND 6");
  Enter(Box::Skip, "5");
  EXPECT_EQ(bench.face.message, "SKIP - MOVE FOR ROUND 6");
  Enter(Box::nRounds, "6");
  EXPECT_EQ(bench.face.message, "SKIP - MOVE FOR THE FINAL ROUND");
  bench.Pass(60);
  EXPECT_EQ(Value(Box::CurrentRound), "6");  // the proposal follows the clock
  Enter(Box::CurrentRound, "1");
  window.BackFromDisplays();
  EXPECT_EQ(Value(Box::CurrentRound), "6");
  EXPECT_EQ(view.labels[Label::cmdStart], "Start Timer from round 6");
}

TEST_F(ControlWindowTest, AnEndedSessionLeavesThePlanToTheDirector) {
  window.cmdStart_Click();
  bench.RunToEnd();
  Enter(Box::nRounds, "3");
  EXPECT_EQ(Value(Box::CurrentRound), "1");
  EXPECT_EQ(bench.face.caption, "Final Round of 8");
  bench.clock.Do(SessionCommand::Restart);  // of the last round that there is now
  EXPECT_EQ(bench.clock.State().round, 3);
}

TEST_F(ControlWindowTest, ResumeShowsTheDisplaysAndLeavesAPauseAlone) {
  window.cmdStart_Click();
  bench.clock.Do(SessionCommand::Pause);
  view.displaysShown = false;
  window.cmdResume_Click();
  EXPECT_TRUE(view.displaysShown);
  EXPECT_TRUE(bench.face.paused);
}

TEST_F(ControlWindowTest, ASessionUnderWayIsNotStartedOverWithoutAsking) {
  window.cmdStart_Click();
  bench.Pass(21 * 60 + 300);
  Enter(Box::CurrentRound, "1");
  prompts.answers = {Answer::No, Answer::Yes};
  window.cmdStart_Click();
  EXPECT_EQ(prompts.texts.back(),
            "Round 2 of 8 is in play.\r\nDo you want to start round 1 from its beginning?");
  EXPECT_EQ(bench.face.countdown, "15:00");
  window.cmdStart_Click();
  EXPECT_EQ(bench.face.countdown, "20:00");
  EXPECT_EQ(bench.clock.State().round, 1);
  bench.RunToEnd();
  const size_t asked = prompts.texts.size();
  window.cmdStart_Click();
  EXPECT_EQ(prompts.texts.size(), asked);
}

TEST_F(ControlWindowTest, WhatTheEveningWillNotHaveIsTold) {
  const auto lines = [&] {
    std::string texts;
    for (const Notice& notice : bench.notices) texts += notice.text + "|";
    return texts;
  };
  s.optBreak = true;
  Enter(Box::BreakRound, "8");
  EXPECT_EQ(lines(), "No break will come: it is set after round 8, and the session has 8 rounds|");
  window.chkBreak_Click(false);
  EXPECT_EQ(lines(), "");
  window.optCalc_Click(1);
  Enter(Box::FinishTime, "22:30");
  EXPECT_EQ(view.labels[Label::lblFinish], "Required Finish Time");
  EXPECT_EQ(lines(), "");
  Enter(Box::FinishTime, "19:32");  // seven moves take longer
  EXPECT_EQ(lines(), "The finish at 19:32 will not be met|");
  EXPECT_EQ(view.labels[Label::lblFinish], "Estimated Finish Time");
  Enter(Box::FinishTime, "22:30");
  EXPECT_EQ(lines(), "");
  window.cmdStart_Click();
  bench.Pass(60);
  bench.clock.Do(SessionCommand::Pause);
  bench.Pass(300);
  EXPECT_EQ(lines(), "The finish at 22:30 will not be met|");
  EXPECT_EQ(view.labels[Label::lblFinish], "Estimated Finish Time");
  bench.clock.Do(SessionCommand::Resume);
  window.DoCalc();
  EXPECT_EQ(lines(), "");
  Enter(Box::FinishTime, "19:40");
  EXPECT_EQ(lines(), "The finish at 19:40 will not be met|");
}

TEST_F(ControlWindowTest, InTwelveHourFormEitherHalfOfTheDayIsMeant) {
  session.options.TimeAs24hour = false;
  window.optCalc_Click(1);
  Enter(Box::FinishTime, "10:30");
  EXPECT_EQ(view.labels[Label::lblFinishTime], "10:30pm");
  EXPECT_EQ(view.labels[Label::lblFinish], "Required Finish Time");
  EXPECT_TRUE(bench.notices.empty());
  EXPECT_EQ(Value(Box::FinishTime), "10:30pm");
}

TEST_F(ControlWindowTest, TheRoundThatTheRoomMovesForIsPlayed) {
  s.nRounds = 3;
  s.MinPerRound = 20;
  s.MinBetweenRounds = 2;
  s.optBreak = false;
  window.cmdStart_Click();
  bench.Pass(20.5 * 60);
  ASSERT_EQ(bench.face.phase, Phase::Move);
  Enter(Box::nRounds, "1");
  EXPECT_EQ(prompts.texts.back(),
            "Round 2 comes next, so the number of rounds was set to 2, not 1");
  bench.Pass(10 * 60);
  EXPECT_EQ(bench.face.phase, Phase::Round);
  EXPECT_EQ(bench.face.round, 2);
}

TEST_F(ControlWindowTest, TheStartButtonNamesTheRoundThatWillBeStarted) {
  Enter(Box::CurrentRound, "40000");  // cannot be stored
  EXPECT_EQ(Value(Box::CurrentRound), "1");
  EXPECT_EQ(view.labels[Label::cmdStart], "Start Timer from round 1");
}

TEST_F(ControlWindowTest, AnEveningWithoutATitleLeavesTheTitleOn) {
  Enter(Box::Header, "");
  window.cmdStart_Click();
  EXPECT_TRUE(session.options.ShowTitle);
  bench.RunToEnd();
  Enter(Box::Header, "Easter Pairs");
  EXPECT_TRUE(view.ticks[Tick::chkHeader]);
  window.chkHeader_Click(false);
  window.cmdStart_Click();
  EXPECT_FALSE(session.options.ShowTitle);
}

TEST_F(ControlWindowTest, StopAsksOnlyTheShutdownQuestion) {
  window.cmdStop_Click();
  EXPECT_EQ(view.done, "end ");
  session.options.AutoShutdown = true;
  window.cmdStart_Click();
  bench.RunToEnd();
  prompts.answers = {Answer::Cancel, Answer::Yes};
  view.done.clear();
  window.cmdStop_Click();
  EXPECT_EQ(view.done, "geometry ");
  window.cmdStop_Click();
  EXPECT_EQ(view.done, "geometry geometry shutdown end ");
  EXPECT_EQ(prompts.texts.back(),
            "Do you wish to shut down the computer?\nClick Yes to shut down\n"
            "Click No to do other work\nClick Cancel to continue with Corvanel");
}

TEST_F(ControlWindowTest, TheBarShowsWhatWasPlayedAsItWas) {
  const auto begins = [&] {
    std::string times;
    for (const TimetableLine& line : view.evening.lines) {
      if (line.phase == Phase::Round) times += TimeText(line.Begins(view.evening.start)) + ' ';
    }
    return times;
  };
  s.nRounds = 4;
  s.MinPerRound = 20;
  s.MinBetweenRounds = 1;
  EXPECT_EQ(view.evening.standsAt, -1);
  window.cmdStart_Click();
  bench.Pass(600);
  EXPECT_EQ(view.evening.standsAt, 10);
  EXPECT_EQ(begins(), "19:30 19:51 20:12 20:33 ");
  bench.clock.Do(SessionCommand::Pause);
  bench.Pass(300);
  EXPECT_EQ(begins(), "19:30 19:56 20:17 20:38 ");
  bench.clock.Do(SessionCommand::Resume);
  bench.clock.Do(SessionCommand::NextRound);  // at 19:45
  bench.Pass(60);
  EXPECT_EQ(begins(), "19:30 19:45 20:06 20:27 ");
  bench.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(begins(), "19:30 19:56 20:17 20:38 ");
}

TEST_F(ControlWindowTest, TheLiveStripSaysWhatTheClockDoes) {
  s.nRounds = 3;
  s.MinPerRound = 20;
  s.MinBetweenRounds = 1;
  s.MinWarning = 3;
  s.MinWarning1 = 7;
  s.optBreak = true;
  s.BreakAfterRound = 1;
  s.TimeForBreak = 10;
  s.MoveAfterBreak = true;
  EXPECT_FALSE(view.live);
  window.cmdStart_Click();
  const std::pair<double, const char*> rows[] = {
      {0, "Round 1 of 3"},
      {14 * 60, "Round 1 of 3 · early warning"},
      {18 * 60, "Round 1 of 3 · last warning"},
      {21 * 60, "Break until 20:00"},
      {30.5 * 60, "Move for round 2"},
      {51.5 * 60, "Move for the final round"},
      {53 * 60, "Round 3 of 3"},
  };
  for (const auto& [at, caption] : rows) {
    bench.Pass(at - bench.time.Elapsed());
    ASSERT_TRUE(view.live) << caption;
    EXPECT_EQ(view.live->caption, caption);
    EXPECT_EQ(view.live->countdown, bench.face.countdown);
  }
  EXPECT_FALSE(view.live->can.nextRound);
  window.cmdLive_Click(SessionCommand::Pause);
  EXPECT_EQ(view.live->caption, "Paused · Round 3 of 3");
  EXPECT_TRUE(view.live->can.resume);
  EXPECT_FALSE(view.live->can.minutes);
  ProgressFace tables;
  tables.waiting = "WAITING FOR TABLES B5 B7";
  window.ShowTables(tables);
  bench.clock.Refresh();
  EXPECT_EQ(view.live->caption, "Waiting for tables B5 B7 · Round 3 of 3");
  window.ShowTables({});
  window.cmdLive_Click(SessionCommand::Undo);
  EXPECT_EQ(view.live->caption, "Round 3 of 3");
  bench.RunToEnd();
  EXPECT_FALSE(view.live);
  EXPECT_EQ(view.labels[Label::lblFinish], "End of play");
  window.BackFromDisplays();
  EXPECT_EQ(window.Planned().round, 1);  // of the next evening
}

TEST_F(ControlWindowTest, StartRefusesARoundOfMoreThanTenHours) {
  Enter(Box::nRounds, "1");
  window.optCalc_Click(1);
  Enter(Box::FinishTime, "7:30");  // the next morning
  window.cmdStart_Click();
  ASSERT_FALSE(prompts.texts.empty());
  EXPECT_EQ(prompts.texts.back(), "The minutes per round must be 600 or less");
  EXPECT_EQ(bench.face.phase, Phase::Idle);
}

TEST_F(ControlWindowTest, StartTellsTheProgramThatASessionBegins) {
  window.cmdStart_Click();
  EXPECT_EQ(view.done, "session ");
}

TEST_F(ControlWindowTest, ResumeSavesWhatWasChangedMeanwhile) {
  window.cmdStart_Click();
  Enter(Box::Header, "Friday");
  window.cmdResume_Click();
  EXPECT_EQ(store.GetSetting("Timer", "Header"), "Friday");
}

TEST_F(ControlWindowTest, ASessionOfAnEarlierRunIsShownAndItsDisplayRemembered) {
  window.SessionContinues();
  EXPECT_TRUE(view.resumeOffered);
  EXPECT_TRUE(view.displaysShown);
  window.cmdStop_Click();
  EXPECT_EQ(view.done, "geometry end ");
}

TEST_F(ControlWindowTest, WhatIsPlannedAfterTheEndStands) {
  s.nRounds = 1;
  window.cmdStart_Click();
  bench.Pass(19 * 60 + 30);
  bench.clock.Do(SessionCommand::SubtractMinute);  // ends it, and can be undone for a while
  ASSERT_EQ(bench.face.phase, Phase::Ended);
  Enter(Box::StartTime, "21:00");
  bench.Pass(5);
  EXPECT_EQ(view.labels[Label::lblFinishTime], "21:20");
  EXPECT_EQ(view.evening.lines.size(), 1U);
}

TEST_F(ControlWindowTest, ResumeWaitsForAnEntryThatWasRefused) {
  window.cmdStart_Click();
  view.displaysShown = false;
  view.commit = [] { return false; };
  window.cmdResume_Click();
  EXPECT_FALSE(view.displaysShown);
}

}  // namespace
}  // namespace corvanel
