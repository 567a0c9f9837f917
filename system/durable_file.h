#pragma once

#include <filesystem>
#include <string_view>

#include "basics/runtime_error.h"

namespace corvanel {

/// The runtime's error for a file that could not be written, from the system's error number.
RuntimeError WriteError(const std::filesystem::path& file, int error);

/// Writes all of `text` to a new file and has it on the disk before it returns. Throws
/// RuntimeError when it cannot; nothing is left of the file then.
void WriteDurably(const std::filesystem::path& file, std::string_view text);

/// Puts `from` in the place of `to`, to last over a power cut where the file system can. Throws
/// RuntimeError when it cannot; `to` is unchanged then and `from` gone.
void RenameDurably(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace corvanel
