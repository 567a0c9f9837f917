#include "scoring/movement.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>
#include <optional>

namespace corvanel {
namespace {

struct Seat {
  int16_t table = 0;
  bool northSouth = true;
};

/// Where each pair sits, by round. Where both sides of a section have the same numbers, an
/// east-west pair has its number negative.
using Seating = std::map<int16_t, std::map<int16_t, Seat>>;

/// Nothing when a number stands twice in a round and so tells nothing.
std::optional<Seating> SeatingOf(const ScoringSection& section) {
  const bool shared = section.SharesNumbers();
  Seating seating;
  for (const auto& [table, rounds] : section.rounds) {
    for (const auto& [round, row] : rounds) {
      if (row.boards.empty()) continue;
      const auto ew = static_cast<int16_t>(shared ? -row.ewPair : row.ewPair);
      const std::pair<int16_t, bool> sides[] = {{row.nsPair, true}, {ew, false}};
      for (const auto& [pair, northSouth] : sides) {
        if (pair == 0) continue;
        if (!seating[round].emplace(pair, Seat{table, northSouth}).second) return std::nullopt;
      }
    }
  }
  return seating;
}

/// The tables at which the section plays, in their order: pairs move from one to the next.
std::vector<int16_t> PlayingTables(const Seating& seating) {
  std::set<int16_t> tables;
  for (const auto& [round, seats] : seating) {
    for (const auto& [pair, seat] : seats) tables.insert(seat.table);
  }
  return {tables.begin(), tables.end()};
}

std::map<int16_t, bool> FirstSides(const Seating& seating) {
  std::map<int16_t, bool> sides;
  for (const auto& [round, seats] : seating) {
    for (const auto& [pair, seat] : seats) sides.emplace(pair, seat.northSouth);
  }
  return sides;
}

/// The rounds that are played switched; nothing when a round is neither wholly one way nor the
/// other.
std::optional<std::set<int16_t>> SwitchedRounds(const Seating& seating) {
  std::set<int16_t> switched;
  const std::map<int16_t, bool> sides = FirstSides(seating);
  for (const auto& [round, seats] : seating) {
    size_t turned = 0;
    for (const auto& [pair, seat] : seats) turned += sides.at(pair) != seat.northSouth ? 1U : 0U;
    if (turned != 0 && turned != seats.size()) return std::nullopt;
    if (turned != 0) switched.insert(round);
  }
  return switched;
}

/// By how many tables, 0 up to one less than there are, every pair of a side moves after a round;
/// nothing when they do not all move alike.
std::optional<int> MoveAfter(const Seating& seating, int16_t round, bool northSouth,
                             const std::vector<int16_t>& tables) {
  const auto next = seating.find(static_cast<int16_t>(round + 1));
  if (next == seating.end()) return std::nullopt;
  const auto count = static_cast<int>(tables.size());
  const auto place = [&](int16_t table) {
    return static_cast<int>(std::lower_bound(tables.begin(), tables.end(), table) - tables.begin());
  };
  const std::map<int16_t, bool> sides = FirstSides(seating);
  std::optional<int> move;
  for (const auto& [pair, seat] : seating.at(round)) {
    const auto then = next->second.find(pair);
    if (sides.at(pair) != northSouth || then == next->second.end()) continue;
    const int moved = (place(then->second.table) - place(seat.table) + count) % count;
    if (move.value_or(moved) != moved) return std::nullopt;
    move = moved;
  }
  return move;
}

/// The move that most rounds have; of two that are as frequent the one to a neighbouring table.
int UsualMove(const std::map<int16_t, int>& moves, int tables) {
  std::map<int, int> times;
  for (const auto& [round, move] : moves) ++times[move];
  const auto weight = [&](const std::pair<const int, int>& entry) {
    const bool neighbour = entry.first == 1 || entry.first == tables - 1;
    return std::pair(entry.second, neighbour);
  };
  return std::max_element(times.begin(), times.end(),
                          [&](const auto& a, const auto& b) { return weight(a) < weight(b); })
      ->first;
}

/// The rounds after which the moving side goes twice as far as usual.
std::set<int16_t> SkipRounds(const Seating& seating) {
  const std::vector<int16_t> tables = PlayingTables(seating);
  if (tables.size() < 3) return {};
  std::map<int16_t, int> moves;
  for (const auto& [round, seats] : seating) {
    const auto ns = MoveAfter(seating, round, true, tables);
    const auto ew = MoveAfter(seating, round, false, tables);
    if (!ns || !ew) continue;
    if (*ns != 0 && *ew != 0) return {};
    moves[round] = std::max(*ns, *ew);
  }
  if (moves.empty()) return {};
  const auto count = static_cast<int>(tables.size());
  const int usual = UsualMove(moves, count);
  std::set<int16_t> skips;
  for (const auto& [round, move] : moves) {
    if (move != usual && move == 2 * usual % count) skips.insert(round);
  }
  return skips;
}

/// What two sections have in common.
void Agree(std::optional<std::set<int16_t>>& all, const std::set<int16_t>& one) {
  if (!all) {
    all = one;
    return;
  }
  std::set<int16_t> both;
  std::set_intersection(all->begin(), all->end(), one.begin(), one.end(),
                        std::inserter(both, both.end()));
  all = both;
}

}  // namespace

MovementMarks MarksOf(const ScoringSession& session) {
  std::optional<std::set<int16_t>> skips;
  std::optional<std::set<int16_t>> switches;
  for (const ScoringSection& section : session.Sections()) {
    if (!section.selected || section.rounds.empty()) continue;
    const auto seating = SeatingOf(section);
    const auto switched = seating ? SwitchedRounds(*seating) : std::nullopt;
    std::set<int16_t> after;
    if (switched) {
      for (const int16_t round : *switched) after.insert(static_cast<int16_t>(round - 1));
    }
    Agree(switches, after);
    Agree(skips, switched ? SkipRounds(*seating) : std::set<int16_t>());
  }
  return {fmt::format("{}", fmt::join(skips.value_or(std::set<int16_t>()), ",")),
          fmt::format("{}", fmt::join(switches.value_or(std::set<int16_t>()), ","))};
}

}  // namespace corvanel
