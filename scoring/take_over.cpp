#include "scoring/take_over.h"

#include <fmt/format.h>

#include <algorithm>

#include "basics/numbers.h"
#include "scoring/movement.h"

namespace corvanel {
namespace {

constexpr int kBoardsToBreak = 12;

/// The minutes per round and the break, from the boards of a round.
bool TakeMinutes(const ScoringSession& scoring, Session& session) {
  std::set<int16_t> boards;
  int16_t last = 0;
  for (const ScoringSection& section : scoring.Sections()) {
    if (!section.selected || section.boardsPerSet == 0) continue;
    last = section.boardsPerSet;
    boards.insert(last);
  }
  if (last == 0) return true;
  SessionSettings& s = session.settings;
  if (boards.size() == 1) {
    const double minutes = RoundTo2Decimals(last * double{session.options.BMMinPerBoard});
    s.MinPerRound = std::min(static_cast<float>(minutes), kLongestPhase);
  }
  // Deliberate: as many whole rounds as fit into twelve boards, also where the sections differ.
  s.BreakAfterRound = static_cast<int16_t>(kBoardsToBreak / last);
  s.TimeForBreak = session.options.BMBreak;
  return boards.size() == 1;
}

}  // namespace

bool TakeOver(const ScoringSession& scoring, Session& session) {
  SessionSettings& s = session.settings;
  if (scoring.Rounds() > 0) s.nRounds = scoring.Rounds();
  s.Header = scoring.Picture().sessionName;
  const MovementMarks marks = MarksOf(scoring);
  s.Skip = marks.skip;
  s.Arrow = marks.arrow;
  return TakeMinutes(scoring, session);
}

std::string TakenOverText(const ScoringSession& scoring, const SessionSettings& settings) {
  std::string text;
  if (scoring.Rounds() > 0) text = fmt::format("{} rounds", scoring.Rounds());
  if (scoring.MaxBoardsPerSet() > 0) {
    text += fmt::format(" of {} boards, {} minutes each, break of {} minutes after round {}",
                        scoring.MaxBoardsPerSet(), SingleText(settings.MinPerRound),
                        SingleText(settings.TimeForBreak), settings.BreakAfterRound);
  }
  if (!settings.Skip.Empty()) text += ", skip after " + std::string(settings.Skip.Text());
  if (!settings.Arrow.Empty()) text += ", arrow-switch after " + std::string(settings.Arrow.Text());
  text += settings.Header.empty() ? ", no title" : ", title";
  return text.starts_with(", ") ? text.substr(2) : text;
}

}  // namespace corvanel
