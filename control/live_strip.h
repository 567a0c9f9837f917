#pragma once

#include <string>

#include "session/clock_face.h"
#include "session/session.h"

namespace corvanel {

/// The session under way, as the control window shows it.
struct LiveStrip {
  std::string caption;  // "Round 3 of 8 · last warning", "Break until 21:08"
  std::string countdown;
  ElementStyle style;  // of the countdown, as on the displays; it recedes in a pause
  PossibleCommands can;
  std::string undo;  // "Undo next round, 12 s ago"; empty when nothing can be taken back

  bool operator==(const LiveStrip&) const = default;
};

/// `face`: of a session under way; `waiting`: for whom it is held, as the displays say it.
LiveStrip LiveStripOf(const ClockFace& face, const std::string& waiting, const Session& session);

}  // namespace corvanel
