#pragma once

#include <string>
#include <vector>

#include "basics/result.h"
#include "clock/undo_list.h"
#include "scoring/round_book.h"
#include "scoring/scoring_link.h"
#include "session/evening_so_far.h"
#include "session/time_source.h"

namespace corvanel {

/// A running session as it is written down, so that a later run of the program can go on with it.
struct SessionRecord {
  Moment at;  // when it was taken; all marks are uptimes of its boot
  ClockState state;
  SessionSettings settings;
  std::vector<UndoStep> undo;
  FollowedFile scoring;
  RoundStarts starts;
  std::vector<PhaseBegun> evening;  // that has begun
};

/// The record as text (JSON).
std::string TextOf(const SessionRecord& record);

/// The record of a text. An error when the text is damaged or cannot be true, or was written by a
/// newer version of the program.
Result<SessionRecord> ReadRecord(const std::string& text);

}  // namespace corvanel
