#pragma once

#include <sodium.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace corvanel {

inline const unsigned char* BytesOf(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

/// Two small digits for a byte.
template <size_t N>
std::string Hex(const std::array<unsigned char, N>& bytes) {
  std::array<char, 2 * N + 1> digits{};
  return sodium_bin2hex(digits.data(), digits.size(), bytes.data(), N);
}

/// Exactly `N` bytes; nothing for any other text.
template <size_t N>
std::optional<std::array<unsigned char, N>> FromHex(std::string_view digits) {
  std::array<unsigned char, N> bytes{};
  size_t length = 0;
  const char* end = nullptr;
  if (digits.size() != 2 * N ||
      sodium_hex2bin(bytes.data(), N, digits.data(), digits.size(), nullptr, &length, &end) != 0 ||
      length != N) {
    return std::nullopt;
  }
  return bytes;
}

}  // namespace corvanel
