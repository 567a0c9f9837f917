#pragma once

#include <string>

#include "scoring/scoring_session.h"

namespace corvanel {

/// The rounds after which the moving pairs skip a table, and those after which arrows are
/// switched, as comma lists of the rounds just finished.
struct MovementMarks {
  std::string skip;
  std::string arrow;

  bool operator==(const MovementMarks&) const = default;
};

/// Derives both from the movement of the selected sections, and lists a round only where all of
/// them agree.
///
/// A round is arrow-switched when every pair that plays in it sits the other way than in its first
/// round. Only a section in which every round is wholly one way or the other has such rounds: in a
/// Howell pairs change seats one by one, and that is no arrow-switch.
///
/// A skip is looked for in sections where one side stays at its tables and the other side moves by
/// the same number of tables from round to round: the move that is twice the usual one.
MovementMarks MarksOf(const ScoringSession& session);

}  // namespace corvanel
