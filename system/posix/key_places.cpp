#include "system/key_places.h"

#include <array>
#include <string_view>

namespace corvanel {
namespace {

/// A row of letter keys: the X keycode of its first key, and what stands on them.
struct Row {
  uint32_t first;
  std::string_view letters;
};

constexpr std::array<Row, 3> kRows = {{{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}}};

}  // namespace

char LetterOfKey(uint32_t scanCode) {
  for (const auto& [first, letters] : kRows) {
    if (scanCode >= first && scanCode - first < letters.size()) return letters[scanCode - first];
  }
  return 0;
}

}  // namespace corvanel
