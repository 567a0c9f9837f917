#pragma once

#include <QObject>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <optional>

#include "app/safety_desk.h"
#include "app/scoring_desk.h"
#include "clock/round_clock.h"
#include "control/control_window.h"
#include "control/favourites.h"
#include "control/window/frm_main.h"
#include "display/display_commands.h"
#include "display/display_options.h"
#include "display/window/dialog_placer.h"
#include "display/window/frm_display.h"
#include "display/window/frm_display2.h"
#include "settings/settings_table.h"
#include "startup/error_report.h"
#include "startup/window/dlg_splash.h"
#include "system/disk.h"
#include "system/json_store.h"
#include "system/qt/qt_file_opener.h"
#include "system/qt/qt_prompts.h"
#include "system/qt/qt_sound_player.h"
#include "system/qt/qt_tick_timer.h"
#include "system/stay_awake.h"
#include "system/system_time.h"

namespace corvanel {

/// The desktop program: every object once, and the few things that concern several windows.
class Desktop : public QObject,
                public ClockView,
                public ClockEvents,
                public DisplayHost,
                public DisplayOptionsHost,
                public Stage,
                public ProgramEnding {
  Q_OBJECT

 public:
  /// Builds the program on a settings file; loads and shows nothing yet.
  explicit Desktop(const std::filesystem::path& store);

  /// The start of the program: the splash and what is done behind it, then the control window.
  void StartUp();
  /// The program was started again: shows the window that the director works with.
  void ComeToFront();
  /// Imports standard settings that are waiting, and loads the settings. False when the program
  /// has to end.
  bool Load();

  /// What the Start button does.
  void StartSession() { control_.cmdStart_Click(); }
  /// Shows the session's settings anew after they were changed from outside.
  void RefillControlWindow() { control_.Display(); }

  FrmMain& MainWindow() { return frmMain_; }
  FrmDisplay& Display() { return frmDisplay_; }
  FrmDisplay2& TwinWindow() { return frmDisplay2_; }
  Session& TheSession() { return session_; }

  void ShowFace(const ClockFace& face) override;
  void ShowTimeOfDay(const std::string& time) override;
  void Happened(EventKind kind, const std::string& text) override;
  void ShowControlWindow() override;
  void ShowHelp() override;
  double ScreenWidth() const override;
  void ShowFullScreenPair(bool fullScreen) override;
  void ShowMonitorPairs() override;
  DisplayForm& RoomDisplay() override { return frmDisplay_; }
  DisplayForm& Twin() override { return frmDisplay2_; }
  void RearrangeDisplays() override;
  void RewriteTimes() override;
  void SessionStarts() override { scoring_.SessionStarts(); }
  void ShowDisplays() override;
  void SaveDisplayGeometry() override;
  void ShutDownComputer() override;
  void EndProgram() override;

 signals:
  /// Something happened in the session; `kind` is an EventKind.
  void SessionEvent(int kind, const QString& text);

 private:
  void ConnectDisplays();
  void OpenControlWindow();
  void Welcome();
  void ArmTimeOfDay();
  void OpenProgramFile(const char* name);
  void ShowDisplayOptions();
  void ShowGeneralOptions();
  void ShowSoundOptions();
  void ApplyOptions();
  void ApplyOnTop();
  bool UsesTwin() const { return session_.settings.ExtraMonitor != 0; }
  void PlaceRoomDisplay();
  void PlaceBothDisplays();
  void ScreensChanged();

  SystemTime time_;
  Session session_;
  JsonStore store_;
  const bool firstStart_ = store_.GetAllSettings("Timer").empty() && store_.Damage().empty();
  QtTickTimer ticks_;
  QtPrompts prompts_;
  ErrorReport errors_;
  SettingsTable settings_;
  QtSoundPlayer sounds_;
  QtFileOpener opener_;
  ProgramExit exit_;
  FrmMain frmMain_;
  RoundClock clock_;
  ControlWindow control_;
  Favourites favourites_;
  Disk disk_;
  SettingsMenu settingsMenu_;
  DisplayCommands commands_;
  FrmDisplay frmDisplay_;
  FrmDisplay2 frmDisplay2_;
  ScoringDesk scoring_;
  SafetyDesk safety_;
  DialogPlacer dialogPlacer_{{&frmDisplay_, &frmDisplay2_}};
  StayAwake awake_;
  enum class Placed { Nothing, Room, Both };
  Placed placedFor_ = Placed::Nothing;  // what the displays were last placed for, in this run
  std::optional<bool> roomFullScreen_;  // as it was before a screen went
  QTimer timerCurrentTime_;
  std::unique_ptr<DlgSplash> splash_;
};

}  // namespace corvanel
