#include "display/state_words.h"

namespace corvanel {
namespace {

std::string Tag(Phase phase, Element countdownStyle) {
  if (phase == Phase::Move) return "MOVE";
  if (phase == Phase::Break && countdownStyle == Element::LastWarning) return "BREAK ENDS";
  if (phase != Phase::Round) return {};
  switch (countdownStyle) {
    case Element::EarlyWarning:
      return "EARLY WARNING";
    case Element::LastWarning:
      return "LAST WARNING";
    case Element::TimeUp:
      return "TIME UP";
    default:
      return {};
  }
}

}  // namespace

StateWords StateWordsOf(const ClockFace& face, const std::string& waiting, TimeForm form) {
  StateWords words{Tag(face.phase, face.countdownStyle), {}};
  if (face.phase == Phase::Ended) {
    words.large = "END OF PLAY";
  } else if (face.paused) {
    words.large = waiting.empty() ? "PAUSED" : waiting;
  } else if (face.phase == Phase::Break) {
    words.large = "BREAK UNTIL " + TimeText(*face.schedule.breakEnd, form);
  }
  return words;
}

}  // namespace corvanel
