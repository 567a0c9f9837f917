#pragma once

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/any_movement.h"
#include "tests/support/scoring_bench.h"

namespace corvanel {

/// A result on its way to the scoring file.
struct Sending {
  double at = 0;  // seconds of the evening
  ResultRow row;
  bool takenAway = false;  // the scoring program deletes the row instead
};

/// One evening: any movement of one or two sections, not all of them followed; tables of their own
/// pace, one of them slow, perhaps one that nobody plays at; units that are late, send twice or
/// have a wrong clock; results that are corrected or deleted; rounds that the file learns of while
/// the session runs; a break; and perhaps another session's file that lies in the place of
/// tonight's for some minutes.
class ChanceEvening {
 public:
  explicit ChanceEvening(unsigned seed);
  virtual ~ChanceEvening() = default;

  void Play();

 protected:
  /// After each poll.
  virtual void Look() {}
  ScoringBench& Bench() { return bench_; }
  const ClockState& State() { return bench_.clocks.clock.State(); }
  /// The tables that have boards of the round in play before them, by the file, as the displays
  /// name them.
  std::vector<std::string> Playing() const;
  int RoundInFile() const { return played_; }
  /// Whether another session's file lies in the place of tonight's, or did at the last poll.
  bool IsSwapped() const { return swapped_; }

 private:
  void Open();
  void BeginRound(double now);
  void SendBoard(const RoundRow& row, int16_t board, double at);
  void Deliver(double now);
  size_t Standing(const RoundRow& row) const;
  void Judge(double now, const ClockState& before, double left);
  void LeaveOutWhoIsNamed();
  std::string LabelOf(TableId table) const;
  bool Follows(const RoundRow& row) const;
  /// What tonight's file tells when so many rounds are drawn.
  ScoringPicture Written(int drawn) const;
  ScoringPicture AnotherEvening() const;

  Dice dice_;
  int rounds_;
  int boards_;
  ScoringPicture picture_;
  std::set<int16_t> followed_;  // sections
  bool drawn_;                  // round by round
  TableId slow_;
  TableId dead_;  // {0, 0} for none
  double swapFrom_;
  double swapUntil_;
  ScoringBench bench_;
  int16_t played_ = 0;
  double began_ = 0;  // the round in play
  std::map<TableId, double> free_;
  std::vector<Sending> due_;
  double changed_ = 0;
  bool deadCounts_;
  std::tuple<bool, int, double> content_;  // of the file: other session, rounds, last change
  bool swapped_ = false;
  bool swappedInRound_ = false;
};

}  // namespace corvanel
