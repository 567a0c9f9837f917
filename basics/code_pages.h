#pragma once

#include <array>
#include <string>

namespace corvanel {

/// What a single-byte code page has in the places 80 to FF. Places that are free stand for
/// themselves; the places below are ASCII in all of them.
using UpperHalf = std::array<char16_t, 128>;

/// Of Windows' code pages 874 and 1250 to 1258; null for any other number.
const UpperHalf* UpperHalfOf(int codePage);

/// Appends a character in UTF-8; what is none becomes U+FFFD.
void AppendUtf8(std::string& text, char32_t character);

}  // namespace corvanel
