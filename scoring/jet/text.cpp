#include "scoring/jet/text.h"

#include <algorithm>

namespace corvanel::jet {
namespace {

constexpr uint32_t kPressed = 0xFEFF;  // the mark of a text with stretches of single bytes

/// Whether there are only characters that are single bytes in UTF-8 too.
bool IsPlain(const View& bytes) {
  return std::all_of(bytes.Bytes().begin(), bytes.Bytes().end(),
                     [](unsigned char byte) { return byte > 0 && byte < 0x80; });
}

/// Puts characters together of which UTF-16 makes two halves.
class Utf16 {
 public:
  explicit Utf16(std::string& text) : text_(text) {}
  void Take(char32_t unit) {
    const bool second = unit >= 0xDC00 && unit < 0xE000;
    if (first_ != 0 && second) {
      AppendUtf8(text_, 0x10000 + ((first_ - 0xD800) << 10U) + (unit - 0xDC00));
      first_ = 0;
      return;
    }
    End();
    if (unit >= 0xD800 && unit < 0xDC00) {
      first_ = unit;
    } else {
      AppendUtf8(text_, unit);
    }
  }
  void End() {
    if (first_ != 0) AppendUtf8(text_, first_);
    first_ = 0;
  }

 private:
  std::string& text_;
  char32_t first_ = 0;  // half of a character that waits for the other
};

}  // namespace

std::string TextOf(const View& bytes, const File& file) {
  std::string text;
  if (file.IsJet3()) {
    for (const unsigned char byte : bytes.Bytes()) {
      AppendUtf8(text, byte < 0x80 ? byte : file.Characters()[byte - 0x80U]);
    }
    return text;
  }
  Utf16 units(text);
  bool single = bytes.Number(0, 2) == kPressed;
  if (single && IsPlain(bytes.From(2))) {
    const auto plain = bytes.From(2).Bytes();
    return {plain.begin(), plain.end()};
  }
  for (size_t at = single ? 2 : 0; at < bytes.Size();) {
    const uint32_t byte = bytes.Number(at, 1);
    if (single || (byte == 0 && bytes.Number(0, 2) == kPressed)) {
      // In such a text a zero begins and ends the stretches of pairs.
      if (byte == 0) {
        single = !single;
      } else {
        units.Take(byte);
      }
      ++at;
    } else {
      if (bytes.Holds(at, 2)) units.Take(bytes.Number(at, 2));
      at += 2;
    }
  }
  units.End();
  return text;
}

}  // namespace corvanel::jet
