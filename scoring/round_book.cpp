#include "scoring/round_book.h"

namespace corvanel {

void RoundBook::Happened(EventKind kind, const std::string& /*text*/) {
  const int round = clock_.State().round;
  switch (kind) {
    case EventKind::Move:
      moved_ = time_.Now();
      break;
    case EventKind::Round:
      // Begun anew, or another session: what came after it then has not come now.
      starts_.erase(starts_.lower_bound(round), starts_.end());
      starts_[round] = {moved_.value_or(time_.Now()), time_.Now()};
      moved_.reset();
      break;
    case EventKind::Break:
    case EventKind::Undo:
    case EventKind::End:
      moved_.reset();
      break;
    default:
      break;
  }
}

/// A round that was taken back has not begun.
void RoundBook::ShowFace(const ClockFace& /*face*/) {
  starts_.erase(starts_.upper_bound(clock_.State().round), starts_.end());
}

}  // namespace corvanel
