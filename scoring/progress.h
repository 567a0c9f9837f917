#pragma once

#include <string>
#include <vector>

#include "scoring/scoring_session.h"
#include "session/progress_face.h"

namespace corvanel {

/// What the clock and the options say, as far as the tables' progress depends on it.
struct ProgressInput {
  int16_t round = 1;       // being played
  int16_t rounds = 1;      // of the session
  double secondsLeft = 0;  // of the round; from `minPerBoard` minutes on tables can be slow
  float minPerBoard = 7;   // minutes
  bool showSlow = true;    // whether slow tables are named
  std::set<TableId> leftOut = {};
};

/// One table of the selected sections in the round.
struct TableProgress {
  int16_t section = 0;  // ID
  int16_t table = 0;
  std::string label;  // the number, after the section's letter when several are selected
  int boards = 0;     // to play
  int received = 0;
  TableState state = TableState::NotPlaying;
  int silentRounds = 0;  // that it had to play just before this one and sent nothing of

  /// Whether it still plays as far as pausing and texts are concerned.
  bool StillPlaying() const {
    return state == TableState::Playing || state == TableState::LastBoard ||
           state == TableState::Slow;
  }
};

/// The progress of a round.
struct RoundProgress {
  std::vector<TableProgress> tables;  // by section and number
  std::vector<std::string> texts;     // the lines for the room
  int16_t highestRound = 0;           // as the units see it

  int Playing() const { return static_cast<int>(PlayingLabels().size()); }
  /// The labels of the tables in a state.
  std::vector<std::string> Labels(TableState state) const;
  /// Those of the tables that still play.
  std::vector<std::string> PlayingLabels() const;
  /// "WAITING FOR TABLES 5 7"; only how many, when they are too many to be listed.
  std::string Waiting() const;
  /// Every table has finished the round; some have, and none has been silent.
  bool AllFinished() const;
};

/// Works out how far every table is. Depends on nothing else.
RoundProgress ProgressOf(const ScoringSession& session, const ProgressInput& input);

/// Who meets at a table: "3: NS   3, EW  12", or "4:   2NS sits out".
std::string PairsAt(const ScoringSession& session, const TableProgress& table, int16_t round);

/// The cells of the grid for a progress. "NP" is not said in the last round.
std::vector<SectionCells> GridOf(const ScoringSession& session, const RoundProgress& progress,
                                 const ProgressInput& input);

}  // namespace corvanel
