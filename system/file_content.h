#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "basics/result.h"

namespace corvanel {

/// The bytes of a file, and when it was last changed: seconds since 1970 in universal time.
struct FileContent {
  std::string bytes;
  int64_t modified = 0;
};

/// Reads a file whole, opened for reading alone and so that others may write it meanwhile. An error
/// where there is none, and where it changed while it was read. A file larger than any scoring
/// database is an error.
Result<FileContent> Fetch(const std::string& path);

/// When a file was last changed; nothing for what is not a file.
std::optional<int64_t> ModifiedAt(const std::filesystem::path& path);

}  // namespace corvanel
