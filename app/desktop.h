#pragma once

#include <QObject>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <optional>
#include <type_traits>

#include "control/favourites.h"
#include "control/settings_menu.h"
#include "control/watch.h"
#include "control/window/frm_main.h"
#include "display/window/dialog_placer.h"
#include "display/window/frm_display.h"
#include "display/window/frm_display2.h"
#include "network/network_desk.h"
#include "recovery/continue_session.h"
#include "scoring/scoring_desk.h"
#include "startup/error_report.h"
#include "startup/window/dlg_splash.h"
#include "system/device_file.h"
#include "system/disk.h"
#include "system/folders.h"
#include "system/former_settings.h"
#include "system/json_store.h"
#include "system/log_file.h"
#include "system/open_files.h"
#include "system/qt/qt_prompts.h"
#include "system/qt/qt_scoring_files.h"
#include "system/qt/qt_sound_player.h"
#include "system/qt/qt_tick_timer.h"
#include "system/record_files.h"
#include "system/stay_awake.h"
#include "system/system_time.h"

namespace corvanel {

/// The desktop program: every object once, and where its windows stand.
class Desktop : public QObject, public ControlHost, public DisplayHost {
  Q_OBJECT

 public:
  /// Builds the program on a settings file; loads and shows nothing yet.
  explicit Desktop(const std::filesystem::path& store);

  /// The start of the program: the splash and what is done behind it, then the control window.
  void StartUp();
  /// The program was started again: shows the window that the director works with.
  void ComeToFront(const QString& token);
  /// A scoring file that the director opens with the program: taken when the control window is
  /// there.
  void OpenScoringFile(const QString& file);
  /// Ends at once; a session that runs can be continued by the next start.
  void MakeWay() { EndProgram(); }
  /// Imports standard settings that are waiting, and loads the settings. False when the program
  /// has to end.
  bool Load();

  ErrorTrap& Errors() { return errors_; }
  Broadcast& TheBroadcast() { return broadcast_; }
  ControlWindow& Control() { return control_; }
  FrmMain& MainWindow() { return frmMain_; }
  FrmDisplay& Display() { return frmDisplay_; }
  FrmDisplay2& TwinWindow() { return frmDisplay2_; }
  Session& TheSession() { return session_; }

  void ShowControlWindow() override;
  void ShowHelp() override;
  void ShowSoundOptions() override;
  void ShowDisplayOptions() override;
  bool ExitFromDisplay() override { return exit_.FromDisplay(); }
  double ScreenWidth() const override;
  void ShowFullScreenPair(bool fullScreen) override;
  void ShowMonitorPairs() override;
  DisplayForm& RoomDisplay() override { return frmDisplay_; }
  DisplayForm& Twin() override { return frmDisplay2_; }
  void SessionStarts() override { scoring_.SessionStarts(); }
  void ShowDisplays() override;
  void ShowHint() override;
  void SaveDisplayGeometry() override;
  void ShutDownComputer() override;
  void EndProgram() override;

 private:
  ScoringLink::Parts LinkParts();
  /// Answers a signal; what goes wrong in it is reported under `place`.
  template <class Sender, class Signal, class Answer>
  void On(const Sender* sender, Signal signal, const char* place, Answer answer);
  /// F1 helps in every window; the displays know it as one of their keys.
  bool eventFilter(QObject* watched, QEvent* event) override;
  void ReportWriting();
  void ConnectMenus();
  void ConnectDisplays();
  void LeaveTheKeysWithTheTwin();
  void ConnectWatch();
  void OpenControlWindow();
  bool OfferToContinue();
  void Welcome();
  void ArmTimeOfDay();
  void OpenFile(const std::string& file);
  void OpenProgramFile(const char* name);
  void ShowGeneralOptions();
  void ShowUnitOptions();
  void ShowNetworkOptions();
  void ApplyNetwork();
  void ShowCodeOnRoomDisplay();
  void HearDevice(const RemoteWord& word);
  void ShowPlayTimes();
  void ApplyOptions();
  void ApplyOnTop();
  void RearrangeDisplays();
  template <class Dialog>
  int ShowSounds(Dialog& dialog);
  std::optional<Surroundings> LookAround();
  const QWidget* DirectorsWindow() const;
  bool UsesTwin() const { return session_.settings.ExtraMonitor; }
  DisplayWindow& DirectorsDisplay();
  void PlaceRoomDisplay();
  void PlaceBothDisplays();
  void ScreensChanged();

  SystemTime time_;
  Session session_;
  DiskWriter writer_{[this] {
    QMetaObject::invokeMethod(
        this, [this] { ReportWriting(); }, Qt::QueuedConnection);
  }};
  JsonStore store_;
  std::string openFirst_;  // a scoring file
  const bool takenOver_ = store_.GetAllSettings("Timer").empty() && store_.Damage().empty() &&
                          TakeOverFormerSettings(store_);
  const bool firstStart_ = store_.GetAllSettings("Timer").empty() && store_.Damage().empty();
  bool tellsOfWriting_ = false;
  QtTickTimer ticks_{[this] { clock_.Tick(); }, [this] { clock_.WasHeld(); }};
  QtTickTimer polls_{[this] { scoring_.Poll(); }, [] {}};
  QtPrompts prompts_;
  ErrorReport errors_;
  Broadcast broadcast_{errors_};
  SettingsTable settings_{store_, session_, errors_};
  // Before the first process is started: while the session bus is looked for, a pipe is open that a
  // child would keep open, and the program would wait for its end for ever.
  StayAwake awake_;
  QtSoundPlayer sounds_;
  RoundClock clock_{{.session = session_,
                     .time = time_,
                     .timer = ticks_,
                     .sounds = sounds_,
                     .listener = broadcast_,
                     .errors = errors_}};
  Notices notices_{broadcast_};
  EveningSoFar evening_{time_};
  ProgramExit exit_{session_, clock_, prompts_, *this};
  FrmMain frmMain_{session_};
  ControlWindow control_{{.session = session_,
                          .view = frmMain_,
                          .prompts = prompts_,
                          .errors = errors_,
                          .time = time_,
                          .clock = clock_,
                          .evening = evening_,
                          .notices = notices_,
                          .table = settings_,
                          .host = *this,
                          .exit = exit_}};
  Favourites favourites_{{.table = settings_,
                          .clock = clock_,
                          .view = frmMain_,
                          .control = control_,
                          .prompts = prompts_,
                          .errors = errors_}};
  Disk disk_;
  SettingsMenu settingsMenu_{{.store = store_,
                              .session = session_,
                              .files = disk_,
                              .favourites = favourites_,
                              .prompts = prompts_,
                              .errors = errors_}};
  DisplayCommands commands_{{.clock = clock_,
                             .session = session_,
                             .prompts = prompts_,
                             .errors = errors_,
                             .host = *this}};
  FrmDisplay frmDisplay_;
  FrmDisplay2 frmDisplay2_;
  QtScoringFiles scoringFiles_;
  LogFile logFile_;
  ActivityLog log_{session_, time_, logFile_};
  ScoringDesk scoring_;
  RoundBook rounds_{clock_, time_};
  RecordFiles records_;
  SessionRecorder recorder_{{.session = session_,
                             .clock = clock_,
                             .link = scoring_.Link(),
                             .rounds = rounds_,
                             .evening = evening_,
                             .time = time_,
                             .keeper = records_,
                             .notices = notices_}};
  ContinueSession continue_{{.session = session_,
                             .clock = clock_,
                             .evening = evening_,
                             .time = time_,
                             .keeper = records_,
                             .prompts = prompts_,
                             .notices = notices_}};
  Watch watch_{{.session = session_,
                .clock = clock_,
                .notices = notices_,
                .look = [this] { return LookAround(); },
                .outsideChange = [this] { return store_.OutsideChange(); }}};
  RoomTeller teller_{{.session = session_, .clock = clock_, .time = time_}};
  DeviceFile deviceFile_;
  RemoteDesk remotes_{{.clock = clock_, .notices = notices_, .keeper = deviceFile_}};
  NetworkDesk network_{
      {.options = session_.options,
       .notices = notices_,
       .teller = teller_,
       .remotes = remotes_,
       .server = {.uptime = [this] { return time_.Uptime(); },
                  .sound = [folder = ProgramFolderPath()](
                               const std::string& file) { return SoundBytes(file, folder); },
                  .heard =
                      [this](const RemoteWord& word) {
                        QMetaObject::invokeMethod(
                            this, [this, word] { HearDevice(word); }, Qt::QueuedConnection);
                      }},
       .later =
           [this](std::function<void()> what) {
             QMetaObject::invokeMethod(
                 this,
                 [this, what = std::move(what)] { Guarded(errors_, "frmMain.Network", what); },
                 Qt::QueuedConnection);
           },
       .limits = WebServer::Limits::Within(RaiseOpenFiles())}};
  DialogPlacer dialogPlacer_{{&frmDisplay_, &frmDisplay2_}, [this] { return DirectorsWindow(); }};
  QRect mainPlace_;      // of the control window when it was hidden
  bool loaded_ = false;  // the control window shows what the store holds
  enum class Placed { Nothing, Room, Both };
  Placed placedFor_ = Placed::Nothing;  // what the displays were last placed for, in this run
  std::optional<bool> roomFullScreen_;  // as it was before a screen went
  QTimer timerCurrentTime_;
  QTimer timCheck_;
  std::unique_ptr<DlgSplash> splash_;
};

/// Calls the answer with the signal's arguments, or with none where it takes none.
template <class Answer, class... Told>
void Call(const Answer& answer, const Told&... told) {
  if constexpr (std::is_invocable_v<const Answer&, const Told&...>) {
    answer(told...);
  } else {
    answer();
  }
}

template <class Sender, class Signal, class Answer>
void Desktop::On(const Sender* sender, Signal signal, const char* place, Answer answer) {
  connect(sender, signal, this, [this, place, answer](const auto&... told) {
    Guarded(errors_, place, [&] { Call(answer, told...); });
  });
}

}  // namespace corvanel
