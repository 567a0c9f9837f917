#include "recovery/session_recorder.h"

namespace corvanel {
namespace {

constexpr double kTryAgain = 5;  // seconds after a write that failed

}  // namespace

void SessionRecorder::Update() {
  const RoundClock& clock = parts_.clock;
  if (clock.State().phase == Phase::Idle) return;
  const SessionRecord record = {parts_.time.ThisMoment(), parts_.time.Counter(), clock.Point(),
                                parts_.session.settings,  clock.UndoSteps(),     parts_.link.Path(),
                                parts_.link.Sections()};
  const std::string failure = parts_.keeper.Failure();
  const bool again = written_ && !failure.empty() && record.at.Since(written_->at) >= kTryAgain;
  if (!written_ || again || !record.SameState(*written_)) {
    Write(record);
  } else {
    parts_.keeper.KeepAlive(record.at);
  }
  if (failure.empty()) {
    parts_.notices.Clear(NoticeKind::Record);
  } else {
    parts_.notices.Set({NoticeKind::Record,
                        "The session runs on, but would be lost in a power cut: " + failure, ""});
  }
}

void SessionRecorder::Write(const SessionRecord& record) {
  parts_.keeper.Keep(TextOf(record));
  written_ = record;
}

void SessionRecorder::Close() {
  // What an earlier run left behind is not this one's to forget.
  if (written_) parts_.keeper.Forget();
}

}  // namespace corvanel
