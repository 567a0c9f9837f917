#pragma once

#include <string>

#include "scoring/scoring_picture.h"

namespace corvanel {

/// Parses the bytes of a scoring database; `fileDate` is left alone. Fails when they are no such
/// database, or damaged, or cut off, or when their tables contradict each other as those of a
/// half-written file do. Takes at most kLongestRead and a small multiple of the file's size.
Result<ScoringPicture> ReadScoringPicture(const std::string& bytes);

constexpr int kLongestRead = 200;  // milliseconds

}  // namespace corvanel
