#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "scoring/scoring_session.h"

namespace corvanel {

/// How long a table took for a round.
struct RoundTime {
  double minutes = 0;  // from when both its pairs were free to its last result
  int boards = 0;
  DateTime finish;  // its last result, by a clock that is right
};

/// A table or a pair over the whole session.
struct PlayerTimes {
  std::string label;  // "5", or "NS 5" where both sides have the same numbers
  std::string names;  // of the players, as far as known
  int boards = 0;
  int rounds = 0;
  double total = 0;  // minutes
  int16_t slowestRound = 0;
  double slowest = 0;  // minutes

  double PerBoard() const { return boards == 0 ? 0 : total / boards; }
  double Mean() const { return rounds == 0 ? 0 : total / rounds; }
};

/// A round of a section: from its start to the last result, and the tables that came last.
struct RoundSummary {
  int16_t round = 0;
  double minutes = 0;
  std::vector<int16_t> lastTables;  // the last first; at most three
};

struct SectionTimes {
  std::string letter;
  std::vector<int16_t> tables;
  std::vector<RoundSummary> rounds;
  std::map<std::pair<int16_t, int16_t>, RoundTime> times;  // by table and round
  std::vector<PlayerTimes> byTable;                        // in table order
  std::vector<PlayerTimes> byPair;                         // the slowest per board first
};

/// The play times of a session's selected sections.
///
/// A round begins for a table when both its pairs have finished the one before; a break that the
/// whole section took is no play time. A board counts from when its result first came, so that a
/// correction or a second sending changes nothing. A unit whose clock is wrong all evening is set
/// right by the other tables; a single result that lies hours away from its round is passed over.
std::vector<SectionTimes> PlayTimesOf(const ScoringSession& session);

/// The report as text, one section after the other.
std::string PlayTimeReport(const ScoringSession& session, const std::vector<SectionTimes>& times);

}  // namespace corvanel
