#include "scoring/session_identity.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace corvanel {
namespace {

using Seat = std::tuple<int16_t, int16_t, int16_t>;  // section, table, round

std::map<Seat, const RoundRow*> MovementOf(const ScoringPicture& picture) {
  std::map<Seat, const RoundRow*> movement;
  for (const RoundRow& row : picture.rounds) movement[{row.Section, row.Table, row.round}] = &row;
  return movement;
}

/// A round whose pairs are not known yet may get them.
bool Holds(const RoundRow& earlier, const RoundRow& later) {
  const bool open = earlier.NSPair == 0 || earlier.EWpair == 0;
  return open || (earlier.NSPair == later.NSPair && earlier.EWpair == later.EWpair);
}

}  // namespace

bool SameSession(const ScoringPicture& earlier, const ScoringPicture& later,
                 const std::set<int16_t>& sections) {
  const bool named = !earlier.sessionName.empty() && !later.sessionName.empty();
  if (named && earlier.sessionName != later.sessionName) return false;
  const bool dated = earlier.sessionDate && later.sessionDate;
  if (dated && earlier.sessionDate != later.sessionDate) return false;
  for (const SectionRow& section : earlier.sections) {
    const bool there =
        std::any_of(later.sections.begin(), later.sections.end(), [&](const SectionRow& row) {
          return row.ID == section.ID && row.letter == section.letter;
        });
    if (sections.contains(section.ID) && !there) return false;
  }
  const auto movement = MovementOf(later);
  return std::all_of(earlier.rounds.begin(), earlier.rounds.end(), [&](const RoundRow& row) {
    if (!sections.contains(row.Section)) return true;
    const auto now = movement.find({row.Section, row.Table, row.round});
    return now != movement.end() && Holds(row, *now->second);
  });
}

std::string IdentityOf(const ScoringPicture& picture, const std::set<int16_t>& sections) {
  std::string text = picture.sessionName;
  if (picture.sessionDate) text += ", " + IsoText(*picture.sessionDate);
  for (const auto& [seat, row] : MovementOf(picture)) {
    const auto& [section, table, round] = seat;
    if (round != 1 || !sections.contains(section)) continue;
    text += fmt::format(", {}.{}: {}-{}", section, table, row->NSPair, row->EWpair);
  }
  return text;
}

}  // namespace corvanel
