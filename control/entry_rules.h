#pragma once

#include <array>
#include <string>
#include <string_view>

namespace corvanel {

/// The text boxes of the control window, in the order in which Enter walks through them.
enum class Box {
  nRounds,
  MinPerRound,
  MinBetweenRounds,
  FinishTime,
  MinWarning1,
  MinWarning0,
  Skip,
  Arrow,
  BreakRound,
  BreakLength,
  CurrentRound,
  StartTime,
  Header
};

constexpr int kBoxes = static_cast<int>(Box::Header) + 1;

/// How a box treats keys, and where Enter goes from it.
struct EntryRule {
  Box box;
  std::string_view name;     // of the text box: "txtnRounds"
  std::string_view allowed;  // the characters it takes; empty: any
  std::array<Box, 2> next;   // where Enter goes: by Calculate, 0 or 1
  bool minutes = false;      // a number with a point, for which a comma is taken, too
};

const EntryRule& RuleOf(Box box);

/// Whether the box takes this character when it is typed.
bool Takes(Box box, char32_t character);

/// What became of an edit (a key, a paste, a drop): the text to show, the place of the cursor in it
/// (bytes), and whether it was refused.
struct FilteredEdit {
  std::string text;
  size_t cursor = 0;
  bool refused = false;
};

/// Filters what an edit from `before` to `after` has put in; what stood there already is left
/// alone. Blanks that mean nothing are left out; an edit with anything else that the box does not
/// take, or with a number of more than five digits, is taken back whole.
FilteredEdit FilterEdit(Box box, std::string_view before, std::string_view after);

}  // namespace corvanel
