#pragma once

#include <string>
#include <string_view>

#include "session/timetable.h"

namespace corvanel {

/// "Time remaining for Round 3 of 12"; in the last round "Final Round of 12".
std::string RoundCaption(int round, int rounds);

/// The same for wherever a session stands; after its end that of the last round. A break that no
/// move follows tells of skip and arrow switch: "SKIP - Time remaining for the break".
std::string PhaseCaption(const SessionSettings& settings, const Standing& standing);

inline constexpr std::string_view kBreakCaption = "Time remaining for the break";

/// The big message of the move after `round`: "SKIP/ARROW - MOVE FOR ROUND 4",
/// "MOVE FOR THE FINAL ROUND".
std::string MoveMessage(const SessionSettings& settings, int round);

/// A title as the displays show it: cut with an ellipsis after kLongestTitle characters.
std::string ShownTitle(const std::string& header);

/// "Break:20:53 End:21:08", of a schedule with a break ahead.
std::string BreakLine(const Schedule& schedule, TimeForm form);

/// "Finish at 22:31"
std::string FinishLine(ClockTime finish, TimeForm form);

}  // namespace corvanel
