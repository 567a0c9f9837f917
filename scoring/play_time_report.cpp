#include <fmt/format.h>
#include <fmt/ranges.h>

#include "scoring/play_time.h"

namespace corvanel {
namespace {

constexpr std::string_view kEnd = "\r\n";

std::string RankLine(const PlayerTimes& player) {
  return fmt::format("{:>6} {:>10.1f} {:>8.1f} {:>8.1f} {:>8} ({:.1f})", player.label,
                     player.PerBoard(), player.total, player.Mean(), player.slowestRound,
                     player.slowest);
}

/// Of a pair also how it stands beside the others, and how sure that is.
std::string PairLine(const PlayerTimes& pair) {
  return RankLine(pair) +
         fmt::format("  {:>5} +-{:.1f}  {}", SignedTenths(pair.excess), pair.sure, pair.names);
}

std::string RankTitle(std::string_view who) {
  return fmt::format("{:>6} {:>10} {:>8} {:>8} {:>8}", who, "per board", "total", "mean",
                     "slowest round");
}

}  // namespace

std::string SignedTenths(double minutes) {
  const std::string text = fmt::format("{:+.1f}", minutes);
  return text == "-0.0" ? "+0.0" : text;
}

std::string PlayTimeReport(const ScoringSession& session, const std::vector<SectionTimes>& times) {
  std::string text = "Play times in minutes";
  const auto line = [&](const std::string& added) { text += std::string(kEnd) + added; };
  if (!session.Picture().sessionName.empty()) line(session.Picture().sessionName);
  line(DateAndTimeText(session.Picture().SessionStart()));
  line(std::string(kWhatIsMeasured));
  for (const SectionTimes& section : times) {
    line("");
    line("Section " + section.letter);
    if (section.times.empty()) {
      line("No results with a time");
      continue;
    }
    line("");
    line(" Round   minutes   last tables");
    for (const RoundSummary& round : section.rounds) {
      line(fmt::format("{:>6} {:>9.1f}   {}", round.round, round.minutes,
                       fmt::join(round.lastTables, ", ")));
    }
    line("");
    line(RankTitle("Table"));
    for (const PlayerTimes& table : section.byTable) line(RankLine(table));
    line("");
    line(RankTitle("Pair") + "  beside the others, per board");
    for (const PlayerTimes& pair : section.byPair) line(PairLine(pair));
  }
  return text + std::string(kEnd);
}

}  // namespace corvanel
