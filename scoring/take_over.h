#pragma once

#include "scoring/scoring_session.h"
#include "session/session.h"

namespace corvanel {

/// Copies what a scoring file says into the session: rounds, name, skips and arrow-switches,
/// minutes per round, the round before the break, and from the options its length. What the file
/// does not say stays, but for the name: a title of last week's is none. False when the selected
/// sections play different numbers of boards per round: then the minutes per round stay.
bool TakeOver(const ScoringSession& scoring, Session& session);

/// What was taken over, in a line: "7 rounds of 3 boards, 21 minutes each, break of 12 minutes
/// after round 4, ..."
std::string TakenOverText(const ScoringSession& scoring, const SessionSettings& settings);

}  // namespace corvanel
