#pragma once

#include <cstdint>

namespace corvanel {

/// By how much the window system numbers keys higher than the keyboard does.
extern const uint32_t kBeforeFirstKey;

/// The letter that stands on a key of a usual keyboard, for keyboards that write other letters
/// there. `scanCode` is the window system's own number of the key; 0 for a key without a letter.
char LetterOfKey(uint32_t scanCode);

}  // namespace corvanel
