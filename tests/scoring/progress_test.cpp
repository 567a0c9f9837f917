#include "scoring/progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scoring/movement.h"
#include "tests/support/scoring_bench.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

ScoringSession Model(const ScoringPicture& picture) {
  return {std::make_shared<ScoringPicture>(picture), AllSections(picture)};
}

/// Lets each table of round 1 send so many of its three boards.
ScoringPicture WithBoards(int tables, const std::vector<int>& sent) {
  ScoringPicture picture = Mitchell(tables, tables, 3);
  for (size_t i = 0; i < sent.size(); ++i) {
    const int low = picture.rounds[i].LowBoard;
    for (int n = 0; n < sent[i]; ++n) {
      picture.received.push_back(ResultOf(static_cast<int>(i) + 1, 1, low + n));
    }
  }
  return picture;
}

TEST(ProgressTest, TextsCountFromTheirOwnThresholds) {
  struct Row {
    std::vector<int> sent;  // boards of three, by table
    std::vector<std::string> texts;
  };
  const Row rows[] = {
      {{3, 3, 3, 3, 3, 3, 3}, {}},
      {{3, 3, 3, 3, 3, 3, 2}, {"Table 7 still playing"}},
      {{3, 3, 3, 1, 3, 3, 3}, {"Last board not started at table 4", "Table 4 still playing"}},
      {{3, 1, 3, 0, 3, 3, 3}, {"Last board not started at tables 2 4", "Tables 2 4 still playing"}},
      {{1, 1, 1, 2, 3, 3, 3},
       {"Last board not started at tables 1 2 3", "Tables 1 2 3 4 still playing"}},
      {{1, 1, 1, 1, 2, 3, 3}, {"4 slow tables", "5 tables playing"}},
  };
  for (const Row& row : rows) {
    const ScoringSession session = Model(WithBoards(7, row.sent));
    EXPECT_EQ(ProgressOf(session, {1, 7, 60, 7, true}).texts, row.texts);
  }
}

TEST(ProgressTest, NobodyIsSlowBeforeTheLastBoardsMinutes) {
  const ScoringSession session = Model(WithBoards(4, {3, 0, 1, 2}));
  const auto slow = [&](double secondsLeft) {
    return ProgressOf(session, {1, 4, secondsLeft, 7, true}).texts.size() == 2;
  };
  EXPECT_FALSE(slow(421));
  EXPECT_TRUE(slow(420));
  EXPECT_THAT(ProgressOf(session, {1, 4, 60, 7, false}).texts,
              ElementsAre("Tables 2 3 4 still playing"));
  // The units are at another round than the clock: nothing is said.
  EXPECT_THAT(ProgressOf(session, {2, 4, 60, 7, true}).texts, IsEmpty());
  ScoringPicture ahead = WithBoards(4, {3, 3, 3, 2});
  ahead.received.push_back(ResultOf(1, 2, 4));
  EXPECT_EQ(ProgressOf(Model(ahead), {1, 4, 60, 7, true}).Playing(), 1);
  EXPECT_THAT(ProgressOf(Model(ahead), {1, 4, 60, 7, true}).texts, IsEmpty());
}

TEST(ProgressTest, ErasedAndRepeatedResultsCountOnce) {
  ScoringPicture picture = Mitchell(2, 2, 2);
  const int16_t board = picture.rounds[0].LowBoard;
  const auto state = [&] { return ProgressOf(Model(picture), {1, 2, 0, 7, true}).tables[0]; };
  picture.received = {ResultOf(1, 1, board), ResultOf(1, 1, board)};
  EXPECT_EQ(state().received, 1);
  picture.received.push_back(ResultOf(1, 1, board + 1));
  EXPECT_EQ(state().state, TableState::Finished);
  picture.received.push_back(ResultOf(1, 1, board + 1));
  picture.received.back().Erased = -1;
  EXPECT_EQ(state().state, TableState::Playing);
  picture.received.push_back(ResultOf(1, 1, board + 1));
  EXPECT_EQ(state().state, TableState::Finished);
}

TEST(ProgressTest, TablesThatDoNotPlayAreToldApart) {
  struct Row {
    const char* name;
    RoundRow row;
    int16_t missing;
    int results;
    TableState state;
  };
  const Row rows[] = {
      {"plays", {1, 1, 1, 1, 5, 1, 2, ""}, 0, 0, TableState::Slow},
      {"no boards", {1, 1, 1, 0, 0, 0, 0, ""}, 0, 0, TableState::NotPlaying},
      {"no opponents", {1, 1, 1, 1, 0, 1, 2, ""}, 0, 0, TableState::NotPlaying},
      {"meets the missing pair", {1, 1, 1, 1, 5, 1, 2, ""}, 5, 0, TableState::NotPlaying},
      {"is the missing pair", {1, 1, 1, 1, 5, 1, 2, ""}, 1, 0, TableState::NotPlaying},
      {"missing east-west", {1, 1, 1, 1, 5, 1, 2, ""}, -5, 0, TableState::NotPlaying},
      {"another east-west is missing", {1, 1, 1, 1, 5, 1, 2, ""}, -1, 0, TableState::Slow},
      {"plays all the same", {1, 1, 1, 1, 5, 1, 2, ""}, 5, 1, TableState::Playing},
      {"boards by a list", {1, 1, 1, 1, 5, 1, 2, "3,7,9"}, 0, 2, TableState::Playing},
      {"more boards than asked", {1, 1, 1, 1, 5, 1, 2, ""}, 0, 4, TableState::Finished},
  };
  for (const Row& row : rows) {
    ScoringPicture picture;
    picture.sections = {{1, "A", 1, row.missing, 0}};
    picture.rounds = {row.row};
    for (int n = 0; n < row.results; ++n) picture.received.push_back(ResultOf(1, 1, n + 1));
    EXPECT_EQ(ProgressOf(Model(picture), {1, 2, 0, 7, true}).tables[0].state, row.state)
        << row.name;
  }
}

TEST(ProgressTest, SharedNumbersAreTwoPairs) {
  ScoringPicture picture;
  picture.sections = {{1, "A", 2, 2, 0}};
  picture.rounds = {{1, 1, 1, 1, 2, 1, 2, ""}, {1, 2, 1, 2, 1, 3, 4, ""}};
  const RoundProgress progress = ProgressOf(Model(picture), {1, 2, 0, 7, true});
  EXPECT_EQ(progress.tables[0].state, TableState::Slow);  // meets EW 2, who are there
  EXPECT_EQ(progress.tables[1].state, TableState::NotPlaying);
}

TEST(ProgressTest, ADeadUnitIsSilentAfterARoundItShouldHavePlayed) {
  ScoringPicture picture = WithBoards(3, {3, 3});
  const auto third = [&](int16_t round) {
    return ProgressOf(Model(picture), {round, 3, 600, 7, true}).tables[2].state;
  };
  EXPECT_EQ(third(1), TableState::LastBoard);
  EXPECT_EQ(third(2), TableState::Silent);
  const RoundProgress second = ProgressOf(Model(picture), {2, 3, 600, 7, true});
  EXPECT_FALSE(second.AllFinished());
  picture.received.push_back(ResultOf(3, 1, 7));
  EXPECT_EQ(third(2), TableState::LastBoard);
}

TEST(ProgressTest, SectionsHaveTheirLettersAndSitOutsTheirNP) {
  ScoringPicture picture = Mitchell(2, 2, 3);
  picture.sections.push_back({2, "B", 1, 0, 0});
  picture.rounds.push_back({2, 1, 1, 0, 0, 0, 0, ""});
  picture.rounds.push_back({2, 1, 2, 0, 0, 0, 0, ""});
  picture.players = {{1, 2, "N", "7", "Ann"}, {1, 2, "S", "8", ""}, {1, 2, "E", "9", "Eve"}};
  picture.received = {ResultOf(2, 1, 4)};
  const ScoringSession session = Model(picture);
  const ProgressInput input{1, 2, 0, 7, true};
  const RoundProgress progress = ProgressOf(session, input);
  EXPECT_THAT(progress.texts,
              ElementsAre("Last board not started at tables A1 A2", "Tables A1 A2 still playing"));
  const std::vector<SectionCells> grid = GridOf(session, progress, input);
  ASSERT_EQ(grid.size(), 2U);
  EXPECT_EQ(grid[1].letter, "B");
  EXPECT_EQ(grid[0].cells[1].text, "1/3");
  EXPECT_EQ(grid[1].cells[0].text, "NP");
  EXPECT_EQ(grid[0].cells[1].tip, "A2: NS   2, EW   4\nN: Ann, E: Eve");
  EXPECT_EQ(grid[1].cells[0].tip, "B1:   0EW sits out");
  const ProgressInput last{2, 2, 0, 7, true};
  EXPECT_EQ(GridOf(session, ProgressOf(session, last), last)[1].cells[0].text, "");
}

TEST(ScoringSessionTest, TotalsAndPairNumbers) {
  ScoringPicture picture = Mitchell(4, 3, 2);
  picture.players = {{1, 2, "N", "7", "Ann"}, {1, 2, "S", "8", ""}, {1, 2, "E", "9", "Eve"}};
  picture.received = {ResultOf(1, 2, 1), ResultOf(1, 3, 1), ResultOf(1, 3, 1)};
  picture.received.back().Erased = -1;
  const ScoringSession session = Model(picture);
  EXPECT_EQ(session.TotalTables(), 4);
  EXPECT_EQ(session.Rounds(), 3);
  EXPECT_EQ(session.MaxBoardsPerSet(), 2);
  EXPECT_EQ(session.HighestRound(), 2);  // the result of round 3 was taken back
  const ScoringSection& section = session.Sections()[0];
  EXPECT_EQ(GetPairNum(*section.Find(2, 1), false), "  6");
  EXPECT_EQ(GetPairNumDirn(section, *section.Find(2, 1)), "  2NS");
  EXPECT_EQ(GetTableNames(picture).at({1, 2}), "N: Ann, E: Eve");
  const ScoringSession nothing(std::make_shared<ScoringPicture>(picture), {});
  EXPECT_TRUE(ProgressOf(nothing, {1, 3, 0, 7, true}).tables.empty());
}

/// Turns the seats of a section's rounds round.
void ArrowSwitch(ScoringPicture& picture, int16_t section, int16_t fromRound) {
  for (RoundRow& row : picture.rounds) {
    if (row.Section == section && row.round >= fromRound) std::swap(row.NSPair, row.EWpair);
  }
}

/// Lets the moving pairs go one table further from a round on.
void Skip(ScoringPicture& picture, int16_t section, int16_t afterRound, int tables) {
  for (RoundRow& row : picture.rounds) {
    if (row.Section != section || row.round <= afterRound) continue;
    row.EWpair = static_cast<int16_t>(tables + 1 + (row.EWpair - tables - 2 + tables) % tables);
  }
}

TEST(MovementTest, SkipsAndSwitchesComeFromTheMovement) {
  ScoringPicture plain = Mitchell(7, 7, 3);
  ScoringPicture skip = Mitchell(8, 7, 3);
  Skip(skip, 1, 4, 8);
  ScoringPicture both = skip;
  ArrowSwitch(both, 1, 7);
  ScoringPicture lastTwo = Mitchell(9, 9, 3);
  ArrowSwitch(lastTwo, 1, 8);
  ScoringPicture howell;  // four pairs, each with each; pair 4 stays
  howell.sections = {{1, "A", 2, 0, 0}};
  howell.rounds = {{1, 1, 1, 4, 1, 1, 2, ""}, {1, 2, 1, 2, 3, 1, 2, ""}, {1, 1, 2, 4, 2, 3, 4, ""},
                   {1, 2, 2, 3, 1, 3, 4, ""}, {1, 1, 3, 4, 3, 5, 6, ""}, {1, 2, 3, 1, 2, 5, 6, ""}};
  ScoringPicture twoWinners = Mitchell(6, 6, 4);
  for (RoundRow& row : twoWinners.rounds) row.EWpair = static_cast<int16_t>(row.EWpair - 6);
  EXPECT_EQ(MarksOf(Model(plain)), (MovementMarks{"", ""}));
  EXPECT_EQ(MarksOf(Model(skip)), (MovementMarks{"4", ""}));
  EXPECT_EQ(MarksOf(Model(both)), (MovementMarks{"4", "6"}));
  EXPECT_EQ(MarksOf(Model(lastTwo)), (MovementMarks{"", "7,8"}));
  EXPECT_EQ(MarksOf(Model(howell)), (MovementMarks{"", ""}));
  EXPECT_EQ(MarksOf(Model(twoWinners)), (MovementMarks{"", ""}));
  ScoringPicture twoWinnersSkip = skip;
  for (RoundRow& row : twoWinnersSkip.rounds) row.EWpair = static_cast<int16_t>(row.EWpair - 8);
  EXPECT_EQ(MarksOf(Model(twoWinnersSkip)), (MovementMarks{"4", ""}));
  ScoringPicture rover = skip;  // an extra table, and table numbers with a gap
  for (RoundRow& row : rover.rounds)
    row.Table = static_cast<int16_t>(row.Table + (row.Table > 4 ? 6 : 0));
  for (int16_t round = 1; round <= 7; ++round)
    rover.rounds.push_back({1, 20, round, 17, 0, 0, 0, ""});
  rover.sections.push_back({2, "B", 4, 0, 0});  // without a movement yet
  EXPECT_EQ(MarksOf(Model(rover)), (MovementMarks{"4", ""}));
}

TEST(MovementTest, OnlyWhatAllSelectedSectionsDoIsListed) {
  ScoringPicture picture = Mitchell(8, 7, 3);
  picture.sections.push_back({2, "B", 8, 0, 0});
  const size_t rows = picture.rounds.size();
  for (size_t i = 0; i < rows; ++i) {
    picture.rounds.push_back(picture.rounds[i]);
    picture.rounds.back().Section = 2;
  }
  Skip(picture, 1, 4, 8);
  ArrowSwitch(picture, 1, 6);
  Skip(picture, 2, 3, 8);
  ArrowSwitch(picture, 2, 7);
  EXPECT_EQ(MarksOf(Model(picture)), (MovementMarks{"", "6"}));
  const ScoringSession one(std::make_shared<ScoringPicture>(picture), {1});
  EXPECT_EQ(MarksOf(one), (MovementMarks{"4", "5,6"}));
}

}  // namespace
}  // namespace corvanel
