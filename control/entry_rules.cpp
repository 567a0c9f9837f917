#include "control/entry_rules.h"

#include <algorithm>

namespace corvanel {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kNumber = "0123456789.";
constexpr std::string_view kTime = "0123456789:amp";
constexpr std::string_view kRoundList = "0123456789,";
constexpr std::string_view kAny;

constexpr std::array<Box, 2> Always(Box box) {
  return {box, box};
}

// Of the two warnings the earlier one (element 1) comes first, as in the evening.
constexpr std::array<EntryRule, kBoxes> kRules = {{
    {Box::nRounds, "txtnRounds", kDigits, {Box::MinPerRound, Box::MinBetweenRounds}},
    {Box::MinPerRound, "txtMinPerRound", kNumber, Always(Box::MinBetweenRounds)},
    {Box::MinBetweenRounds, "txtMinBetweenRounds", kNumber, {Box::MinWarning1, Box::FinishTime}},
    {Box::FinishTime, "txtFinishTime", kTime, Always(Box::MinWarning1)},
    {Box::MinWarning1, "txtMinWarning_1", kNumber, Always(Box::MinWarning0)},
    {Box::MinWarning0, "txtMinWarning_0", kNumber, Always(Box::Skip)},
    // Deliberate: one skip round is typed, while arrow switches are a list.
    {Box::Skip, "txtSkip", kDigits, Always(Box::Arrow)},
    {Box::Arrow, "txtArrow", kRoundList, Always(Box::BreakRound)},
    {Box::BreakRound, "txtBreakRound", kAny, Always(Box::BreakLength)},
    {Box::BreakLength, "txtBreakLength", kAny, Always(Box::CurrentRound)},
    {Box::CurrentRound, "txtCurrentRound", kAny, Always(Box::StartTime)},
    {Box::StartTime, "txtStartTime", kAny, Always(Box::Header)},
    {Box::Header, "txtHeader", kAny, Always(Box::nRounds)},
}};
static_assert(std::all_of(kRules.begin(), kRules.end(), [](const EntryRule& rule) {
  return &rule == &kRules[static_cast<size_t>(rule.box)];
}));

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
  std::string kept;
  // A byte of a longer character is never in an allowed set, so the whole character goes.
  std::copy_if(inserted.begin(), inserted.end(), std::back_inserter(kept),
               [&](char c) { return Takes(box, static_cast<unsigned char>(c)); });
  if (kept.size() == inserted.size()) return {std::string(after), after.size() - suffix, false};
  if (kept.empty()) return {std::string(before), prefix, true};
  return {std::string(after.substr(0, prefix)) + kept +
              std::string(after.substr(after.size() - suffix)),
          prefix + kept.size(), true};
}

}  // namespace corvanel
