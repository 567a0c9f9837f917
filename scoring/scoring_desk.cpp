#include "scoring/scoring_desk.h"

namespace corvanel {
namespace {

constexpr double kLongestPoll = 0.3;  // seconds

}  // namespace

/// A file was opened or closed; the timer runs while one is open.
void ScoringDesk::FileChanged(bool changed) {
  if (!changed) return;
  failedLooks_ = 0;
  looked_ = false;
  monitor_.FileChanged();
  if (link_.IsOpen()) {
    parts_.timerBWS.Arm(kPollSeconds);
  } else {
    parts_.timerBWS.Disarm();
  }
}

void ScoringDesk::mnuCloseFile_Click() {
  link_.mnuCloseFile_Click();
  FileChanged(true);
}

void ScoringDesk::Reopen(const FollowedFile& file) {
  link_.Reopen(file);
  FileChanged(link_.IsOpen());
}

void ScoringDesk::OptionsChanged() {
  link_.BWSSetUnitCaptions();
  monitor_.TimerBWS_Timer();
}

/// No poll begins just before a second is to be shown, so that none is shown late.
void ScoringDesk::Poll() {
  const double toTick = parts_.secondsToTick();
  if (toTick > 0 && toTick < kLongestPoll) {
    parts_.timerBWS.Arm(toTick + 0.02);
    return;
  }
  parts_.timerBWS.Arm(kPollSeconds);
  monitor_.TimerBWS_Timer();
}

void ScoringDesk::Happened(EventKind kind, const std::string& text) {
  monitor_.Happened(kind, text);
  // A new round shows its tables at once.
  if (kind == EventKind::Round && link_.IsOpen()) parts_.timerBWS.Arm(0);
}

/// A file that is being written cannot be read now and then.
void ScoringDesk::CheckFile() {
  if (!link_.IsOpen() || looked_) return;
  parts_.link.database.Read(link_.Path(), [this](const auto& picture) {
    looked_ = static_cast<bool>(picture);
    failedLooks_ = looked_ ? 0 : failedLooks_ + 1;
  });
}

void ScoringDesk::Act(const Notice& notice) {
  const auto silent = monitor_.SilentTable(notice.subject);
  if (notice.kind == NoticeKind::SilentTable && silent) {
    link_.LeaveOut(*silent);
  } else {
    link_.Act(notice);
  }
  monitor_.TimerBWS_Timer();
}

std::string ScoringDesk::Problem() const {
  return failedLooks_ < 2 ? "" : "the file " + link_.Path() + " cannot be read";
}

}  // namespace corvanel
