#include "scoring/scoring_link.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/scoring_bench.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScoringLinkTest : public testing::Test {
 protected:
  ScoringLinkTest() {
    bench.clocks.time = VirtualTime(ClockTime::At(19, 40), DateTime::Of(2026, 11, 20));
  }
  DateTime MinutesAgo(int minutes) { return {bench.clocks.time.Now().seconds - minutes * 60}; }
  FakePrompts& Prompts() { return bench.base.prompts; }

  ScoringBench bench;
  Session& session = bench.session;
};

TEST_F(ScoringLinkTest, TheLatestFileOfTheLastHourIsOffered) {
  session.options.BWSfolder = "/club/";
  ScoringPicture tonight = Mitchell(5, 4, 3);
  bench.link.Suggest();
  EXPECT_THAT(Prompts().texts, IsEmpty());  // no file at all
  bench.database.Put("/club/old.bws", tonight, MinutesAgo(60));
  bench.link.Suggest();
  EXPECT_THAT(Prompts().texts, IsEmpty());
  bench.database.Put("/club/a.bws", tonight, MinutesAgo(59));
  tonight.sessionName.clear();
  bench.database.Put("/club/b.bws", tonight, MinutesAgo(59));
  Prompts().answers = {Answer::Yes};
  bench.link.Suggest();
  EXPECT_THAT(Prompts().texts,
              ElementsAre("The latest Bridgemate file is:\r\na.bws dated 2026-11-20 18:41\r\n"
                          "\r\nTest pairs\r\n\r\nDo you want to use this file?"));
  EXPECT_EQ(bench.link.Path(), "/club/a.bws");
  EXPECT_EQ(bench.shownFile, "/club/a.bws");
  bench.link.mnuCloseFile_Click();
  session.options.BMSuggest = false;
  bench.link.Suggest();
  EXPECT_EQ(Prompts().texts.size(), 1U);
}

TEST_F(ScoringLinkTest, NoLeadsToTheFileDialogWhichKeepsItsFolder) {
  session.options.BWSfolder = "/club/";
  bench.database.Put("/club/a.bws", Mitchell(5, 4, 3), MinutesAgo(3000));
  bench.database.Put("/other/b.bws", Mitchell(6, 5, 2), MinutesAgo(2));
  Prompts().answers = {Answer::No};
  Prompts().file = "/other/b.bws";
  bench.link.mnuOpenFile_Click();
  EXPECT_EQ(Prompts().texts.back(), "Choose a Bridgemate (bws) file");
  EXPECT_EQ(session.options.BWSfolder, "/other/");
  EXPECT_EQ(bench.base.store.GetSetting("Timer", "BWSfolder"), "/other/");
  EXPECT_EQ(session.settings.nRounds, 5);
  Prompts().answers = {Answer::No};
  Prompts().file.reset();  // cancelled: what was open stays open
  bench.link.mnuOpenFile_Click();
  EXPECT_EQ(bench.link.Path(), "/other/b.bws");
}

TEST_F(ScoringLinkTest, AYearsFolderBecomesThisYears) {
  const std::pair<const char*, const char*> rows[] = {{"/club/RES2023/", "/club/RES2026/"},
                                                      {"/Res2019/x/", "/RES2026/x/"},
                                                      {"/RES20/", "/RES2026/"}};
  for (const auto& [stored, real] : rows) {
    session.options.BWSfolder = stored;
    bench.database.Put(std::string(real) + "a.bws", Mitchell(5, 4, 3), MinutesAgo(5));
    Prompts().answers = {Answer::Yes};
    bench.link.Suggest();
    EXPECT_EQ(bench.link.Path(), std::string(real) + "a.bws");
  }
}

TEST_F(ScoringLinkTest, TakesTheSessionsShapeOver) {
  bench.base.control.Display();
  bench.base.control.Leave(Box::CurrentRound, "5");
  session.settings.Header = "Before";
  ScoringPicture picture = Mitchell(8, 7, 3);
  bench.Open(picture);
  EXPECT_EQ(session.settings.nRounds, 7);
  EXPECT_EQ(bench.base.control.Planned().round, 1);
  EXPECT_EQ(session.settings.Header, "Test pairs");
  EXPECT_EQ(session.settings.MinPerRound, 21);
  EXPECT_EQ(session.settings.BreakAfterRound, 4);
  EXPECT_EQ(session.settings.TimeForBreak, 12);
  EXPECT_EQ(TimeText(bench.base.control.Planned().time), "19:30");
  EXPECT_EQ(bench.base.view.texts[Box::MinPerRound], "21");
  EXPECT_TRUE(bench.base.view.favouriteOffered);
  EXPECT_THAT(bench.base.view.takenOver, testing::IsSupersetOf({Box::nRounds, Box::Header}));
  EXPECT_THAT(bench.base.view.takenOver, testing::Not(testing::Contains(Box::MinWarning0)));
  bench.base.control.Change(Box::nRounds, "6");
  EXPECT_TRUE(bench.base.view.takenOver.empty());
  picture.sessionName.clear();
  for (RoundRow& row : picture.rounds) row.CustomBoards = "1,2,3,4,5,6,7,8,9,10,11,12,13";
  bench.Open(picture);
  EXPECT_EQ(session.settings.Header, "");
  EXPECT_EQ(session.settings.BreakAfterRound, 0);
  session.options.BMUpdateSettings = false;
  bench.Open(Mitchell(4, 3, 2));
  EXPECT_EQ(session.settings.nRounds, 7);
}

TEST_F(ScoringLinkTest, SectionsAreChosenOnceAndCompared) {
  ScoringPicture picture = Mitchell(8, 7, 3);
  picture.sections.push_back({9, "B", 1, 0, 0});
  picture.rounds.push_back({9, 1, 1, 1, 2, 1, 4, ""});
  picture.sections.push_back({4, "C", 2, 0, 0});
  picture.rounds.push_back({4, 1, 1, 0, 0, 0, 0, ""});
  bench.sectionAnswers = {false, false, false};
  bench.Open(picture);
  EXPECT_EQ(Prompts().texts.back(), "You haven't selected any sections");
  EXPECT_FALSE(bench.link.IsOpen());
  EXPECT_THAT(bench.sectionLines,
              ElementsAre("Section A : 8 tables", "Section B : 1 tables", "Section C : 2 tables"));
  bench.sectionAnswers = {true, true, true};
  const float minutes = session.settings.MinPerRound;
  bench.Open(picture);
  EXPECT_EQ(Prompts().texts.back(), "Sections have different numbers of boards per round");
  EXPECT_EQ(session.settings.MinPerRound, minutes);
  EXPECT_EQ(session.settings.BreakAfterRound, 3);  // by the last one that has boards
  bench.sectionAnswers = {false, true, false};
  bench.link.BWSOpenFile(ScoringBench::kFile);  // the same file, other sections
  EXPECT_EQ(bench.link.Model().SelectedSections(), 1);
  std::swap(picture.sections[0], picture.sections[1]);  // the choice is by ID, not by place
  bench.Write(picture);
  EXPECT_TRUE(bench.link.ReadNow());
  EXPECT_EQ(bench.link.Model().SelectedSections(), 1);
  EXPECT_TRUE(bench.link.Model().Section(9)->selected);
}

TEST_F(ScoringLinkTest, WhatIsNoScoringFileIsToldAndNotTaken) {
  bench.Open(Mitchell(8, 7, 3));
  bench.link.BWSOpenFile("/no/such.bws");
  EXPECT_EQ(Prompts().texts.back(), "The file\r\n/no/such.bws\r\nis not in the correct format");
  EXPECT_EQ(bench.link.Path(), ScoringBench::kFile);
  bench.database.unreadable = true;
  const size_t messages = Prompts().texts.size();
  bench.link.BWSReadFile([](bool read) { EXPECT_FALSE(read); });  // a poll that fails is quiet
  EXPECT_EQ(Prompts().texts.size(), messages);
  EXPECT_EQ(bench.link.Model().TotalTables(), 8);
}

TEST_F(ScoringLinkTest, AFileThatComesLaterIsWaitedFor) {
  bench.database.failure = {57, "The file does not answer", true};
  bench.database.Put("/x.bws", Mitchell(4, 3, 2));
  bench.database.failures = 3;
  EXPECT_TRUE(bench.link.BWSOpenFile("/x.bws"));
  bench.database.failures = 100;
  EXPECT_FALSE(bench.link.BWSOpenFile("/x.bws"));
  EXPECT_EQ(Prompts().texts.back(), "Error reading file /x.bws");
}

TEST_F(ScoringLinkTest, ASessionUnderWayKeepsItsShape) {
  session.settings.nRounds = 9;
  bench.clocks.clock.Start(3);
  const ClockTime start = bench.base.control.Planned().time;
  bench.Open(Mitchell(8, 7, 3));
  EXPECT_TRUE(bench.link.IsOpen());
  EXPECT_EQ(session.settings.nRounds, 9);
  EXPECT_EQ(bench.clocks.clock.State().round, 3);
  EXPECT_EQ(bench.base.control.Planned().time, start);
}

TEST_F(ScoringLinkTest, TheLogTellsWhatWasSeen) {
  ScoringPicture picture = Mitchell(8, 7, 3);
  picture.received = {ResultOf(1, 1, 1), ResultOf(1, 1, 2)};
  session.options.LogFile = false;
  bench.Open(picture);
  EXPECT_THAT(bench.log, IsEmpty());
  session.options.LogFile = true;
  bench.link.BWSOpenFile(ScoringBench::kFile);
  EXPECT_THAT(bench.log,
              ElementsAre("open 2026-11-20.log", "19:40:00 START - version 1.2.03",
                          "19:40:00 Database /scoring/tonight.bws", "19:40:00 BWSReadFile",
                          "19:40:00  1 sections", "19:40:00  Section 1", "19:40:00   8 tables",
                          "19:40:00   3 boards per set", "19:40:00 Total number of tables 8",
                          "19:40:00 Max boards per set 3", "19:40:00 Received data - 2",
                          "19:40:00 BWSOpenFile", "19:40:00  1 sections", "19:40:00  Section 1",
                          "19:40:00   8 tables", "19:40:00   3 boards per set",
                          "19:40:00 Total number of tables 8", "19:40:00 Max boards per set 3",
                          "19:40:00 Received data - 2"));
  bench.log.clear();
  bench.monitor.SessionStarts();
  EXPECT_THAT(bench.log, ElementsAre("19:40:00 GetUserInputs - Max boards per set 3"));
}

TEST_F(ScoringLinkTest, AnEmptyUnitNameBecomesBridgemate) {
  session.options.TableTopUnit.clear();
  bench.link.BWSSetUnitCaptions();
  EXPECT_EQ(bench.unitCaption, "Bridgemate");
}

TEST_F(ScoringLinkTest, TheMenuOffersTheNewestFile) {
  session.options.BWSfolder = "/club/";
  bench.database.Put("/club/a.bws", Mitchell(5, 4, 3), MinutesAgo(3000));
  bench.database.Put("/club/b.bws", Mitchell(5, 4, 3), MinutesAgo(2000));
  bench.database.Put("/club/c.bws", Mitchell(5, 4, 3), MinutesAgo(4000));
  Prompts().answers = {Answer::Yes};
  bench.link.mnuOpenFile_Click();
  EXPECT_EQ(bench.link.Path(), "/club/b.bws");
}

TEST_F(ScoringLinkTest, AFolderWithoutASeparatorWillDo) {
  session.options.BWSfolder = "/club";
  bench.database.Put("/club/a.bws", Mitchell(5, 4, 3), MinutesAgo(5));
  bench.database.Put("/clubs/newer.bws", Mitchell(5, 4, 3), MinutesAgo(1));
  Prompts().answers = {Answer::Yes};
  bench.link.Suggest();
  EXPECT_EQ(bench.link.Path(), "/club/a.bws");
}

TEST_F(ScoringLinkTest, NoToTheSuggestionLeadsToTheFileDialogToo) {
  session.options.BWSfolder = "/club/";
  bench.database.Put("/club/a.bws", Mitchell(5, 4, 3), MinutesAgo(5));
  bench.database.Put("/other/b.bws", Mitchell(6, 5, 2), MinutesAgo(2));
  Prompts().answers = {Answer::No};
  Prompts().file = "/other/b.bws";
  EXPECT_TRUE(bench.link.Suggest());
  EXPECT_EQ(bench.link.Path(), "/other/b.bws");
}

TEST_F(ScoringLinkTest, AFileOfAnEarlierRunKeepsItsSections) {
  ScoringPicture picture = Mitchell(8, 7, 3);
  picture.sections.push_back({9, "B", 1, 0, 0});
  picture.rounds.push_back({9, 1, 1, 1, 2, 1, 4, ""});
  bench.Write(picture);
  bench.link.Reopen({ScoringBench::kFile, {9}, "", {}});
  EXPECT_EQ(bench.link.Followed().sections, (std::set<int16_t>{9}));
  EXPECT_EQ(bench.link.Model().SelectedSections(), 1);
  EXPECT_TRUE(bench.link.Model().Section(9)->selected);
}

/// Files on a share that answers when it likes.
class SlowDatabase : public FakeDatabase {
 public:
  void Read(const std::string& path, Answer answer) override {
    arrive = [this, path, answer = std::move(answer)] { answer(ReadNow(path)); };
  }
  std::function<void()> arrive;
};

TEST_F(ScoringLinkTest, WhatComesLateOfTheFileBeforeIsNotTaken) {
  SlowDatabase database;
  ScoringLink link({.session = session,
                    .table = bench.base.table,
                    .database = database,
                    .clock = bench.clocks.clock,
                    .listener = bench.clocks.broadcast,
                    .prompts = Prompts(),
                    .errors = bench.clocks.errors,
                    .time = bench.clocks.time,
                    .log = bench.activity,
                    .notices = bench.notices,
                    .version = "1.2.03",
                    .chooseSections = [](const auto&, const auto&) { return std::vector<bool>(); },
                    .opened = [](auto) {}});
  database.Put("/a.bws", Mitchell(8, 7, 3));
  database.Put("/b.bws", Mitchell(5, 4, 3));
  link.BWSOpenFile("/a.bws");
  bool good = true;
  link.BWSReadFile([&](bool read) { good = read; });
  link.BWSOpenFile("/b.bws");
  database.arrive();
  EXPECT_FALSE(good);
  EXPECT_EQ(link.Model().TotalTables(), 5);
}

}  // namespace
}  // namespace corvanel
