#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace corvanel {

/// How far a table is with the round.
enum class TableState {
  Finished,
  Playing,     // on its last board
  LastBoard,   // has not started its last board
  Slow,        // the same, when the round is nearly over
  NotPlaying,  // a table that sits out
  Silent,      // has sent nothing all evening
  LeftOut,     // does not count, as the director wants it, until it sends something
};

/// The name of a state, for machines to read.
constexpr const char* NameOf(TableState state) {
  constexpr const char* kNames[] = {
      "finished", "playing", "lastBoardNotStarted", "slow", "notPlaying", "silent", "leftOut"};
  return kNames[static_cast<size_t>(state)];
}

/// One table of the grid.
struct TableCell {
  std::string number;
  TableState state = TableState::NotPlaying;
  std::string text;  // under the number: "2/3", "NP", ...
  std::string tip;   // for the director: the pairs and the players

  bool operator==(const TableCell&) const = default;
};

struct SectionCells {
  std::string letter;  // empty when there is only one section
  std::vector<TableCell> cells;

  bool operator==(const SectionCells&) const = default;
};

/// All that the displays show of the tables. Empty when no scoring database is followed.
struct ProgressFace {
  std::vector<std::string> lines;      // who is slow, who is still playing
  std::vector<SectionCells> sections;  // one cell per table
  std::string info;                    // about the link itself
  std::string waiting;  // "WAITING FOR TABLES 5 7", while the link holds the clock for them

  bool operator==(const ProgressFace&) const = default;
};

}  // namespace corvanel
