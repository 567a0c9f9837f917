#pragma once

#include <string>

#include "session/notices.h"
#include "session/session.h"
#include "session/sound_player.h"

namespace corvanel {

/// What a check before the start sees of the computer.
struct Surroundings {
  const SoundPlayer& sounds;
  std::string soundProblem;    // why nothing would be heard; empty when it would
  bool scoringOpen = false;    // a scoring file is open
  std::string scoringProblem;  // why it cannot be followed; empty when it can
  bool secondScreen = true;
};

/// A line each for what the session that is set would not play, follow or show as it stands now;
/// lines about what is mended go. Nothing is asked and nothing is kept from starting.
void CheckBeforeStart(const Session& session, const Surroundings& around, Notices& notices);

/// The session has started: these lines have done their work.
void ClearChecks(Notices& notices);

}  // namespace corvanel
