#pragma once

#include <string>
#include <vector>

#include "clock/clock_state.h"
#include "session/clock_face.h"
#include "session/session.h"
#include "session/time_source.h"

namespace corvanel {

/// What the clock shows from a moment on; of the face only the countdown moves until the next one.
struct FaceAhead {
  double from = 0;  // uptime, seconds
  double ends = 0;  // uptime at which the count-down ends; 0 where nothing counts down
  ClockFace face;
  std::vector<std::string> sounds;  // files that are played at `from`
};

/// The faces that the clock will show if nobody touches it, the present one first, `most` of them
/// at most. It is the clock itself that runs ahead, in a time of its own. A paused clock, one that
/// has not begun and one that has ended show one face.
std::vector<FaceAhead> FacesAhead(const Session& session, const ClockState& state,
                                  const TimeSource& time, size_t most);

}  // namespace corvanel
