#pragma once

#include <set>

#include "scoring/scoring_picture.h"

namespace corvanel {

/// Whether a later picture of a file can be of the same session as an earlier one, as far as the
/// chosen sections tell: name and start are the same where both say them, no section is gone, and
/// what was known of the movement still holds. More rounds, tables and results may have come.
bool SameSession(const ScoringPicture& earlier, const ScoringPicture& later,
                 const std::set<int16_t>& sections);

}  // namespace corvanel
