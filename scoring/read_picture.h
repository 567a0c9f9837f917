#pragma once

#include <string>

#include "scoring/scoring_picture.h"

namespace corvanel {

/// Parses the bytes of a scoring database; `fileDate` is left alone. Fails when they are no such
/// database, or cut off, or not wholly written yet; a row that is damaged is left out and counted.
/// Takes at most a small multiple of the file's size in memory, and of time in that proportion.
Result<ScoringPicture> ReadScoringPicture(const std::string& bytes);

}  // namespace corvanel
