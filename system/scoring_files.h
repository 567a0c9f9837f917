#pragma once

#include <string>

#include "scoring/read_picture.h"
#include "scoring/scoring_database.h"

namespace corvanel {

/// Reads a scoring file: opened for reading alone, read whole into memory and closed again, and
/// only then looked at. Where the bytes are those of `last` its picture serves. A share that has
/// gone can hold this up for minutes.
Result<ScoringContent> ReadScoringFile(const std::string& path, const ScoringContent& last);

/// The files "*.bws" of a folder, by name. None when the folder cannot be read.
std::vector<ScoringFile> ListScoringFiles(const std::string& folder);

/// The folder under the spelling that it really has.
std::string FindFolder(const std::string& folder);

}  // namespace corvanel
