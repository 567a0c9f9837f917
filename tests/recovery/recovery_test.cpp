#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "recovery/continue_session.h"
#include "tests/support/program_run.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kMoments[] = {0, 3.3, 299.5, 425, 595, 640, 700, 1300, 1500, 1900, 2600};

/// The program is killed at each of these moments and started again later, in a run of the computer
/// in which the counter started elsewhere.
TEST(ContinueSessionTest, GoesOnAsIfTheClockHadRunOn) {
  for (const bool restarted : {false, true}) {
    for (const double killed : kMoments) {
      for (const double later : {0.2, 20.0, 100.0, 800.0}) {
        const std::string where = std::to_string(killed) + " and " + std::to_string(later);
        FakeKeeper keeper;
        FakeKeeper other;
        ProgramRun first(keeper, ClockTime::At(23, 30), "one");
        ProgramRun awake(other, ClockTime::At(23, 30), "one");
        for (ProgramRun* run : {&first, &awake}) {
          run->Begin();
          run->Pass(killed);
        }
        awake.Pass(later);
        awake.bench.clocks.clock.Tick();
        const double now = 23.5 * 3600 + killed + later;
        ProgramRun second(keeper,
                          restarted ? ClockTime::At(0, 0).PlusSeconds(now) : ClockTime::At(23, 30),
                          restarted ? "two" : "one");
        if (!restarted) second.bench.clocks.time.PassTo(killed + later);
        if (restarted && now >= kSecondsPerDay) second.bench.clocks.time.SetClock(kSecondsPerDay);
        second.bench.base.prompts.choice = 0;
        ASSERT_TRUE(second.Resume()) << where;
        EXPECT_EQ(second.Face().countdown, awake.Face().countdown) << where;
        EXPECT_EQ(second.Face().phase, awake.Face().phase) << where;
        EXPECT_EQ(second.Face().caption, awake.Face().caption) << where;
        EXPECT_EQ(second.Face().message, awake.Face().message) << where;
        EXPECT_EQ(second.Face().countdownStyle, awake.Face().countdownStyle) << where;
        EXPECT_EQ(second.State().round, awake.State().round) << where;
        EXPECT_NEAR(second.Left(), awake.Left(), 1e-3) << where;
      }
    }
  }
}

TEST(ContinueSessionTest, GoesOnFromWhereItStopped) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  first.Pass(100.5);
  first.Do(SessionCommand::NextRound);
  first.Pass(200);  // nothing changes in it; the last second that was shown is what counts
  ProgramRun second(keeper, ClockTime::At(20, 12), "two");
  second.bench.base.prompts.choice = 1;
  ASSERT_TRUE(second.Resume());
  EXPECT_NEAR(second.Left(), 400, 1);
  EXPECT_EQ(second.State().round, 2);
  // The evening is still known from its beginning.
  const auto& begun = second.evening.Begun();
  ASSERT_EQ(begun.size(), 2U);
  EXPECT_EQ(begun[0].round, 1);
  EXPECT_NEAR(begun[1].at - begun[0].at, 100.5, 0.01);
  EXPECT_NEAR(second.bench.clocks.time.Uptime() - begun[0].at, 720, 1);
  EXPECT_EQ(second.bench.base.prompts.choices[1], "From 6:40, where it stopped");
  EXPECT_EQ(second.bench.base.prompts.texts.back(),
            "Corvanel closed while a session was running.\r\n\r\nRound 2 of 4, 6:40 left\r\n"
            "Last seen at 20:05:01, 7 min ago\r\n\r\nHow do you want to continue?");
  // What was done just before can still be taken back.
  EXPECT_EQ(second.Face().undo, "Undo next round, 10 min ago");
  second.Do(SessionCommand::Undo);
  EXPECT_EQ(second.State().round, 1);
  EXPECT_NEAR(second.Left(), 600 - 300.5, 1);
}

TEST(ContinueSessionTest, TheLongestRoundThatCanBeStoredGoesOn) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  first.session().settings.MinPerRound = kLongestPhase;
  first.Pass(60);
  EXPECT_EQ(first.Face().countdown, "9:00");  // of the round in play nothing changes
  first.Do(SessionCommand::NextRound);
  first.Pass(600);
  EXPECT_EQ(first.Face().countdown, "590:00");
  ProgramRun second(keeper, ClockTime::At(20, 12), "two");
  second.bench.base.prompts.choice = 0;
  ASSERT_TRUE(second.Resume());
  EXPECT_EQ(second.State().round, 2);
  EXPECT_NEAR(second.Left(), kLongestPhase * 60 - 660, 1);
}

TEST(ContinueSessionTest, ASettingThatTheRecordDoesNotKnowKeepsItsDefault) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  auto record = nlohmann::json::parse(keeper.texts.front());
  ASSERT_EQ(record.at("settings").erase("TimeForBreak"), 1U);
  keeper.texts.front() = record.dump();
  ProgramRun second(keeper, ClockTime::At(20, 1), "two");
  second.bench.base.prompts.choice = 0;
  ASSERT_TRUE(second.Resume());
  EXPECT_EQ(second.session().settings.TimeForBreak, SessionSettings().TimeForBreak);
  EXPECT_EQ(second.session().settings.MinPerRound, 10);
}

TEST(ContinueSessionTest, APausedSessionStaysPaused) {
  for (const size_t choice : {0U, 1U}) {
    FakeKeeper keeper;
    ProgramRun first(keeper, ClockTime::At(20, 0), "one");
    first.Begin();
    first.Pass(60);
    first.Do(SessionCommand::AutoPause);
    first.Pass(30);
    ProgramRun second(keeper, ClockTime::At(20, 20), "two");
    second.bench.base.prompts.choice = choice;
    ASSERT_TRUE(second.Resume());
    EXPECT_TRUE(second.Face().paused);
    EXPECT_TRUE(second.bench.clocks.clock.State().autoPaused);
    EXPECT_EQ(second.Face().countdown, "9:00");
    second.Pass(15);
    second.Do(SessionCommand::Resume);
    EXPECT_EQ(second.Face().countdown, "9:00");
  }
}

TEST(ContinueSessionTest, NothingIsAskedWhereNothingIsToBeContinued) {
  struct Row {
    const char* what;
    std::function<void(ProgramRun&)> evening;
    ClockTime next;
    bool asked;
  };
  const auto nothing = [](ProgramRun& run) { run.Pass(60); };
  const Row rows[] = {
      {"killed", nothing, ClockTime::At(20, 10), true},
      {"left under way", [](ProgramRun& run) { run.recorder.Close(); }, ClockTime::At(20, 10),
       true},
      {"left at its end",
       [](ProgramRun& run) {
         run.Pass(4000);
         run.recorder.Close();
         run.Pass(60);  // a closed record is not written again
       },
       ClockTime::At(21, 10), false},
      {"session over", [](ProgramRun& run) { run.Pass(4000); }, ClockTime::At(21, 10), false},
      {"never started", [](ProgramRun& run) { run.keeper.texts.clear(); }, ClockTime::At(20, 10),
       false},
      {"an hour after its end", nothing, ClockTime::At(21, 46), true},
      {"long over", nothing, ClockTime::At(21, 50), false},
      {"paused long ago", [](ProgramRun& run) { run.Do(SessionCommand::Pause); },
       ClockTime::At(21, 50), false},
      {"paused, and alive for two hours",
       [](ProgramRun& run) {
         run.Do(SessionCommand::Pause);
         run.Pass(7200);
       },
       ClockTime::At(22, 0, 20), true},
      {"clock set back", nothing, ClockTime::At(19, 0), true},
  };
  for (const Row& row : rows) {
    FakeKeeper keeper;
    ProgramRun first(keeper, ClockTime::At(20, 0), "one");
    first.Begin();
    row.evening(first);
    ProgramRun second(keeper, row.next, "two");
    second.Resume();
    EXPECT_EQ(!second.bench.base.prompts.texts.empty(), row.asked) << row.what;
    EXPECT_THAT(second.view.notices, IsEmpty()) << row.what;
  }
}

TEST(ContinueSessionTest, AQuestionLeftOpenOvernightEndsTheSession) {
  for (const double hours : {11.2, 13.0, 20.0, 30.0}) {
    FakeKeeper keeper;
    ProgramRun first(keeper, ClockTime::At(20, 0), "one");
    first.Begin();
    ProgramRun second(keeper, ClockTime::At(20, 1), "two");
    second.bench.base.prompts.choice = 0;
    const auto record = second.ending.Ask();
    ASSERT_TRUE(record);
    second.bench.clocks.time.PassTo(hours * 3600);
    second.ending.GoOn(*record);
    EXPECT_EQ(second.Face().phase, Phase::Ended) << hours;
  }
}

TEST(ContinueSessionTest, LeavingItForgetsItAndClosingTheQuestionDoesNot) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  ProgramRun second(keeper, ClockTime::At(20, 1), "two");
  EXPECT_FALSE(second.Resume());
  EXPECT_EQ(second.bench.base.prompts.texts.size(), 1U);
  second.bench.base.prompts.choice = 2;
  EXPECT_FALSE(second.Resume());
  EXPECT_FALSE(second.Resume());
  EXPECT_EQ(second.bench.base.prompts.texts.size(), 2U);
}

TEST(ContinueSessionTest, ADamagedRecordIsToldInALineAndAnOlderOneServes) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  const std::string whole = keeper.texts.front();
  const auto with = [&](const std::string& from, const std::string& to) {
    std::string text = whole;
    const size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return text.replace(place, from.size(), to);
  };
  const std::string damaged[] = {
      "",
      "{}",
      "[1,2",
      std::string(100, '\0'),
      whole.substr(0, whole.size() / 2),
      with("\"format\": 5", "\"format\": 6"),
      with("\"format\": 5", "\"format\": 1e99"),
      with("\"round\": 1,", "\"round\": 70001,"),
      with("\"roundEnd\": 600.0", "\"roundEnd\": 600000.0"),
      with("\"phase\": \"round\"", "\"phase\": \"dance\""),
      with("\"round\": 1", "\"round\": 0"),
      with("\"nRounds\": \"4\"", "\"nRounds\": \"0\""),
      with("\"nRounds\": \"4\"", "\"nRounds\": null"),
      with("\"MinPerRound\": \"10\"", "\"MinPerRound\": \"-3\""),
      with("\"MinPerRound\": \"10\"", "\"MinPerRound\": \"ten\""),
      with("\"roundEnd\": ", "\"roundEnd\": 1e30"),
  };
  for (const std::string& text : damaged) {
    for (const bool olderOne : {false, true}) {
      keeper.texts = {text};
      if (olderOne) keeper.texts.push_back(whole);
      ProgramRun second(keeper, ClockTime::At(20, 1), "two");
      EXPECT_EQ(second.Resume(), false);
      EXPECT_EQ(second.bench.base.prompts.texts.empty(), !olderOne) << text;
      ASSERT_EQ(second.view.notices.size(), 1U) << text;
      EXPECT_THAT(second.view.notices[0].text,
                  HasSubstr(olderOne ? "the one before it is used" : "cannot be used: "));
    }
  }
}

TEST(ContinueSessionTest, AMarkOfAnotherAgeInACommandIsDamageToo) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  first.Pass(60);
  first.Do(SessionCommand::Pause);
  std::string text = keeper.texts.front();
  const size_t undo = text.find("\"undo\"");
  const size_t mark = text.find("\"roundEnd\": 600.0", undo);
  ASSERT_NE(mark, std::string::npos);
  keeper.texts = {text.replace(mark, 17, "\"roundEnd\": 600000.0")};
  ProgramRun second(keeper, ClockTime::At(20, 2), "two");
  EXPECT_FALSE(second.Resume());
}

TEST(SessionRecorderTest, WritesEveryChangeAndOnlyChanges) {
  FakeKeeper keeper;
  ProgramRun run(keeper, ClockTime::At(20, 0), "one");
  run.bench.clocks.clock.Refresh();
  EXPECT_EQ(keeper.writes, 0);  // nothing has begun
  run.Begin();
  EXPECT_EQ(keeper.writes, 1);
  const auto writes = [&](const std::function<void()>& change) {
    const int before = keeper.writes;
    change();
    return keeper.writes - before;
  };
  const auto does = [&](SessionCommand command) { return writes([&] { run.Do(command); }); };
  EXPECT_EQ(writes([&] { run.Pass(60); }), 0);
  EXPECT_EQ(does(SessionCommand::Pause), 1);
  EXPECT_EQ(writes([&] { run.Pass(60); }), 0);
  EXPECT_EQ(does(SessionCommand::Resume), 1);
  EXPECT_EQ(does(SessionCommand::AddMinute), 1);
  EXPECT_EQ(does(SessionCommand::Undo), 1);
  EXPECT_EQ(does(SessionCommand::Restart), 1);
  EXPECT_EQ(writes([&] { run.Pass(200); }), 1);  // a warning
  EXPECT_EQ(writes([&] { run.Pass(400); }), 2);  // the other one, the move
  EXPECT_EQ(does(SessionCommand::NextRound), 1);
  EXPECT_EQ(writes([&] {
              run.session().settings.Header = "Monday";
              run.Pass(1);
            }),
            1);
  EXPECT_EQ(writes([&] {
              run.bench.Open(Mitchell(4, 4, 2));
              run.Pass(1);
            }),
            1);
  const auto record = ReadRecord(keeper.texts.front());
  ASSERT_TRUE(record);
  EXPECT_EQ(record.Value().scoring.path, ScoringBench::kFile);
  EXPECT_THAT(record.Value().scoring.sections, ElementsAre(1));
  EXPECT_EQ(record.Value().settings, run.session().settings);
}

TEST(SessionRecorderTest, AFailureIsShownTriedAgainAndMended) {
  FakeKeeper keeper;
  ProgramRun run(keeper, ClockTime::At(20, 0), "one");
  run.Begin();
  keeper.broken = "No space left on device";
  run.Do(SessionCommand::Pause);
  run.Pass(1);
  ASSERT_EQ(run.view.notices.size(), 1U);
  EXPECT_THAT(run.view.notices[0].text, HasSubstr("No space left on device"));
  const int writes = keeper.writes;
  run.Pass(21);
  EXPECT_EQ(keeper.writes, writes + 4);
  keeper.broken.clear();
  run.Pass(6);
  EXPECT_THAT(run.view.notices, IsEmpty());
}

TEST(ContinueSessionTest, TheStartTimeOfTheLastMoveComesAlong) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  first.Pass(700);  // the move was at 20:10
  ProgramRun second(keeper, ClockTime::At(20, 12), "two");
  second.bench.base.prompts.choice = 0;
  ASSERT_TRUE(second.Resume());
  EXPECT_EQ(second.bench.base.view.texts[Box::StartTime], "20:10");
}

TEST(ContinueSessionTest, TheQuestionNamesThePhaseAndThePause) {
  struct Row {
    double seconds;
    bool paused;
    const char* text;
  };
  const Row rows[] = {{60, true, "Round 1 of 4, 9:00 left, paused\r\n"},
                      {630, false, "Move after round 1 of 4, 0:30 left\r\n"},
                      {1320, false, "Break, 4:00 left\r\n"}};
  for (const Row& row : rows) {
    FakeKeeper keeper;
    ProgramRun first(keeper, ClockTime::At(20, 0), "one");
    first.Begin();
    first.Pass(row.seconds);
    if (row.paused) first.Do(SessionCommand::Pause);
    ProgramRun second(keeper, ClockTime::At(20, 30), "two");
    second.Resume();
    EXPECT_THAT(second.bench.base.prompts.texts, ElementsAre(HasSubstr(row.text)));
  }
}

TEST(SessionRecorderTest, OtherSectionsOfTheSameFileAreWritten) {
  FakeKeeper keeper;
  ProgramRun run(keeper, ClockTime::At(20, 0), "one");
  ScoringPicture picture = Mitchell(4, 4, 2);
  picture.sections.push_back({9, "B", 1, 0, 0});
  picture.rounds.push_back({9, 1, 1, 1, 2, 1, 2, ""});
  run.Begin();
  for (const bool both : {false, true}) {
    run.bench.sectionAnswers = {true, both};
    run.bench.Open(picture);
    run.Pass(1);
  }
  EXPECT_THAT(ReadRecord(keeper.texts.front()).Value().scoring.sections, ElementsAre(1, 9));
}

// The director closed the question, looked at something and left: it is asked again.
TEST(SessionRecorderTest, ARunWithoutASessionForgetsNothing) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  ProgramRun second(keeper, ClockTime::At(20, 1), "two");
  EXPECT_FALSE(second.Resume());
  second.recorder.Close();
  ProgramRun third(keeper, ClockTime::At(20, 2), "three");
  third.bench.base.prompts.choice = 0;
  EXPECT_TRUE(third.Resume());
}

TEST(ContinueSessionTest, TheReasonIsThatOfTheNewestRecord) {
  FakeKeeper keeper;
  ProgramRun first(keeper, ClockTime::At(20, 0), "one");
  first.Begin();
  std::string newer = keeper.texts.front();
  const std::string format = "\"format\": 5";
  newer.replace(newer.find(format), format.size(), "\"format\": 6");
  keeper.texts = {newer, "{}"};
  ProgramRun second(keeper, ClockTime::At(20, 1), "two");
  EXPECT_FALSE(second.Resume());
  ASSERT_EQ(second.view.notices.size(), 1U);
  EXPECT_THAT(second.view.notices[0].text, HasSubstr("another version"));
}

}  // namespace
}  // namespace corvanel
