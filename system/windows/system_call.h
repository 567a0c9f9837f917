#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace corvanel {

/// The system's own way of writing a path: whole, and so that it may be longer than 260 characters.
std::wstring SystemPath(const std::filesystem::path& path);

/// What the last call of the system complained of.
inline std::error_code LastError() {
  return {static_cast<int>(GetLastError()), std::system_category()};
}

}  // namespace corvanel
