#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace corvanel::jet {

/// A part of a database file, and the only way to its bytes: whatever an offset or a length that
/// stands in the file claims, nothing outside is looked at. Numbers have their lowest byte first.
class View {
 public:
  View() = default;
  explicit View(std::span<const unsigned char> bytes) : bytes_(bytes) {}

  size_t Size() const { return bytes_.size(); }
  bool Empty() const { return bytes_.empty(); }
  bool Holds(size_t offset, size_t length) const {
    return offset <= Size() && length <= Size() - offset;
  }
  /// The number of `width` bytes, 1 to 4, at an offset; 0 where it does not lie within.
  uint32_t Number(size_t offset, size_t width) const {
    if (!Holds(offset, width)) return 0;
    const auto byte = [&](size_t i) { return uint32_t{bytes_[offset + i]} << (8 * i); };
    // Written out, so that the compiler makes one load of it.
    switch (width) {
      case 1:
        return byte(0);
      case 2:
        return byte(0) | byte(1);
      case 3:
        return byte(0) | byte(1) | byte(2);
      default:
        return byte(0) | byte(1) | byte(2) | byte(3);
    }
  }
  /// A part of this one; empty where it does not lie within.
  View Part(size_t offset, size_t length) const {
    return Holds(offset, length) ? View(bytes_.subspan(offset, length)) : View();
  }
  View From(size_t offset) const { return Part(offset, Size() - offset); }
  std::span<const unsigned char> Bytes() const { return bytes_; }

 private:
  std::span<const unsigned char> bytes_;
};

}  // namespace corvanel::jet
