#include "session/captions.h"

#include <fmt/format.h>

#include "basics/numbers.h"

namespace corvanel {

std::string RoundCaption(int round, int rounds) {
  if (round >= rounds) return "Final Round";
  return fmt::format("Time remaining for Round {} of {}", round, rounds);
}

std::string MoveMessage(const SessionSettings& settings, int round) {
  std::string prefix;
  if (settings.Skip.Lists(round)) prefix = "SKIP";
  if (settings.Arrow.Lists(round)) prefix += prefix.empty() ? "ARROW" : "/ARROW";
  if (!prefix.empty()) prefix += " - ";
  const int next = round + 1;
  if (next >= settings.nRounds) return prefix + "MOVE FOR THE FINAL ROUND";
  return fmt::format("{}MOVE FOR ROUND {}", prefix, next);
}

std::string PhaseCaption(const SessionSettings& settings, const Standing& standing) {
  if (standing.phase == Phase::Break) return std::string(kBreakCaption);
  const bool ended = standing.phase == Phase::Ended;
  return RoundCaption(standing.round, ended ? standing.round : settings.nRounds);
}

std::string BreakLine(const Schedule& schedule, TimeForm form) {
  return fmt::format("Break:{} End:{}", TimeText(*schedule.breakAt, form),
                     TimeText(*schedule.breakEnd, form));
}

std::string FinishLine(ClockTime finish, TimeForm form) {
  return "Finish at " + TimeText(finish, form);
}

}  // namespace corvanel
