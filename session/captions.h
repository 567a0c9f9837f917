#pragma once

#include <string>
#include <string_view>

#include "session/session.h"

namespace corvanel {

/// "Time remaining for Round 3 of 12"; in the last round "Final Round" alone.
std::string RoundCaption(int round, int rounds);

inline constexpr std::string_view kBreakCaption = "Time remaining for the break";

/// The big message of the move after `round`: "SKIP/ARROW - MOVE FOR ROUND 4",
/// "MOVE FOR THE FINAL ROUND".
std::string MoveMessage(const SessionSettings& settings, int round);

/// "Break:20:53 End:21:08"
std::string BreakLine(ClockTime begins, ClockTime ends, TimeForm form);

/// "Finish at 22:31"
std::string FinishLine(ClockTime finish, TimeForm form);

}  // namespace corvanel
