#pragma once

#include <QObject>
#include <QTimer>
#include <array>
#include <filesystem>

#include "app/scoring_desk.h"
#include "control/window/frm_main.h"
#include "display/window/display_window.h"
#include "recovery/continue_session.h"
#include "system/json_store.h"
#include "system/qt/qt_sound_player.h"
#include "system/record_files.h"

namespace corvanel {

/// What keeps the evening from being lost, within the desktop program: the record of the session,
/// the way back to it, and the lines that tell the director what is wrong.
class SafetyDesk : public QObject, public NoticeView {
  Q_OBJECT

 public:
  struct Parts {
    Session& session;
    ControlWindow& control;
    RoundClock& clock;
    ScoringDesk& scoring;
    Prompts& prompts;
    QtSoundPlayer& sounds;
    const TimeSource& time;
    const JsonStore& store;
    FrmMain& window;
    std::array<DisplayWindow*, 2> displays;
  };
  SafetyDesk(const Parts& parts, const std::filesystem::path& store);

  /// The control window is shown for the first time: offers to go on with a session that an earlier
  /// run left behind. True when it goes on.
  bool OfferToContinue();
  /// The clock moved on.
  void ShowFace(const ClockFace& face);
  /// The program ends properly.
  void EndProgram() { recorder_.Close(); }

  void ShowNotices(const std::vector<Notice>& notices) override;

 private:
  void Check();
  void CheckStore();
  void TakeAction(int kind);
  void WaveAway(int kind);

  Parts parts_;
  Notices notices_{*this};
  RecordFiles records_;
  SessionRecorder recorder_;
  ContinueSession continue_;
  bool soundDevice_ = true;
  QTimer timCheck_;
};

}  // namespace corvanel
