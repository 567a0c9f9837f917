#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace corvanel {

// Paths as texts are in UTF-8 on every system; the library would take another code page for them
// on some.

inline std::filesystem::path PathOf(std::string_view utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

inline std::string PathText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

/// "settings.json" with ".new" behind it.
inline std::filesystem::path WithSuffix(std::filesystem::path file, std::string_view suffix) {
  file += suffix;
  return file;
}

}  // namespace corvanel
