#include "recovery/session_recorder.h"

namespace corvanel {
namespace {

constexpr double kTryAgain = 5;  // seconds after a write that failed

}  // namespace

void SessionRecorder::ShowFace(const ClockFace& /*face*/) {
  // The clock may tick on until the program has ended.
  if (closed_) return;
  const Moment now = parts_.time.ThisMoment();
  const std::string failure = parts_.keeper.Failure();
  const bool again = written_ && !failure.empty() && now.Since(written_->at) >= kTryAgain;
  if (again || !NothingNew()) {
    Write(now);
  } else {
    parts_.keeper.KeepAlive(now);
  }
  if (failure.empty()) {
    parts_.notices.Clear(NoticeKind::Record);
  } else {
    parts_.notices.Set(
        {NoticeKind::Record, "The session is running but is not being saved: " + failure, ""});
  }
}

/// Whether what was written last tells of the same.
bool SessionRecorder::NothingNew() const {
  return written_ && written_->state == parts_.clock.State() &&
         written_->settings == parts_.session.settings &&
         written_->undo == parts_.clock.UndoSteps() &&
         written_->scoring == parts_.link.Followed() && written_->starts == parts_.rounds.Starts();
}

void SessionRecorder::Write(const Moment& now) {
  written_ = {now,
              parts_.clock.State(),
              parts_.session.settings,
              parts_.clock.UndoSteps(),
              parts_.link.Followed(),
              parts_.rounds.Starts(),
              parts_.evening.Begun()};
  parts_.keeper.Keep(TextOf(*written_));
}

void SessionRecorder::Close() {
  closed_ = true;
  // What an earlier run left behind is not this one's to forget.
  if (written_ && !parts_.clock.UnderWay()) parts_.keeper.Forget();
}

}  // namespace corvanel
