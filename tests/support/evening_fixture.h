#pragma once

#include <gtest/gtest.h>

#include <map>

#include "tests/support/scoring_bench.h"

namespace corvanel {

/// Eight tables, three boards of seven minutes, rounds of 21 minutes with a minute's move.
class EveningTest : public testing::Test {
 protected:
  EveningTest() {
    bench.session.settings.nRounds = 7;
    bench.Open(evening);
    SessionSettings& s = bench.session.settings;
    s.optBreak = false;
    s.MinBetweenRounds = 1;
    bench.session.options.BMPauseSound = "bell";
    bench.clocks.clock.Start(1);
  }

  /// A table sends the next boards of a round.
  void Send(int table, int round, int boards) {
    for (const RoundRow& row : evening.rounds) {
      if (row.Table != table || row.round != round) continue;
      int& sent = sent_[{table, round}];
      for (; boards > 0; --boards) {
        evening.received.push_back(ResultOf(table, round, row.LowBoard + sent++));
      }
    }
    bench.Write(evening);
  }
  void AllSend(int round, int boards) {
    for (int table = 1; table <= 8; ++table) Send(table, round, boards);
  }
  const ClockState& State() { return bench.clocks.clock.State(); }
  const std::vector<std::string>& Lines() { return bench.face.lines; }

  ScoringPicture evening = Mitchell(8, 7, 3);
  ScoringBench bench;

 private:
  std::map<std::pair<int, int>, int> sent_;
};

}  // namespace corvanel
