#pragma once

#include <set>
#include <string>

#include "scoring/scoring_picture.h"

namespace corvanel {

/// Whether a later picture of a file can be of the same session as an earlier one, as far as the
/// chosen sections tell: name and start are the same where both say them, no section is gone, and
/// what was known of the movement still holds. More rounds, tables and results may have come.
bool SameSession(const ScoringPicture& earlier, const ScoringPicture& later,
                 const std::set<int16_t>& sections);

/// The session of a picture in a few words, to be known again by in a later run of the program: its
/// name, its start, and who met whom in the first round of the chosen sections.
std::string IdentityOf(const ScoringPicture& picture, const std::set<int16_t>& sections);

}  // namespace corvanel
