#include "scoring/play_time.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace corvanel {
namespace {

constexpr double kWrongClock = 25;  // minutes off the other tables all evening
constexpr double kFarOff = 75;      // minutes off its round: a result that tells nothing
constexpr double kOnTime = 3;       // minutes between a known start and what the results tell of it
constexpr double kUsualPerBoard = 7;  // minutes, where the results tell nothing better
constexpr size_t kLastTables = 3;

double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
}

using TableAndRound = std::pair<int16_t, int16_t>;
/// When the boards of each table and round were first sent, in minutes.
using Sendings = std::map<TableAndRound, std::vector<double>>;

Sendings SendingsOf(const ScoringSession& session, const ScoringSection& section) {
  std::map<TableAndRound, std::map<int16_t, double>> first;
  for (const ResultRow* row : session.Results()) {
    if (row->Section != section.row.ID || row->Erased != 0 || row->stamp == DateTime()) continue;
    const double minutes = static_cast<double>(row->stamp.seconds) / 60;
    first[{row->Table, row->round}].emplace(row->Board, minutes);
  }
  Sendings sendings;
  for (const auto& [place, boards] : first) {
    const ReceivedBoards* counted = session.Received(section.row.ID, place.first, place.second);
    for (const auto& [board, minutes] : boards) {
      if (counted->Counts(board)) sendings[place].push_back(minutes);
    }
  }
  return sendings;
}

/// The middle of what the tables sent in a round, one of them left out.
double MiddleOf(const Sendings& sendings, int16_t round, int16_t without) {
  std::vector<double> all;
  for (const auto& [place, minutes] : sendings) {
    if (place.second == round && place.first != without) {
      all.insert(all.end(), minutes.begin(), minutes.end());
    }
  }
  return Median(all);
}

/// Sets the units right whose clocks are wrong, and drops results that are far from their round.
void Straighten(Sendings& sendings) {
  std::map<int16_t, std::vector<double>> off;  // by table
  for (const auto& [place, minutes] : sendings) {
    const double others = MiddleOf(sendings, place.second, place.first);
    if (others != 0) off[place.first].push_back(Median(minutes) - others);
  }
  for (auto& [place, minutes] : sendings) {
    const double wrong = Median(off[place.first]);
    if (std::abs(wrong) < kWrongClock) continue;
    for (double& minute : minutes) minute -= wrong;
  }
  const Sendings straight = sendings;
  for (auto& [place, minutes] : sendings) {
    const double middle = MiddleOf(straight, place.second, 0);
    std::erase_if(minutes, [&](double minute) { return std::abs(minute - middle) > kFarOff; });
  }
  std::erase_if(sendings, [](const auto& entry) { return entry.second.empty(); });
}

/// A pair by its number, and by its side where both sides have the same numbers.
struct Pair {
  int16_t number = 0;
  bool eastWest = false;

  auto operator<=>(const Pair&) const = default;  // NOLINT(modernize-use-nullptr)
};

class SectionClock {
 public:
  SectionClock(const ScoringSession& session, const ScoringSection& section,
               const RoundStarts& starts)
      : session_(session),
        section_(section),
        starts_(starts),
        sendings_(SendingsOf(session, section)) {
    Straighten(sendings_);
    Seat();
    DropLate();
    shared_ = section.SharesNumbers();
    for (const auto& [place, minutes] : sendings_) rounds_.insert(place.second);
  }

  SectionTimes Times() {
    times_.letter = section_.row.letter;
    for (const auto& [place, seated] : seats_) {
      if (times_.tables.empty() || times_.tables.back() != place.first) {
        times_.tables.push_back(place.first);
      }
    }
    for (const int16_t round : rounds_) TakeRound(round);
    Rank();
    return std::move(times_);
  }

 private:
  /// Who sits where: by the movement, and where the file has none, by the results.
  void Seat() {
    for (const auto& [table, rounds] : section_.rounds) {
      for (const auto& [round, seated] : rounds) seats_[{table, round}] = seated;
    }
    for (const ResultRow* row : session_.Results()) {
      if (row->Section != section_.row.ID || row->Erased != 0) continue;
      seats_.try_emplace({row->Table, row->round}, TableRound{row->PairNS, row->PairEW, {}, false});
    }
  }

  const TableRound& At(const TableAndRound& place) const { return seats_.at(place); }

  /// A board sent after both its pairs had played on tells nothing of when it was played.
  void DropLate() {
    std::map<Pair, std::map<int16_t, double>> firsts;  // what a pair's table sent first, by round
    for (const auto& [place, minutes] : sendings_) {
      for (const bool eastWest : {false, true}) {
        firsts[PairAt(At(place), eastWest)][place.second] =
            *std::min_element(minutes.begin(), minutes.end());
      }
    }
    for (auto& [place, minutes] : sendings_) {
      double playedOn = 0;
      for (const bool eastWest : {false, true}) {
        const auto& rounds = firsts[PairAt(At(place), eastWest)];
        const auto next = rounds.upper_bound(place.second);
        if (next != rounds.end()) playedOn = std::max(playedOn, next->second);
      }
      if (playedOn == 0) continue;
      std::erase_if(minutes, [&](double minute) { return minute > playedOn; });
    }
    std::erase_if(sendings_, [](const auto& entry) { return entry.second.empty(); });
  }

  Pair PairAt(const TableRound& row, bool eastWest) const {
    return {eastWest ? row.ewPair : row.nsPair, shared_ && eastWest};
  }

  /// When both pairs of a table were free. Whoever sat out the round before, or has not played yet,
  /// is free from its beginning on.
  double FreeAt(const TableRound& row, double began) const {
    double free = 0;
    for (const bool eastWest : {false, true}) {
      const auto finished = finishes_.find(PairAt(row, eastWest));
      const bool sat = finished == finishes_.end() || finished->second.first != lastRound_;
      free = std::max(free, sat ? began : finished->second.second);
    }
    return free;
  }

  static double Minutes(DateTime moment) { return static_cast<double>(moment.seconds) / 60; }

  /// When a round began, where the clock or (of the first one) the file says so and the results do
  /// not speak against it: the units may go by another time. Null for nothing.
  const RoundStart* KnownStart(int16_t round, double begin) const {
    const auto clocked = starts_.find(round);
    const RoundStart* known = clocked != starts_.end() ? &clocked->second
                              : lastRound_ == 0        ? &scheduled_
                                                       : nullptr;
    return known != nullptr && std::abs(begin - Minutes(known->began)) <= kOnTime ? known : nullptr;
  }

  /// The same from the results: for most tables as long before their first one as their later
  /// boards took.
  double BeginOf(int16_t round) const {
    std::vector<double> begins;
    std::vector<double> firsts;
    for (const auto& [place, minutes] : sendings_) {
      if (place.second != round) continue;
      const auto [first, last] = std::minmax_element(minutes.begin(), minutes.end());
      firsts.push_back(*first - kUsualPerBoard);
      const auto others = static_cast<double>(minutes.size() - 1);
      if (others > 0) begins.push_back(*first - (*last - *first) / others);
    }
    return Median(begins.empty() ? firsts : begins);
  }

  void TakeRound(int16_t round) {
    const double begun = BeginOf(round);
    const RoundStart* known = KnownStart(round, begun);
    const double began = known != nullptr ? Minutes(known->began) : begun;
    // Only the clock tells the move from the wait before it.
    const double move = known != nullptr ? Minutes(known->moved) : began;
    std::vector<std::pair<double, int16_t>> order;  // of finishing
    for (const auto& [place, minutes] : sendings_) {
      if (place.second != round) continue;
      const auto [first, last] = std::minmax_element(minutes.begin(), minutes.end());
      const double free = std::min(FreeAt(At(place), began), *first);
      const double start = std::min(std::max(free, began), *first);
      const double moved = std::max(std::min(start, began) - std::max(free, move), 0.0);
      times_.times[place] = {*last - start,
                             lastRound_ ? start - free - moved : 0,
                             lastRound_ ? moved : 0,
                             static_cast<int>(minutes.size()),
                             {std::llround(*last * 60)}};
      order.emplace_back(*last, place.first);
    }
    if (order.empty()) return;
    std::sort(order.rbegin(), order.rend());
    if (lastRound_) {
      RoundSummary& before = times_.rounds.back();
      before.minutes = std::min(before.minutes, began - lastBegan_);
    }
    RoundSummary summary{round, order.front().first - began, {}};
    for (const auto& [last, table] : order) {
      if (summary.lastTables.size() < kLastTables) summary.lastTables.push_back(table);
      const TableRound& row = At({table, round});
      for (const bool eastWest : {false, true}) finishes_[PairAt(row, eastWest)] = {round, last};
    }
    times_.rounds.push_back(summary);
    lastBegan_ = began;
    lastRound_ = round;
  }

  /// How much longer a table took for a board than the others of the round.
  double ExcessOf(const TableAndRound& place, const RoundTime& time) const {
    std::vector<double> others;
    for (const auto& [other, round] : times_.times) {
      if (other.second == place.second && round.boards > 0) {
        others.push_back(round.minutes / round.boards);
      }
    }
    return time.boards == 0 ? 0 : time.minutes / time.boards - Median(others);
  }

  /// Shares what a table took beyond the others between its two pairs: each gets what remains when
  /// what the other is known for is taken off, over and over until it stands.
  void ShareOut(std::map<Pair, PlayerTimes>& pairs) const {
    constexpr int kPasses = 60;
    constexpr double kCaution = 0.5;  // of a round in which a pair would have been as quick as most
    const std::vector<Meeting> meetings = Meetings();
    for (int pass = 0; pass < kPasses; ++pass) {
      std::map<Pair, double> sums;
      for (const Meeting& met : meetings) sums[met.one] += met.excess - pairs[met.other].excess;
      for (auto& [pair, sum] : sums) {
        // Half way, or the two of a table would overshoot each other.
        const double wanted = sum / (pairs[pair].rounds + kCaution);
        pairs[pair].excess += (wanted - pairs[pair].excess) / 2;
      }
    }
    std::map<Pair, double> squares;
    for (const Meeting& met : meetings) {
      const double left = met.excess - pairs[met.one].excess - pairs[met.other].excess;
      squares[met.one] += left * left;
    }
    for (auto& [pair, player] : pairs) {
      const double rounds = std::max(player.rounds, 1);
      player.sure = rounds < 2 ? std::abs(player.excess)
                               : std::sqrt(squares[pair] / (rounds - 1)) / std::sqrt(rounds);
    }
  }

  /// A pair, the one it met in a round, and what their table took beyond the others.
  struct Meeting {
    Pair one;
    Pair other;
    double excess;
  };

  /// Each of them from both sides.
  std::vector<Meeting> Meetings() const {
    std::vector<Meeting> meetings;
    for (const auto& [place, time] : times_.times) {
      const Pair one = PairAt(At(place), false);
      const Pair other = PairAt(At(place), true);
      if (one.number == 0 || other.number == 0) continue;
      const double excess = ExcessOf(place, time);
      meetings.push_back({one, other, excess});
      meetings.push_back({other, one, excess});
    }
    return meetings;
  }

  static void Add(PlayerTimes& player, int16_t round, const RoundTime& time) {
    player.boards += time.boards;
    ++player.rounds;
    player.total += time.minutes;
    if (time.minutes <= player.slowest) return;
    player.slowest = time.minutes;
    player.slowestRound = round;
  }

  std::string LabelOf(const Pair& pair) const {
    const std::string side = shared_ ? (pair.eastWest ? "EW " : "NS ") : "";
    return side + std::to_string(pair.number);
  }

  /// The players of a pair sat down for the first round where the seats' names say.
  std::string NamesOf(const Pair& pair) const {
    for (const auto& [place, seated] : seats_) {
      if (place.second != 1) continue;
      for (const bool eastWest : {false, true}) {
        if (PairAt(seated, eastWest) == pair) return SeatNames(place.first, eastWest ? "EW" : "NS");
      }
    }
    return {};
  }

  std::string SeatNames(int16_t table, std::string_view seats) const {
    std::string names;
    for (const PlayerRow& seat : session_.Picture().players) {
      if (seat.Section != section_.row.ID || seat.Table != table || seat.Name.empty()) continue;
      if (seat.Direction.empty() || seats.find(seat.Direction[0]) == std::string_view::npos)
        continue;
      names += (names.empty() ? "" : " & ") + seat.Name;
    }
    return names;
  }

  void Rank() {
    std::map<int16_t, PlayerTimes> tables;
    std::map<Pair, PlayerTimes> pairs;
    for (const auto& [place, time] : times_.times) {
      Add(tables[place.first], place.second, time);
      for (const bool eastWest : {false, true}) {
        const Pair pair = PairAt(At(place), eastWest);
        if (pair.number != 0) Add(pairs[pair], place.second, time);
      }
    }
    for (auto& [table, player] : tables) {
      player.label = std::to_string(table);
      times_.byTable.push_back(player);
    }
    ShareOut(pairs);
    for (auto& [pair, player] : pairs) {
      player.label = LabelOf(pair);
      player.names = NamesOf(pair);
      times_.byPair.push_back(player);
    }
    std::stable_sort(
        times_.byPair.begin(), times_.byPair.end(),
        [](const PlayerTimes& a, const PlayerTimes& b) { return a.excess > b.excess; });
  }

  const ScoringSession& session_;
  const ScoringSection& section_;
  const RoundStarts& starts_;
  const RoundStart scheduled_{session_.Picture().SessionStart(), session_.Picture().SessionStart()};
  Sendings sendings_;
  std::map<TableAndRound, TableRound> seats_;
  bool shared_ = false;
  std::set<int16_t> rounds_;
  std::map<Pair, std::pair<int16_t, double>> finishes_;  // last round played, and its end
  int16_t lastRound_ = 0;
  double lastBegan_ = 0;  // the round before
  SectionTimes times_;
};

}  // namespace

std::vector<SectionTimes> PlayTimesOf(const ScoringSession& session, const RoundStarts& starts) {
  std::vector<SectionTimes> times;
  for (const ScoringSection& section : session.Sections()) {
    if (section.selected) times.push_back(SectionClock(session, section, starts).Times());
  }
  return times;
}

}  // namespace corvanel
