#include "scoring/play_time.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>

#include "scoring/read_picture.h"
#include "tests/support/scoring_bench.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Six tables, four rounds of two boards, 15 minutes a round and a break of 20 after the second.
/// Table 3 takes two minutes more each time.
class PlayTimeTest : public testing::Test {
 protected:
  PlayTimeTest() {
    double start = 0;
    for (int round = 1; round <= 4; ++round) {
      if (round == 3) start += 20;
      for (const RoundRow& row : evening.rounds) {
        if (row.round != round) continue;
        const double end = start + (row.Table == 3 ? 15 : 13);
        for (const double at : {start + 7, end}) {
          evening.received.push_back(
              ResultOf(row.Table, round, at == end ? row.HighBoard : row.LowBoard,
                       {evening.sessionDate->seconds + std::llround(at * 60)}));
        }
      }
      start += 15;
    }
  }
  SectionTimes Times() const {
    const auto picture = std::make_shared<ScoringPicture>(evening);
    return PlayTimesOf(ScoringSession(picture, {1}), starts).at(0);
  }
  DateTime At(double minutes) const {
    return {evening.sessionDate->seconds + std::llround(minutes * 60)};
  }
  double Minutes(int table, int round) const {
    return Times().times.at({static_cast<int16_t>(table), static_cast<int16_t>(round)}).minutes;
  }
  ResultRow& Row(int table, int round, size_t board) {
    for (ResultRow& row : evening.received) {
      if (row.Table == table && row.round == round && board-- == 0) return row;
    }
    throw std::out_of_range("no such result");
  }

  ScoringPicture evening = Mitchell(6, 4, 2);
  RoundStarts starts;
};

TEST_F(PlayTimeTest, RoundsTablesAndPairsAreTimed) {
  const SectionTimes times = Times();
  EXPECT_EQ(Minutes(1, 1), 13);
  EXPECT_EQ(Minutes(3, 1), 15);
  EXPECT_EQ(times.rounds[0].minutes, 15);
  EXPECT_EQ(times.rounds[0].lastTables[0], 3);
  EXPECT_EQ(times.byTable[2].slowest, Minutes(3, times.byTable[2].slowestRound));
  EXPECT_EQ(times.byPair[0].label, "3");  // the stationary pair of the slow table
  EXPECT_NEAR(times.byPair[0].PerBoard(), 7.5, 0.6);
  EXPECT_EQ(times.byPair.size(), 12U);
}

TEST_F(PlayTimeTest, TheBreakIsNoPlayTime) {
  EXPECT_NEAR(Minutes(1, 3), 13, 2.1);
  EXPECT_NEAR(Minutes(3, 3), 15, 2.1);
}

TEST_F(PlayTimeTest, ARoundSatOutIsNoPlayTime) {
  std::erase_if(evening.received,
                [](const ResultRow& row) { return row.Table == 1 && row.round == 2; });
  for (RoundRow& row : evening.rounds) {
    if (row.Table == 1 && row.round == 2) row = {1, 1, 2, 0, 0, 0, 0, ""};
  }
  EXPECT_NEAR(Minutes(1, 3), 13, 2.1);
  EXPECT_LT(Times().byPair[0].PerBoard(), 8);
}

TEST_F(PlayTimeTest, WrongClocksLateAndRepeatedResultsChangeLittle) {
  const SectionTimes before = Times();
  for (ResultRow& row : evening.received) {
    if (row.Table == 5) row.stamp.seconds -= 9LL * 365 * 86400;  // a unit of another year
  }
  Row(2, 2, 0).stamp.seconds += 5 * 3600;  // a single result hours away
  ResultRow again = Row(4, 1, 1);          // sent twice, the second time an hour later
  again.stamp.seconds += 3600;
  evening.received.push_back(again);
  ResultRow erased = Row(6, 1, 1);  // taken back and sent anew at the end
  erased.stamp.seconds += 1800;
  erased.Erased = -1;
  evening.received.push_back(erased);
  erased.Erased = 0;
  evening.received.push_back(erased);
  const SectionTimes after = Times();
  for (const auto& [place, time] : before.times) {
    ASSERT_TRUE(after.times.contains(place)) << place.first << ' ' << place.second;
    EXPECT_NEAR(after.times.at(place).minutes, time.minutes, 3.1)
        << "table " << place.first << " round " << place.second;
  }
}

/// Whoever plays already at the next table has not played that board until now.
TEST_F(PlayTimeTest, ABoardSentAfterItsPairsHadPlayedOnIsNoPlayTime) {
  const double before = Minutes(1, 2);
  const PlayerTimes slowest = Times().byPair[0];
  Row(1, 2, 1).stamp.seconds += 30 * 60;
  EXPECT_LE(Minutes(1, 2), before);
  EXPECT_EQ(Times().byPair[0].label, slowest.label);
  EXPECT_NEAR(Minutes(1, 3), 13, 2.1);
}

TEST_F(PlayTimeTest, WithoutAMovementTheResultsTellWhoSatWhere) {
  for (ResultRow& result : evening.received) {
    for (const RoundRow& row : evening.rounds) {
      if (row.Table != result.Table || row.round != result.round) continue;
      result.PairNS = row.NSPair;
      result.PairEW = row.EWpair;
    }
  }
  const SectionTimes with = Times();
  evening.rounds.clear();
  const SectionTimes without = Times();
  EXPECT_EQ(without.tables, with.tables);
  ASSERT_EQ(without.byPair.size(), with.byPair.size());
  EXPECT_EQ(without.byPair[0].label, with.byPair[0].label);
  EXPECT_EQ(without.times.at({3, 2}).minutes, with.times.at({3, 2}).minutes);
}

TEST_F(PlayTimeTest, TheClocksStartsTellPlayWaitAndMoveApart) {
  starts = {{1, {At(0), At(0)}}, {2, {At(14), At(15)}}, {3, {At(50), At(50)}}};
  const auto time = [&](int16_t table, int16_t round) { return Times().times.at({table, round}); };
  EXPECT_EQ(time(1, 2).minutes, 13);
  EXPECT_EQ(time(1, 2).waited, 1);
  EXPECT_EQ(time(1, 2).moved, 1);
  EXPECT_EQ(time(3, 2).waited + time(3, 2).moved, 0) << "it had played until the round began";
  EXPECT_EQ(time(1, 3).minutes, 13);
  EXPECT_EQ(time(1, 3).waited, 22) << "the break is no move";
  // Another clock than the units': the results count.
  starts = {{2, {At(34), At(35)}}};
  EXPECT_NEAR(time(1, 2).minutes, 13, 2.1);
}

TEST(RoundBookTest, KeepsWhenTheClockBeganTheRounds) {
  ScoringBench bench(ClockTime::At(19, 30), DateTime::Of(2026, 11, 20));
  ClockBench& clocks = bench.clocks;
  clocks.broadcast.Add(bench.rounds);
  SessionSettings& s = bench.session.settings;
  s.nRounds = 4;
  s.MinPerRound = 10;
  s.MinBetweenRounds = 1;
  clocks.clock.Start(1);
  bench.PassWithPolls(25 * 60);
  const auto at = [](int hour, int minute) {
    return DateTime::Of(2026, 11, 20, ClockTime::At(hour, minute));
  };
  const RoundStarts expected = {
      {1, {at(19, 30), at(19, 30)}}, {2, {at(19, 40), at(19, 41)}}, {3, {at(19, 51), at(19, 52)}}};
  EXPECT_EQ(bench.rounds.Starts(), expected);
  clocks.clock.Do(SessionCommand::NextRound);
  EXPECT_EQ(bench.rounds.Starts().size(), 4U);
  clocks.clock.Do(SessionCommand::Undo);
  EXPECT_EQ(bench.rounds.Starts(), expected);
  clocks.clock.Start(1);
  EXPECT_EQ(bench.rounds.Starts().size(), 1U);
}

/// What the clock of a fixture's evening did: rounds of 20 minutes and a minute's move from 19:30.
constexpr double kFirstStart = 19 * 60 + 30;
constexpr double kRoundAndMove = 21;

// Rounds that a clock holds together: the wait for it is no play time, and the table that is slow
// in truth stands out.
TEST(PlayTimesOfAnEveningTest, AreTheTrueOnesToHalfAMinute) {
  for (const char* name : {"friday.bws", "live/19-2210.bws"}) {
    SCOPED_TRACE(name);
    std::ifstream in(std::string(CORVANEL_FIXTURES) + "/" + name, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    const auto picture = std::make_shared<ScoringPicture>(ReadScoringPicture(bytes).Value());
    const SectionTimes times = PlayTimesOf(ScoringSession(picture, {1})).at(0);
    EXPECT_EQ(times.times.size(), 56U);
    std::map<std::pair<int, int>, double> finishes;  // by pair and round
    const auto minutes = [](DateTime time) { return time.TimeOfDay().Seconds() / 60; };
    const ScoringSession session(picture, {1});
    for (int16_t round = 1; round <= 7; ++round) {
      for (const auto& [table, rounds] : session.Sections()[0].rounds) {
        const RoundTime& time = times.times.at({table, round});
        double began = kFirstStart + kRoundAndMove * (round - 1);
        for (const int pair : {rounds.at(round).nsPair, rounds.at(round).ewPair}) {
          began = std::max(began, finishes[{pair, round - 1}]);
          finishes[{pair, round}] = minutes(time.finish);
        }
        EXPECT_NEAR(time.minutes, minutes(time.finish) - began, 0.5) << table << " in " << round;
      }
    }
    double all = 0;
    for (const RoundSummary& round : times.rounds) {
      EXPECT_LE(round.minutes, kRoundAndMove + 1) << round.round;
      all += round.minutes;
    }
    EXPECT_LE(all, 7 * kRoundAndMove + 1) << "rounds do not overlap";
  }
}

TEST(PlayTimesOfAnEveningTest, ThePairThatIsSlowIsFoundAndNotWhoItMet) {
  std::ifstream in(std::string(CORVANEL_FIXTURES) + "/live/19-2210.bws", std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(in), {});
  const auto picture = std::make_shared<ScoringPicture>(ReadScoringPicture(bytes).Value());
  const SectionTimes times = PlayTimesOf(ScoringSession(picture, {1})).at(0);
  const PlayerTimes& slowest = times.byPair.front();
  EXPECT_EQ(slowest.label, "5");  // it sits at the slow table all evening
  EXPECT_GT(slowest.excess, 1);
  EXPECT_LT(slowest.sure, 0.5);
  EXPECT_LT(times.byPair[1].excess, slowest.excess / 2);
}

TEST_F(PlayTimeTest, TheReportNamesSectionsRoundsAndPairs) {
  evening.players = {{1, 3, "N", "1", "Ann"}, {1, 3, "S", "2", "Bob"}};
  const auto picture = std::make_shared<ScoringPicture>(evening);
  const ScoringSession session(picture, {1});
  const std::string report = PlayTimeReport(session, PlayTimesOf(session));
  EXPECT_THAT(report, HasSubstr("Test pairs\r\n2026-11-20 19:30\r\n"));
  EXPECT_THAT(report, HasSubstr("     1      15.0   3, 6, 5\r\n"));
  EXPECT_THAT(report, HasSubstr("Ann & Bob\r\n"));
  evening.received.clear();
  const ScoringSession none(std::make_shared<ScoringPicture>(evening), {1});
  EXPECT_THAT(PlayTimeReport(none, PlayTimesOf(none)), HasSubstr("No results with a time\r\n"));
}

}  // namespace
}  // namespace corvanel
