#pragma once

#include <filesystem>
#include <string>

namespace corvanel {

/// The folder that the program runs from, without a trailing separator.
std::string ProgramFolderPath();

/// Where a user's settings are kept when no other file was named.
std::filesystem::path DefaultStoreFile();

/// Where the file of a stored sound lies: the path itself when there is such a file, else a file
/// of the same name in the program folder, since stores come from other machines and systems.
std::string SoundFile(const std::string& stored, const std::string& programFolder);

}  // namespace corvanel
