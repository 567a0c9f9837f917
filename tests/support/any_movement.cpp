#include "tests/support/any_movement.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <sstream>

namespace corvanel {
namespace {

int16_t Short(int number) {
  return static_cast<int16_t>(number);
}

enum class Kind { Numbered, TwoWinners, Howell };

/// Who meets at a table: both numbers from 1.
std::pair<int, int> Meeting(Kind kind, int tables, int round, int table) {
  if (kind != Kind::Howell) {
    const int ew = 1 + (table - round + tables * round) % tables;
    return {table, kind == Kind::TwoWinners ? ew : tables + ew};
  }
  // The last pair stays; the others go round it.
  const int circle = 2 * tables - 1;
  if (table == 1) return {2 * tables, 1 + round % circle};
  return {1 + (round + table - 1) % circle, 1 + (round - table + 1 + circle) % circle};
}

std::string Listed(int low, int boards) {
  std::string list = std::to_string(low);
  for (int n = 1; n < boards; ++n) list += fmt::format(",{}", low + 2 * n);
  return list;
}

/// Which pair is missing; 0 for none, negative for one that sits east-west.
int MissingPair(Dice& dice, Kind kind, int tables) {
  if (!dice.Chance(0.3)) return 0;
  if (kind == Kind::TwoWinners) return -dice.Below(1, tables);
  return dice.Below(kind == Kind::Numbered ? tables + 1 : 1, 2 * tables);
}

void AddSection(ScoringPicture& picture, Dice& dice, int rounds, int boards) {
  const auto id = Short(static_cast<int>(picture.sections.size()) + 1);
  const int tables = dice.Below(3, 8);
  const Kind kind = static_cast<Kind>(dice.Below(0, 2));
  const bool switched = kind == Kind::Numbered && dice.Chance(0.3);
  const bool listed = dice.Chance(0.2);
  const int pausing = dice.Chance(0.2) ? dice.Below(1, tables) : 0;
  const int pausedRound = dice.Below(1, rounds);
  picture.sections.push_back({id, std::string(1, static_cast<char>('A' + id - 1)), Short(tables),
                              Short(MissingPair(dice, kind, tables)), 0});
  for (int round = 1; round <= rounds; ++round) {
    for (int table = 1; table <= tables; ++table) {
      auto [ns, ew] = Meeting(kind, tables, round, table);
      if (switched && round == rounds) std::swap(ns, ew);
      const int low = (table + round - 2) % tables * boards + 1;
      RoundRow row{
          id, Short(table), Short(round), Short(ns), Short(ew), Short(low), Short(low + boards - 1),
          ""};
      if (listed) row.CustomBoards = Listed(low, boards);
      if (table == pausing && round == pausedRound) {
        row = {id, Short(table), Short(round), 0, 0, 0, 0, ""};
      }
      picture.rounds.push_back(row);
    }
    // The rover's own table has one side and no boards.
    if (pausing == 1) {
      picture.rounds.push_back({id, Short(tables + 1), Short(round), Short(99), 0, 0, 0, ""});
    }
  }
}

}  // namespace

ScoringPicture AnyMovement(Dice& dice, int rounds, int boards) {
  ScoringPicture picture;
  picture.format = "Jet4";
  picture.sessionName = "Test pairs";
  picture.sessionDate = DateTime::Of(2026, 11, 20, ClockTime::At(19, 30));
  AddSection(picture, dice, rounds, boards);
  if (dice.Chance(0.5)) AddSection(picture, dice, std::max(2, rounds - dice.Below(0, 1)), boards);
  return picture;
}

bool IsPlayed(const ScoringPicture& picture, const RoundRow& row) {
  const int missing = picture.sections[static_cast<size_t>(row.Section) - 1].MissingPair;
  const bool away = missing < 0 ? row.EWpair == -missing
                                : missing > 0 && (row.NSPair == missing || row.EWpair == missing);
  return row.NSPair != 0 && row.EWpair != 0 && !away;
}

std::vector<int16_t> BoardsOf(const RoundRow& row) {
  std::vector<int16_t> boards;
  if (row.CustomBoards.empty()) {
    for (int16_t board = row.LowBoard; board <= row.HighBoard; ++board) boards.push_back(board);
  } else {
    std::istringstream list(row.CustomBoards);
    for (std::string board; std::getline(list, board, ',');)
      boards.push_back(Short(std::stoi(board)));
  }
  return boards;
}

}  // namespace corvanel
