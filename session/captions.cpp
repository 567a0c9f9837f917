#include "session/captions.h"

#include <fmt/format.h>

#include "basics/numbers.h"

namespace corvanel {
namespace {

/// What goes before the message of the move after that round.
std::string SkipOrArrow(const SessionSettings& settings, int round) {
  std::string prefix;
  if (settings.Skip.Lists(round)) prefix = "SKIP";
  if (settings.Arrow.Lists(round)) prefix += prefix.empty() ? "ARROW" : "/ARROW";
  return prefix.empty() ? "" : prefix + " - ";
}

}  // namespace

std::string RoundCaption(int round, int rounds) {
  if (round >= rounds) return fmt::format("Final Round of {}", rounds);
  return fmt::format("Time remaining for Round {} of {}", round, rounds);
}

std::string MoveMessage(const SessionSettings& settings, int round) {
  const std::string prefix = SkipOrArrow(settings, round);
  const int next = round + 1;
  if (next >= settings.nRounds) return prefix + "MOVE FOR THE FINAL ROUND";
  return fmt::format("{}MOVE FOR ROUND {}", prefix, next);
}

std::string PhaseCaption(const SessionSettings& settings, const Standing& standing) {
  if (standing.phase == Phase::Break) {
    // Without a move after it the break is where tables learn of these.
    const std::string what = settings.MoveAfterBreak ? "" : SkipOrArrow(settings, standing.round);
    return what + std::string(kBreakCaption);
  }
  const bool ended = standing.phase == Phase::Ended;
  return RoundCaption(standing.round, ended ? standing.round : settings.nRounds);
}

std::string ShownTitle(const std::string& header) {
  size_t characters = 0;
  for (size_t i = 0; i < header.size(); ++i) {
    const bool begins = (static_cast<unsigned char>(header[i]) & 0xC0) != 0x80;  // UTF-8
    if (begins && ++characters > kLongestTitle) return header.substr(0, i) + "…";
  }
  return header;
}

std::string BreakLine(const Schedule& schedule, TimeForm form) {
  return fmt::format("Break:{} End:{}", TimeText(*schedule.breakAt, form),
                     TimeText(*schedule.breakEnd, form));
}

std::string FinishLine(ClockTime finish, TimeForm form) {
  return "Finish at " + TimeText(finish, form);
}

}  // namespace corvanel
