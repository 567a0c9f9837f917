#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace corvanel {

/// The content of a file.
std::string BytesOf(const std::filesystem::path& file);

/// The scoring files of the tests, those at hand elsewhere (see CORVANEL_MORE_FIXTURES) included.
std::vector<std::filesystem::path> EveryScoringFile();

/// Whether the witness is there: a tool of a library that reads such databases too.
bool MdbExportIsThere();

/// A table's rows as that tool shows them: values without padding by column in lower case, null
/// empty, moments as 2026-11-20T19:30:00. None when there is no such table.
using Exported = std::vector<std::map<std::string, std::string>>;
Exported Export(const std::filesystem::path& file, const std::string& table);

}  // namespace corvanel
