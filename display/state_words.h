#pragma once

#include <string>

#include "session/clock_face.h"
#include "session/session.h"

namespace corvanel {

/// The words that name the state of the clock beside its colours.
struct StateWords {
  std::string tag;  // in the corner of the countdown's field: "LAST WARNING"; empty in a calm round
  std::string large;  // in the caption's row, larger than the caption: "PAUSED"; usually empty

  bool operator==(const StateWords&) const = default;
};

/// `waiting`: whom an automatic pause waits for, "WAITING FOR TABLES 5 7"; empty for any other.
StateWords StateWordsOf(const ClockFace& face, const std::string& waiting, TimeForm form);

}  // namespace corvanel
