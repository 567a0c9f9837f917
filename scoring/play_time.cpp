#include "scoring/play_time.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace corvanel {
namespace {

constexpr double kWrongClock = 25;    // minutes off the other tables all evening
constexpr double kFarOff = 75;        // minutes off its round: a result that tells nothing
constexpr double kBreak = 8;          // minutes in which a whole section played nothing
constexpr double kFirstResult = 45;   // minutes from the session's start within which one comes
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
  SectionClock(const ScoringSession& session, const ScoringSection& section)
      : session_(session), section_(section), sendings_(SendingsOf(session, section)) {
    Straighten(sendings_);
    shared_ = section.SharesNumbers();
    for (const auto& [place, minutes] : sendings_) rounds_.insert(place.second);
  }

  SectionTimes Times() {
    times_.letter = section_.row.letter;
    for (const auto& [table, rounds] : section_.rounds) times_.tables.push_back(table);
    for (const int16_t round : rounds_) TakeRound(round);
    Rank();
    return std::move(times_);
  }

 private:
  Pair PairAt(const TableRound& row, bool eastWest) const {
    return {eastWest ? row.ewPair : row.nsPair, shared_ && eastWest};
  }

  /// When a table could begin a round: both its pairs were free. Whoever sat out the round before
  /// begins with the others.
  double FreeAt(const TableRound& row, double others) const {
    double free = 0;
    for (const bool eastWest : {false, true}) {
      const auto finished = finishes_.find(PairAt(row, eastWest));
      const bool sat = finished == finishes_.end() || finished->second.first != lastRound_;
      free = std::max(free, sat ? others : finished->second.second);
    }
    return free;
  }

  /// When the first round began: at the session's start, or so long before the first results as a
  /// board takes.
  double FirstStart(int16_t round) const {
    std::vector<double> firsts;
    for (const auto& [place, minutes] : sendings_) {
      if (place.second == round)
        firsts.push_back(*std::min_element(minutes.begin(), minutes.end()));
    }
    const double first = Median(firsts);
    const double start = static_cast<double>(session_.Picture().SessionStart().seconds) / 60;
    return first > start && first - start < kFirstResult ? start : first - kUsualPerBoard;
  }

  void TakeRound(int16_t round) {
    struct Played {
      int16_t table;
      const TableRound* row;
      double start;
      double first;
      double last;
      int boards;
    };
    std::vector<Played> played;
    std::vector<double> waits;
    const double sectionStart = lastEnd_.value_or(FirstStart(round));
    for (const auto& [place, minutes] : sendings_) {
      const TableRound* row = section_.Find(place.first, round);
      if (place.second != round || row == nullptr) continue;
      const auto [first, last] = std::minmax_element(minutes.begin(), minutes.end());
      const double start = std::min(FreeAt(*row, sectionStart), *first);
      played.push_back({place.first, row, start, *first, *last, static_cast<int>(minutes.size())});
      waits.push_back(*first - start - kUsualPerBoard);
    }
    if (played.empty()) return;
    // Nobody sent anything for long: that was the break.
    const double wait = Median(waits);
    const double pause = lastEnd_ && wait > kBreak ? wait : 0;
    double began = 1e18;
    std::vector<std::pair<double, int16_t>> order;
    for (const Played& table : played) {
      const double start = std::min(table.start + pause, table.first);
      times_.times[{table.table, round}] = {
          table.last - start, table.boards, {std::llround(table.last * 60)}};
      began = std::min(began, start);
      order.emplace_back(table.last, table.table);
    }
    std::sort(order.rbegin(), order.rend());
    RoundSummary summary{round, order.front().first - began, {}};
    for (const auto& [last, table] : order) {
      if (summary.lastTables.size() < kLastTables) summary.lastTables.push_back(table);
    }
    times_.rounds.push_back(summary);
    for (const Played& table : played) {
      for (const bool eastWest : {false, true}) {
        finishes_[PairAt(*table.row, eastWest)] = {round, table.last};
      }
    }
    std::vector<double> ends;
    ends.reserve(order.size());
    for (const auto& [last, table] : order) ends.push_back(last);
    lastEnd_ = Median(ends);
    lastRound_ = round;
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
    for (const auto& [table, rounds] : section_.rounds) {
      const TableRound* first = section_.Find(table, 1);
      if (first == nullptr) continue;
      for (const bool eastWest : {false, true}) {
        if (PairAt(*first, eastWest) == pair) return SeatNames(table, eastWest ? "EW" : "NS");
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
      const TableRound* row = section_.Find(place.first, place.second);
      for (const bool eastWest : {false, true}) {
        const Pair pair = PairAt(*row, eastWest);
        if (pair.number != 0) Add(pairs[pair], place.second, time);
      }
    }
    for (auto& [table, player] : tables) {
      player.label = std::to_string(table);
      times_.byTable.push_back(player);
    }
    for (auto& [pair, player] : pairs) {
      player.label = LabelOf(pair);
      player.names = NamesOf(pair);
      times_.byPair.push_back(player);
    }
    std::stable_sort(
        times_.byPair.begin(), times_.byPair.end(),
        [](const PlayerTimes& a, const PlayerTimes& b) { return a.PerBoard() > b.PerBoard(); });
  }

  const ScoringSession& session_;
  const ScoringSection& section_;
  Sendings sendings_;
  bool shared_ = false;
  std::set<int16_t> rounds_;
  std::map<Pair, std::pair<int16_t, double>> finishes_;  // last round played, and its end
  int16_t lastRound_ = 0;
  std::optional<double> lastEnd_;  // of the round before, for most tables
  SectionTimes times_;
};

}  // namespace

std::vector<SectionTimes> PlayTimesOf(const ScoringSession& session) {
  std::vector<SectionTimes> times;
  for (const ScoringSection& section : session.Sections()) {
    if (section.selected) times.push_back(SectionClock(session, section).Times());
  }
  return times;
}

}  // namespace corvanel
