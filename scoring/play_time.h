#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scoring/round_book.h"
#include "scoring/scoring_session.h"

namespace corvanel {

/// How long a table took for a round.
struct RoundTime {
  double minutes = 0;  // of play: to its last result
  // Minutes before that, from when both its pairs were free.
  double waited = 0;  // for the others, the clock, a break
  double moved = 0;   // of the move of its section, as the clock had it; else part of the wait
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
  double excess = 0;   // minutes a board beyond what the others took at the same time
  double sure = 0;     // by how much that may well be wrong

  double PerBoard() const { return boards == 0 ? 0 : total / boards; }
  double Mean() const { return rounds == 0 ? 0 : total / rounds; }
};

/// A round of a section: from its start to the last result, or to where the next one began; and the
/// tables that came last.
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
  std::vector<PlayerTimes> byPair;                         // the slowest beside the others first
};

/// The play times of a session's selected sections.
///
/// Play begins for a table when both its pairs are free and the round has begun in its section:
/// by the clock where it ran beside the units, else when most of its tables began, as the spacing
/// of their results tells. So waiting for the clock, the move and the break are no play time. Pairs
/// are ranked by what their tables took beyond the others at the same time, shared fairly with
/// those they met. A board counts from when its result first came, so that a correction or a second
/// sending changes nothing. A unit whose clock is wrong all evening is set right by the other
/// tables; a single result that lies hours away from its round is passed over.
std::vector<SectionTimes> PlayTimesOf(const ScoringSession& session,
                                      const RoundStarts& starts = {});

/// What is measured, in a sentence for the reader.
inline constexpr std::string_view kWhatIsMeasured =
    "Play is timed from when both pairs are free and the round has begun to the table's last "
    "result; "
    "waiting and moving do not count.";

/// "+0.4", "-1.2", and never "-0.0".
std::string SignedTenths(double minutes);

/// The report as text, one section after the other.
std::string PlayTimeReport(const ScoringSession& session, const std::vector<SectionTimes>& times);

}  // namespace corvanel
