#include "system/key_places.h"

#include <array>
#include <string_view>

namespace corvanel {
namespace {

/// A row of letter keys: the number of its first key, counted as the first keyboards of this kind
/// did, and what stands on them.
struct Row {
  uint32_t first;
  std::string_view letters;
};

constexpr std::array<Row, 3> kRows = {{{16, "QWERTYUIOP"}, {30, "ASDFGHJKL"}, {44, "ZXCVBNM"}}};

}  // namespace

char LetterOfKey(uint32_t scanCode) {
  const uint32_t key = scanCode - kBeforeFirstKey;
  for (const auto& [first, letters] : kRows) {
    if (key >= first && key - first < letters.size()) return letters[key - first];
  }
  return 0;
}

}  // namespace corvanel
