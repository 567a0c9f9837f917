#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvanel {

/// The folder that the program runs from, without a trailing separator.
std::string ProgramFolderPath();

/// Where a user's settings are kept when no other file was named.
std::filesystem::path DefaultStoreFile();

/// Where files that the program writes go: the program folder where it can be written, and the
/// user's own folder where it cannot. In the order in which they are to be tried.
std::vector<std::filesystem::path> OutputFolders();

/// Where the file of a stored sound lies: the path itself when there is such a file, else a file
/// of the same name in the program folder, since stores come from other machines and systems.
std::string SoundFile(const std::string& stored, const std::string& programFolder);
/// The bytes of such a file; nothing where there is none.
std::optional<std::string> SoundBytes(const std::string& stored, const std::string& programFolder);

}  // namespace corvanel
