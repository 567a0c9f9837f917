#include "app/safety_desk.h"

#include <QFileInfo>
#include <QGuiApplication>

#include "control/start_checks.h"

namespace corvanel {
namespace {

constexpr int kCheckInterval = 5000;  // milliseconds

}  // namespace

SafetyDesk::SafetyDesk(const Parts& parts, const std::filesystem::path& store)
    : parts_(parts),
      records_(store),
      recorder_({parts.session, parts.clock, parts.scoring.Link(), parts.time, records_, notices_}),
      continue_({parts.session, parts.clock, parts.time, records_, parts.prompts, notices_}) {
  connect(&timCheck_, &QTimer::timeout, this, &SafetyDesk::Check);
  timCheck_.start(kCheckInterval);
  connect(&parts_.sounds, &QtSoundPlayer::DeviceSeen, this, [this](bool there) {
    if (soundDevice_ == there) return;
    soundDevice_ = there;
    Check();
  });
  connect(&parts_.sounds, &QtSoundPlayer::Played, this,
          [this] { notices_.Clear(NoticeKind::Sound); });
  connect(&parts_.sounds, &QtSoundPlayer::NotPlayed, this,
          [this](const QString& file, const QString& why) {
            notices_.Set({NoticeKind::Sound,
                          tr("The sound %1 was not heard: %2")
                              .arg(QFileInfo(file).fileName(), why)
                              .toStdString(),
                          ""});
          });
  connect(&parts_.window, &FrmMain::NoticeActionWanted, this, &SafetyDesk::TakeAction);
  connect(&parts_.window, &FrmMain::NoticeWavedAway, this, &SafetyDesk::WaveAway);
  for (const DisplayWindow* display : parts_.displays) {
    connect(display, &DisplayWindow::NoticeActionWanted, this, &SafetyDesk::TakeAction);
    connect(display, &DisplayWindow::NoticeWavedAway, this, &SafetyDesk::WaveAway);
  }
}

bool SafetyDesk::OfferToContinue() {
  const auto record = continue_.Ask();
  if (!record) return false;
  if (!record->scoringFile.empty()) {
    parts_.scoring.Reopen(record->scoringFile, record->sections);
  }
  continue_.GoOn(*record);
  parts_.control.SessionContinues();
  recorder_.Update();
  return true;
}

void SafetyDesk::ShowFace(const ClockFace& face) {
  recorder_.Update();
  if (face.away > 0) {
    notices_.Set({NoticeKind::Away,
                  tr("The computer was away for %1; the clock has run on meanwhile.")
                      .arg(QString::fromStdString(LengthText(face.away)))
                      .toStdString(),
                  face.awayCanBeTakenOut ? tr("Take that time out").toStdString() : ""});
  } else {
    notices_.Clear(NoticeKind::Away);
  }
}

void SafetyDesk::CheckStore() {
  const std::string& kept = parts_.store.OutsideChange();
  if (kept.empty()) return;
  notices_.Set({NoticeKind::Store,
                tr("The settings file had been changed by somebody else. What stood there is kept "
                   "as %1")
                    .arg(QFileInfo(QString::fromStdString(kept)).fileName())
                    .toStdString(),
                ""});
}

/// Before a session starts, what would go wrong in it is told while it can be mended.
void SafetyDesk::Check() {
  CheckStore();
  if (parts_.clock.CurrentProgress().Running()) {
    ClearChecks(notices_);
    return;
  }
  if (!parts_.window.isVisible()) return;
  parts_.sounds.LookForDevice();
  CheckBeforeStart(parts_.session,
                   {parts_.sounds, soundDevice_, parts_.scoring.Problem(),
                    QGuiApplication::screens().size() > 1},
                   notices_);
}

void SafetyDesk::TakeAction(int kind) {
  if (static_cast<NoticeKind>(kind) == NoticeKind::Away) parts_.clock.TakeOutGap();
}

void SafetyDesk::WaveAway(int kind) {
  if (static_cast<NoticeKind>(kind) == NoticeKind::Away) parts_.clock.LeaveGapIn();
  notices_.WaveAway(static_cast<NoticeKind>(kind));
}

void SafetyDesk::ShowNotices(const std::vector<Notice>& notices) {
  parts_.window.ShowNotices(notices);
  for (DisplayWindow* display : parts_.displays) display->ShowNotices(notices);
}

}  // namespace corvanel
