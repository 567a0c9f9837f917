// What of the scoring file may be believed, and what the director has to say first.

#include <gmock/gmock.h>

#include "scoring/session_identity.h"
#include "scoring/take_over.h"
#include "tests/support/evening_fixture.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

class TrustTest : public EveningTest {
 protected:
  /// The line of a kind; empty when there is none.
  std::string Line(NoticeKind kind) {
    for (const Notice& line : bench.lines) {
      if (line.kind == kind) return line.text;
    }
    return {};
  }
  TableState StateOf(int table) {
    return bench.face.sections.at(0).cells.at(static_cast<size_t>(table - 1)).state;
  }
};

TEST(SessionIdentityTest, WhatCanBeOneEvening) {
  ScoringPicture earlier = Mitchell(5, 4, 3);
  earlier.sessionName = "Friday pairs";
  earlier.sessionDate = DateTime{1000000};
  earlier.sections.push_back({2, "B", 6});
  struct Row {
    const char* what;
    void (*change)(ScoringPicture& later);
    bool same;
  };
  const Row rows[] = {
      {"results", [](ScoringPicture& p) { p.received.push_back(ResultOf(1, 1, 1)); }, true},
      {"one more round",
       [](ScoringPicture& p) {
         p.rounds.push_back({1, 1, 5, 9, 2, 1, 3, ""});
       },
       true},
      {"no name any more", [](ScoringPicture& p) { p.sessionName.clear(); }, true},
      {"another name", [](ScoringPicture& p) { p.sessionName = "Teams"; }, false},
      {"another start", [](ScoringPicture& p) { p.sessionDate = DateTime{2000000}; }, false},
      {"a table less", [](ScoringPicture& p) { p.rounds.pop_back(); }, false},
      {"other pairs", [](ScoringPicture& p) { p.rounds[3].EWpair = 77; }, false},
      {"no section", [](ScoringPicture& p) { p.sections.clear(); }, false},
      {"a section that nobody chose is gone", [](ScoringPicture& p) { p.sections.pop_back(); },
       true},
  };
  for (const Row& row : rows) {
    ScoringPicture later = earlier;
    row.change(later);
    EXPECT_EQ(SameSession(earlier, later, {1}), row.same) << row.what;
  }
  // Pairs that a Swiss event has not drawn yet.
  earlier.rounds[3].NSPair = earlier.rounds[3].EWpair = 0;
  ScoringPicture drawn = earlier;
  drawn.rounds[3].NSPair = 4;
  drawn.rounds[3].EWpair = 5;
  EXPECT_TRUE(SameSession(earlier, drawn, {1}));
}

// The file was replaced by that of another evening, in which everything is finished.
TEST_F(TrustTest, AnotherSessionsFileIsShownAndNotFollowed) {
  AllSend(1, 2);
  bench.PassWithPolls(30);
  ScoringPicture other = Mitchell(8, 7, 3);
  other.sessionName = "Another evening";
  for (RoundRow& row : other.rounds) {
    row.NSPair = static_cast<int16_t>(row.NSPair + 20);
    for (int16_t board = row.LowBoard; board <= row.HighBoard; ++board) {
      other.received.push_back(ResultOf(row.Table, row.round, board));
    }
  }
  bench.Write(other);
  bench.PassWithPolls(60);
  EXPECT_EQ(State().round, 1);
  EXPECT_EQ(State().phase, Phase::Round);
  EXPECT_THAT(Line(NoticeKind::OtherSession), HasSubstr("\"Another evening\""));
  EXPECT_EQ(StateOf(1), TableState::Finished) << "it is shown";
  // The file of tonight comes back.
  bench.Write(evening);
  bench.PassWithPolls(10);
  EXPECT_EQ(Line(NoticeKind::OtherSession), "");
  // Again, and now the director says that this is right: still no round ends that nobody was seen
  // playing.
  bench.Write(other);
  bench.PassWithPolls(10);
  bench.link.Act({NoticeKind::OtherSession, ""});
  bench.PassWithPolls(10);
  EXPECT_EQ(Line(NoticeKind::OtherSession), "");
  EXPECT_TRUE(bench.link.IsTonights());
  EXPECT_EQ(State().phase, Phase::Round);
}

TEST_F(TrustTest, AfterARestartTheRecordTellsWhoseFileItIs) {
  bench.link.LeaveOut({1, 8});
  const FollowedFile followed = bench.link.Followed();
  const auto opened = [&](void (*change)(ScoringPicture & picture)) {
    ScoringBench next;
    ScoringPicture later = evening;
    change(later);
    next.Write(later);
    next.link.Reopen(followed);
    return std::pair(next.link.IsTonights(), next.link.LeftOut());
  };
  const std::set<TableId> out = {{1, 8}};
  EXPECT_EQ(opened([](ScoringPicture& /*same*/) {}), std::pair(true, out));
  EXPECT_FALSE(opened([](ScoringPicture& p) { p.sessionName = "Teams"; }).first);
  EXPECT_FALSE(opened([](ScoringPicture& p) { p.sessionDate->seconds += 86400; }).first);
  EXPECT_FALSE(
      opened([](ScoringPicture& p) { std::swap(p.rounds[0].EWpair, p.rounds[1].EWpair); }).first);
  EXPECT_TRUE(opened([](ScoringPicture& p) { p.rounds.back().EWpair = 77; }).first) << "amended";
}

TEST_F(TrustTest, APauseForTablesEndsWhenTheFileIsAnothers) {
  AllSend(1, 2);
  bench.PassWithPolls(21 * 60 - 8);
  EXPECT_TRUE(State().autoPaused);
  ScoringPicture other = evening;
  other.sessionName = "Another evening";
  evening.sessionName = "Friday pairs";
  bench.Write(evening);
  bench.PassWithPolls(5);
  bench.Write(other);
  bench.PassWithPolls(5);
  EXPECT_FALSE(State().paused);
}

TEST_F(TrustTest, ATableThatNeverSendsIsNamedAndCanBeLeftOut) {
  for (int round = 1; round <= 3; ++round) {
    for (int table = 1; table <= 7; ++table) Send(table, round, 3);
    bench.PassWithPolls(60);
    if (round < 3) {
      EXPECT_EQ(Line(NoticeKind::SilentTable), "") << round;
      bench.clocks.clock.Do(SessionCommand::NextRound);
      bench.PassWithPolls(65);
    }
  }
  EXPECT_EQ(Line(NoticeKind::SilentTable), "Table 8 has sent nothing for two rounds");
  EXPECT_EQ(State().round, 3) << "not ended while nobody says what became of the table";
  const auto silent = bench.monitor.SilentTable("8");
  ASSERT_TRUE(silent);
  bench.link.LeaveOut(*silent);
  bench.PassWithPolls(5);
  EXPECT_EQ(Line(NoticeKind::SilentTable), "");
  EXPECT_THAT(Line(NoticeKind::LeftOutTable), HasSubstr("Table 8"));
  bench.PassWithPolls(5);
  EXPECT_EQ(State().phase, Phase::Move) << "every table that counts has finished";
  bench.PassWithPolls(70);
  EXPECT_EQ(StateOf(8), TableState::LeftOut);
  // It comes back by itself.
  Send(8, 4, 1);
  bench.PassWithPolls(5);
  EXPECT_EQ(StateOf(8), TableState::LastBoard);
  EXPECT_EQ(Line(NoticeKind::LeftOutTable), "");
}

TEST_F(TrustTest, ATableThatWasLeftOutCanBeCountedAgain) {
  bench.link.LeaveOut({1, 8});
  bench.PassWithPolls(5);
  EXPECT_EQ(StateOf(8), TableState::LeftOut);
  const Notice line = bench.lines.back();
  EXPECT_EQ(line.action, "Count it again");
  // A line that he dismissed comes again with the next round: he may think better of it.
  bench.notices.Dismiss(line);
  bench.PassWithPolls(5);
  EXPECT_EQ(Line(NoticeKind::LeftOutTable), "");
  bench.clocks.clock.Do(SessionCommand::NextRound);
  EXPECT_EQ(Line(NoticeKind::LeftOutTable), line.text);
  bench.link.Act(line);
  bench.PassWithPolls(5);
  EXPECT_NE(StateOf(8), TableState::LeftOut);
  // Another file knows nothing of it.
  bench.link.LeaveOut({1, 8});
  bench.link.mnuCloseFile_Click();
  EXPECT_THAT(bench.lines, IsEmpty());
  EXPECT_TRUE(bench.link.LeftOut().empty());
}

// Neither another session's results nor what was deleted are something that it sent.
TEST_F(TrustTest, OnlyWhatATableSendsCountsItBackIn) {
  Send(8, 1, 2);
  bench.PassWithPolls(5);
  bench.link.LeaveOut({1, 8});
  const ScoringPicture tonight = evening;
  evening.sessionName = "Another evening";
  AllSend(1, 3);
  bench.PassWithPolls(10);
  EXPECT_FALSE(bench.link.IsTonights());
  evening = tonight;
  bench.Write(evening);
  bench.PassWithPolls(10);
  EXPECT_EQ(StateOf(8), TableState::LeftOut);
  std::erase_if(evening.received, [](const ResultRow& row) { return row.Table == 8; });
  bench.Write(evening);
  bench.PassWithPolls(10);
  EXPECT_EQ(StateOf(8), TableState::LeftOut);
  Send(8, 1, 1);
  bench.PassWithPolls(5);
  EXPECT_NE(StateOf(8), TableState::LeftOut);
}

// With several sections a table's line has the section's letter, and goes with the file too.
TEST_F(TrustTest, TheLineOfATableLeftOutGoesWithItsFile) {
  ScoringPicture two = Mitchell(5, 4, 3);
  two.sections.push_back({2, "B", 5, 0, 0});
  const std::vector<RoundRow> rounds = two.rounds;
  for (RoundRow row : rounds) {
    row.Section = 2;
    two.rounds.push_back(row);
  }
  bench.sectionAnswers = {true, true};
  bench.Open(two);
  bench.link.LeaveOut({2, 3});
  EXPECT_THAT(Line(NoticeKind::LeftOutTable), HasSubstr("Table B3"));
  bench.link.mnuCloseFile_Click();
  EXPECT_EQ(Line(NoticeKind::LeftOutTable), "");
}

TEST_F(TrustTest, WhatCouldNotBeReadIsSaidInOneLine) {
  evening.rowsLeftOut = 3;
  bench.Write(evening);
  bench.PassWithPolls(5);
  EXPECT_EQ(Line(NoticeKind::ScoringRows), "Bridgemate: 3 rows could not be read");
  EXPECT_THAT(bench.log, testing::Contains(EndsWith("3 rows could not be read")));
  evening.rowsLeftOut = 1;
  evening.tablesLeftOut = {"PlayerNames"};
  bench.Write(evening);
  bench.PassWithPolls(5);
  EXPECT_EQ(Line(NoticeKind::ScoringRows),
            "Bridgemate: 1 row and the list PlayerNames could not be read");
  evening.rowsLeftOut = 0;
  evening.tablesLeftOut.clear();
  bench.Write(evening);
  bench.PassWithPolls(5);
  EXPECT_EQ(Line(NoticeKind::ScoringRows), "");
}

TEST(TakenOverTest, TheLineNamesWhatChanged) {
  ScoringBench bench;
  bench.session.settings.Header = "Last week cup";
  ScoringPicture nameless = Mitchell(8, 7, 3);
  nameless.sessionName.clear();
  bench.Open(nameless);
  ASSERT_FALSE(bench.lines.empty());
  EXPECT_EQ(bench.lines.back().text,
            "Taken over from tonight.bws: 7 rounds of 3 boards, 21 minutes each, break of 12 "
            "minutes after round 4, no title");
  EXPECT_EQ(bench.session.settings.Header, "") << "a title of last week's is none";
  bench.monitor.SessionStarts();
  EXPECT_THAT(bench.lines, IsEmpty());
}

}  // namespace
}  // namespace corvanel
