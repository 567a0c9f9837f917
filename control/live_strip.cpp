#include "control/live_strip.h"

#include <fmt/format.h>

#include "session/contrast.h"

namespace corvanel {
namespace {

std::string Caption(const ClockFace& face, const Session& session) {
  const int rounds = session.settings.nRounds;
  switch (face.phase) {
    case Phase::Move:
      return face.round + 1 >= rounds ? "Move for the final round"
                                      : fmt::format("Move for round {}", face.round + 1);
    case Phase::Break:
      return "Break until " + TimeText(*face.schedule.breakEnd, session.options.Form());
    default:
      return fmt::format("Round {} of {}{}", face.round, rounds,
                         face.countdownStyle == Element::LastWarning    ? " · last warning"
                         : face.countdownStyle == Element::EarlyWarning ? " · early warning"
                                                                        : "");
  }
}

}  // namespace

LiveStrip LiveStripOf(const ClockFace& face, const Session& session) {
  LiveStrip strip{Caption(face, session), face.countdown,
                  session.elements[static_cast<size_t>(face.countdownStyle)], face.can, face.undo};
  if (face.paused) {
    strip.caption = "Paused · " + strip.caption;
    strip.style = Receded(strip.style, strip.style.Backcolour);
  }
  return strip;
}

}  // namespace corvanel
