#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/support/scoring_bench.h"

namespace corvanel {

inline constexpr double kPatience = 15;  // seconds in which polls must have noticed what there is

/// A result on its way to the scoring file.
struct Sending {
  double at = 0;  // seconds of the evening
  ResultRow row;
  bool takenAway = false;  // the scoring program deletes the row instead
};

/// One evening: tables of their own pace, one of them slow, perhaps one that nobody plays at; units
/// that are late, send twice or have a wrong clock; results that are corrected or deleted.
class ChanceEvening {
 public:
  explicit ChanceEvening(unsigned seed)
      : random_(seed),
        tables_(Below(3, 8)),
        rounds_(Below(3, 5)),
        boards_(Below(2, 3)),
        slow_(Below(1, tables_)),
        dead_(Chance(0.25) ? tables_ : 0),
        picture_(Mitchell(tables_, rounds_, boards_)) {
    bench_.session.options.BMMinPerBoard = 4;
    bench_.Open(picture_);
    SessionSettings& s = bench_.session.settings;
    s.optBreak = false;
    s.MinBetweenRounds = 0.5;
    bench_.clocks.clock.Start(1);
  }

  virtual ~ChanceEvening() = default;

  void Play() {
    for (double now = 0; now < 4 * 3600 && State().phase != Phase::Ended; now += kPollSeconds) {
      if (State().phase == Phase::Round && State().round != played_) BeginRound(now);
      Deliver(now);
      const ClockState before = State();
      const double left = bench_.clocks.clock.Now().secondsLeft;
      bench_.PassWithPolls(kPollSeconds);
      Judge(now + kPollSeconds, before, left);
      Look();
      LeaveOutWhoIsNamed();
    }
    EXPECT_EQ(State().phase, Phase::Ended);
    EXPECT_EQ(State().round, rounds_);
  }

 protected:
  /// After each poll.
  virtual void Look() {}
  ScoringBench& Bench() { return bench_; }
  const ClockState& State() { return bench_.clocks.clock.State(); }
  /// The tables that have boards of the round in play before them, by the file.
  std::vector<int> Playing() const {
    std::vector<int> playing;
    for (int table = 1; table <= tables_; ++table) {
      if (table != dead_ && Standing(table) < boards_) playing.push_back(table);
    }
    return playing;
  }
  int TableWithoutPlayers() const { return dead_; }
  int RoundInFile() const { return played_; }

 private:
  int Below(int least, int greatest) {
    return std::uniform_int_distribution<int>(least, greatest)(random_);
  }
  bool Chance(double share) { return std::bernoulli_distribution(share)(random_); }
  double Between(double least, double greatest) {
    return std::uniform_real_distribution<double>(least, greatest)(random_);
  }

  /// What each table will do in the round that has begun.
  void BeginRound(double now) {
    played_ = State().round;
    for (const RoundRow& row : picture_.rounds) {
      if (row.round != played_ || row.Table == dead_) continue;
      double at = std::max(now, free_[row.Table]);
      for (int16_t board = row.LowBoard; board <= row.HighBoard; ++board) {
        at += 60 * Between(2.6, 3.9) * (row.Table == slow_ ? 1.4 : 1);
        SendBoard(row.Table, board, at);
      }
      free_[row.Table] = at;
    }
  }

  void SendBoard(int table, int16_t board, double at) {
    ResultRow row = ResultOf(table, played_, board);
    // The clock of a unit may be off by years, and is not what matters.
    row.stamp.seconds += std::llround(at) - (table == 2 ? 9LL * 365 * 86400 : 0);
    const double sent = at + (Chance(0.1) ? Between(5, 40) : 0);
    due_.push_back({sent, row});
    if (Chance(0.05)) due_.push_back({sent + 8, row});
    if (Chance(0.06)) {
      ResultRow erased = row;
      erased.Erased = -1;
      due_.push_back({sent + 20, erased});
      due_.push_back({sent + 45, row});
    }
    if (Chance(0.03)) {
      due_.push_back({sent + 30, row, true});
      due_.push_back({sent + 60, row});
    }
  }

  void Deliver(double now) {
    std::stable_sort(due_.begin(), due_.end(),
                     [](const Sending& a, const Sending& b) { return a.at < b.at; });
    while (!due_.empty() && due_.front().at <= now) {
      const Sending next = due_.front();
      due_.erase(due_.begin());
      std::vector<ResultRow>& rows = picture_.received;
      if (next.takenAway) {
        std::erase(rows, next.row);
      } else {
        rows.push_back(next.row);
      }
      changed_ = now;
    }
    bench_.Write(picture_);
  }

  /// The boards of the round in play whose results stand in the file.
  int Standing(int table) const {
    std::map<int16_t, int> sums;
    for (const ResultRow& row : picture_.received) {
      if (row.Table == table && row.round == played_) sums[row.Board] += row.Erased == 0 ? 1 : -1;
    }
    return static_cast<int>(
        std::count_if(sums.begin(), sums.end(), [](const auto& b) { return b.second > 0; }));
  }

  void Judge(double now, const ClockState& before, double left) {
    if (State().round != played_) return;  // the next round has begun just now
    const std::vector<int> playing = Playing();
    const bool ended = before.phase == Phase::Round && State().phase != Phase::Round;
    if (ended && left > kPollSeconds) {
      EXPECT_TRUE(playing.empty())
          << "ended with a table playing, round " << played_ << " at " << now;
    }
    const bool settled = now - changed_ > kPatience;
    const auto limit = static_cast<size_t>(bench_.session.options.BMPauseTables);
    if (State().autoPaused && settled) {
      EXPECT_GT(playing.size() + (deadCounts_ && dead_ != 0 ? 1 : 0), limit)
          << "held for nobody, round " << played_ << " at " << now;
    }
    if (State().phase == Phase::Round && settled && playing.empty() && !deadCounts_) {
      ADD_FAILURE() << "round " << played_ << " goes on with nobody playing at " << now;
    }
    for (const std::string& line : bench_.face.lines) {
      if (!line.starts_with("Tables ") && !line.starts_with("Table ")) continue;
      for (const int table : playing) {
        EXPECT_NE((line + ' ').find(fmt::format(" {} ", table)), std::string::npos)
            << line << " without table " << table;
      }
    }
  }

  void LeaveOutWhoIsNamed() {
    if (const auto silent = bench_.monitor.SilentTable(std::to_string(dead_)); silent) {
      bench_.link.LeaveOut(*silent);
    }
    deadCounts_ = dead_ != 0 && bench_.link.LeftOut().empty();
  }

  std::mt19937 random_;
  int tables_;
  int rounds_;
  int boards_;
  int slow_;
  int dead_;  // 0 for none
  ScoringPicture picture_;
  ScoringBench bench_;
  int16_t played_ = 0;
  std::map<int, double> free_;
  std::vector<Sending> due_;
  double changed_ = 0;
  bool deadCounts_ = dead_ != 0;
};

}  // namespace corvanel
