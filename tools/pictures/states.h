#pragma once

#include <string>
#include <vector>

#include "session/clock_face.h"
#include "session/progress_face.h"
#include "session/session.h"

namespace corvanel {

/// One state of the evening, as a display shows it.
struct PictureState {
  const char* name;
  ClockFace face;
  ProgressFace tables = {};
};

/// Every state worth looking at, of a session shaped for pictures.
std::vector<PictureState> PictureStates(const SessionSettings& settings);

/// A club's evening of eight rounds, everything shown.
void ShapeForPictures(Session& session);

}  // namespace corvanel
