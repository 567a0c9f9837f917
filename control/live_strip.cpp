#include "control/live_strip.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

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

/// "WAITING FOR TABLES B5 B7" as it stands in a sentence; a table's letter stays.
std::string InSentence(std::string text) {
  bool first = true;
  for (size_t begin = 0; begin < text.size();) {
    const size_t end = std::min(text.find(' ', begin), text.size());
    const bool table = std::isdigit(static_cast<unsigned char>(text[end - 1])) != 0;
    for (size_t i = begin + (first ? 1 : 0); i < end && !table; ++i) {
      text[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[i])));
    }
    first = false;
    begin = end + 1;
  }
  return text;
}

}  // namespace

LiveStrip LiveStripOf(const ClockFace& face, const std::string& waiting, const Session& session) {
  LiveStrip strip{Caption(face, session), face.countdown,
                  session.elements[static_cast<size_t>(face.countdownStyle)], face.can, face.undo};
  if (face.paused) {
    strip.caption = (waiting.empty() ? "Paused" : InSentence(waiting)) + " · " + strip.caption;
    strip.style = Receded(strip.style, strip.style.Backcolour);
  }
  return strip;
}

}  // namespace corvanel
