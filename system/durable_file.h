#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

#include "basics/runtime_error.h"

namespace corvanel {

/// What this program creates from now on is for its user alone.
void KeepFilesPrivate();

/// The runtime's error for a file that could not be written.
RuntimeError WriteError(const std::filesystem::path& file, const std::error_code& error);

/// Writes all of `text` to a new file and has it on the disk before it returns. Throws
/// RuntimeError when it cannot; nothing is left of the file then.
void WriteDurably(const std::filesystem::path& file, std::string_view text);

/// Writes a short text over the start of a file, in one piece and without waiting for the disk.
/// What cannot be written is left.
void WriteInPlace(const std::filesystem::path& file, std::string_view text);

/// Puts `from` in the place of `to`, to last over a power cut where the file system can. Throws
/// RuntimeError when it cannot; `to` is unchanged then and `from` gone.
void RenameDurably(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace corvanel
