#include "control/entry_rules.h"

#include <algorithm>
#include <optional>

namespace corvanel {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kNumber = "0123456789.,";  // a comma is taken as the point
constexpr std::string_view kTime = "0123456789:ampAMP";
constexpr std::string_view kRoundList = "0123456789,";
constexpr std::string_view kAny;
constexpr size_t kMostDigits = 4;

constexpr std::array<Box, 2> Always(Box box) {
  return {box, box};
}

// Of the two warnings the earlier one (element 1) comes first, as in the evening.
constexpr std::array<EntryRule, kBoxes> kRules = {{
    {Box::nRounds, "txtnRounds", kDigits, {Box::MinPerRound, Box::MinBetweenRounds}},
    {Box::MinPerRound, "txtMinPerRound", kNumber, Always(Box::MinBetweenRounds), true},
    {Box::MinBetweenRounds,
     "txtMinBetweenRounds",
     kNumber,
     {Box::MinWarning1, Box::FinishTime},
     true},
    {Box::FinishTime, "txtFinishTime", kTime, Always(Box::MinWarning1)},
    {Box::MinWarning1, "txtMinWarning_1", kNumber, Always(Box::MinWarning0), true},
    {Box::MinWarning0, "txtMinWarning_0", kNumber, Always(Box::Skip), true},
    // Deliberate: one skip round is typed, while arrow switches are a list.
    {Box::Skip, "txtSkip", kDigits, Always(Box::Arrow)},
    {Box::Arrow, "txtArrow", kRoundList, Always(Box::BreakRound)},
    {Box::BreakRound, "txtBreakRound", kAny, Always(Box::BreakLength)},
    {Box::BreakLength, "txtBreakLength", kAny, Always(Box::CurrentRound), true},
    {Box::CurrentRound, "txtCurrentRound", kAny, Always(Box::StartTime)},
    {Box::StartTime, "txtStartTime", kAny, Always(Box::Header)},
    {Box::Header, "txtHeader", kAny, Always(Box::nRounds)},
}};
static_assert(std::all_of(kRules.begin(), kRules.end(), [](const EntryRule& rule) {
  return &rule == &kRules[static_cast<size_t>(rule.box)];
}));

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// What of a text may be put into the box; nothing when a character is refused, since without it
/// the rest would say something else ("3,5" would be round 35). Blanks count only between two
/// digits.
std::optional<std::string> Kept(Box box, std::string_view inserted) {
  const bool minutes = RuleOf(box).minutes;
  std::string kept;
  bool blank = false;
  for (const char c : inserted) {
    // A byte of a longer character is never in an allowed set.
    const bool taken = Takes(box, static_cast<unsigned char>(c));
    if (!taken && (c == ' ' || c == '\t')) {
      blank = true;
      continue;
    }
    if (!taken || (blank && IsDigit(c) && !kept.empty() && IsDigit(kept.back()))) return {};
    blank = false;
    kept += minutes && c == ',' ? '.' : c;
  }
  return kept;
}

/// Whether a number in it has more whole digits than any can have that means something.
bool TooLong(Box box, std::string_view text) {
  if (box == Box::Header || box == Box::StartTime || box == Box::FinishTime) return false;
  size_t digits = 0;
  bool fraction = false;
  for (const char c : text) {
    fraction = c == '.' || (fraction && IsDigit(c));
    digits = IsDigit(c) && !fraction ? digits + 1 : 0;
    if (digits > kMostDigits) return true;
  }
  return false;
}

}  // namespace

const EntryRule& RuleOf(Box box) {
  return kRules[static_cast<size_t>(box)];
}

bool Takes(Box box, char32_t character) {
  const std::string_view allowed = RuleOf(box).allowed;
  if (allowed.empty()) return true;
  return character < 128 && allowed.find(static_cast<char>(character)) != std::string_view::npos;
}

FilteredEdit FilterEdit(Box box, std::string_view before, std::string_view after) {
  const auto [oldStart, newStart] =
      std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto prefix = static_cast<size_t>(newStart - after.begin());
  const size_t shorter = std::min(before.size(), after.size());
  size_t suffix = 0;
  while (suffix < shorter - prefix &&
         before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) {
    ++suffix;
  }
  const std::string_view inserted = after.substr(prefix, after.size() - prefix - suffix);
  const auto kept = Kept(box, inserted);
  const std::string text = std::string(after.substr(0, prefix)) + kept.value_or("") +
                           std::string(after.substr(after.size() - suffix));
  if (!kept || (TooLong(box, text) && !TooLong(box, before))) {
    return {std::string(before), prefix, true};
  }
  return {text, prefix + kept->size(), false};
}

}  // namespace corvanel
