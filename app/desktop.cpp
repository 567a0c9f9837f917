#include "app/desktop.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QFile>
#include <QScreen>
#include <QStyle>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>
#include <utility>

#include "display/window/display_options_dialog.h"
#include "display/window/frm_help.h"
#include "network/window/frm_options_network.h"
#include "scoring/play_time.h"
#include "scoring/window/frm_options_bridgemate.h"
#include "scoring/window/frm_play_time.h"
#include "scoring/window/sections_dialog.h"
#include "settings/sound_options.h"
#include "settings/window/frm_options.h"
#include "settings/window/frm_sound.h"
#include "startup/version.h"
#include "system/folders.h"
#include "system/key_places.h"
#include "system/own_addresses.h"
#include "system/shut_down.h"

namespace corvanel {
namespace {

constexpr int kCheckInterval = 5000;  // milliseconds

std::vector<std::filesystem::path> LogFolders() {
  std::vector<std::filesystem::path> folders = OutputFolders();
  for (auto& folder : folders) folder /= "logs";
  return folders;
}

}  // namespace

Desktop::Desktop(const std::filesystem::path& store)
    : store_(store, writer_),
      errors_(
          prompts_, [this](bool held) { held ? ticks_.Hold() : ticks_.Release(); },
          [] { std::_Exit(EXIT_FAILURE); }),
      sounds_(ProgramFolderPath()),
      frmDisplay_(session_, commands_, LetterOfKey),
      frmDisplay2_(session_, commands_, LetterOfKey),
      logFile_(LogFolders(), writer_),
      scoring_({.link = LinkParts(),
                .clock = clock_,
                .sounds = sounds_,
                .timerBWS = polls_,
                .secondsToTick = [this] { return ticks_.SecondsToTick(); }}),
      records_(store, writer_),
      deviceFile_(store, writer_) {
  SessionListener* const listeners[] = {&evening_, &scoring_, &frmDisplay_, &frmDisplay2_,
                                        &frmMain_, &control_, &rounds_,     &recorder_,
                                        &watch_,   &awake_,   &teller_,     &remotes_};
  for (SessionListener* listener : listeners) broadcast_.Add(*listener);
  session_.ProgramFolder = ProgramFolderPath();
  frmMain_.SetLogic(control_);
  frmMain_.ShowVersion(QString::fromStdString(ThisVersion().Text()));
  ConnectMenus();
  ConnectDisplays();
  ConnectWatch();
  qApp->installEventFilter(&dialogPlacer_);
  qApp->installEventFilter(this);
  timerCurrentTime_.setSingleShot(true);
  timerCurrentTime_.setTimerType(Qt::PreciseTimer);
  On(&timerCurrentTime_, &QTimer::timeout, "frmMain.TimerCurrentTime_Timer", [this] {
    clock_.TimerCurrentTime_Timer();
    ArmTimeOfDay();
  });
}

/// Something could not be written. That the record could not, it tells itself.
/// One report says it, however many writes failed meanwhile.
void Desktop::ReportWriting() {
  const auto failure = store_.Failure();
  if (!failure || std::exchange(tellsOfWriting_, true)) return;
  errors_.ReportError("frmMain.SaveDefaults", *failure, 0);
  tellsOfWriting_ = false;
}

ScoringLink::Parts Desktop::LinkParts() {
  return {.session = session_,
          .table = settings_,
          .database = scoringFiles_,
          .clock = clock_,
          .listener = broadcast_,
          .prompts = prompts_,
          .errors = errors_,
          .time = time_,
          .log = log_,
          .notices = notices_,
          .version = ThisVersion().Text(),
          .chooseSections =
              [](const std::string& sessionName, const std::vector<std::string>& lines) {
                SectionsDialog dialog(sessionName, lines, QApplication::activeWindow());
                return dialog.exec() == QDialog::Accepted ? dialog.Ticked() : std::vector<bool>();
              },
          .opened = [this](std::optional<ClockTime> start) { control_.ScoringFileOpened(start); }};
}

void Desktop::ConnectMenus() {
  using Main = FrmMain;
  const std::map<QString, std::function<void()>> answers = {
      {"mnuSettingsExport", [this] { settingsMenu_.mnuSettingsExport_Click(); }},
      {"mnuSettingsImport",
       [this] {
         settingsMenu_.mnuSettingsImport_Click();
         ApplyOptions();
       }},
      {"mnuSettingsUndoImport",
       [this] {
         settingsMenu_.mnuSettingsUndoImport_Click();
         ApplyOptions();
       }},
      {"mnuOptionsGeneral", [this] { ShowGeneralOptions(); }},
      {"mnuOptionsDisplay", [this] { ShowDisplayOptions(); }},
      {"mnuOptionsSounds", [this] { ShowSoundOptions(); }},
      {"mnuOptionsBridgemate", [this] { ShowUnitOptions(); }},
      {"mnuOptionsNetwork", [this] { ShowNetworkOptions(); }},
      {"mnuOpenFile", [this] { scoring_.mnuOpenFile_Click(); }},
      {"mnuCloseFile", [this] { scoring_.mnuCloseFile_Click(); }},
      {"mnuPlayTime", [this] { ShowPlayTimes(); }},
      {"mnuManual", [this] { OpenProgramFile("Timer Manual.pdf"); }},
      {"mnuShortcuts", [this] { ShowHelp(); }},
      {"mnuSound", [this] { OpenProgramFile("sounds.txt"); }},
  };
  for (const QAction* entry : frmMain_.MenuEntries()) {
    const QString name = entry->objectName();
    // One without an answer ends the program here, before anybody can choose it.
    connect(entry, &QAction::triggered, this,
            [this, answer = answers.at(name), place = "frmMain." + name.toStdString() + "_Click"] {
              Guarded(errors_, place, answer);
            });
  }
  On(&frmMain_, &Main::SaveAsNew, "frmMain.cmdSaveDefault_Click",
     [this](const std::string& name) { favourites_.cmdSaveDefault_Click(name); });
  On(&frmMain_, &Main::FavouriteChosen, "frmMain.cboFavs_Click",
     [this](const std::string& name) { favourites_.cboFavs_Click(name); });
  On(&frmMain_, &Main::FavouriteSaveWanted, "frmMain.cmdFavSave_Click",
     [this](const std::string& name) { favourites_.cmdFavSave_Click(name); });
  On(&frmMain_, &Main::FavouriteDeleteWanted, "frmMain.cmdFavDelete_Click",
     [this](const std::string& name) { favourites_.cmdFavDelete_Click(name); });
}

void Desktop::ConnectWatch() {
  On(&timCheck_, &QTimer::timeout, "frmMain.timCheck_Timer", [this] { watch_.Check(); });
  timCheck_.start(kCheckInterval);
  On(&sounds_, &QtSoundPlayer::Changed, "frmMain.SoundsChanged", [this] { watch_.Check(); });
  On(&sounds_, &QtSoundPlayer::Heard, "frmMain.SoundHeard",
     [this](const std::string& file) { watch_.SoundHeard(file); });
  On(&sounds_, &QtSoundPlayer::NotHeard, "frmMain.SoundNotHeard",
     [this](const std::string& file, const std::string& why) { watch_.SoundNotHeard(file, why); });
  On(&awake_, &StayAwake::Unprotected, "frmMain.StayAwake",
     [this](bool unprotected) { watch_.MayFallAsleep(unprotected); });
  const auto act = [this](const Notice& notice) {
    watch_.Act(notice.kind);
    scoring_.Act(notice);
    if (notice.kind == NoticeKind::Network) ApplyNetwork();
  };
  const auto dismiss = [this](const Notice& notice) { watch_.Dismiss(notice); };
  On(&frmMain_, &FrmMain::NoticeActionWanted, "frmMain.cmdNotice_Click", act);
  On(&frmMain_, &FrmMain::NoticeDismissed, "frmMain.cmdNoticeClose_Click", dismiss);
  for (const DisplayWindow* display : {static_cast<const DisplayWindow*>(&frmDisplay_),
                                       static_cast<const DisplayWindow*>(&frmDisplay2_)}) {
    On(display, &DisplayWindow::NoticeActionWanted, "frmDisplay.cmdNotice_Click", act);
    On(display, &DisplayWindow::NoticeDismissed, "frmDisplay.cmdNoticeClose_Click", dismiss);
  }
}

/// The time of day is shown to the minute, and changes with it. That the computer's clock was set
/// is noticed by the round clock's ticks.
void Desktop::ArmTimeOfDay() {
  const double intoMinute = std::fmod(time_.TimeOfDay().Seconds(), 60);
  timerCurrentTime_.start(static_cast<int>(std::ceil((60 - intoMinute) * 1000)));
}

void Desktop::ShowControlWindow() {
  control_.BackFromDisplays();
  // Where it stood, rather than where the window system would put a new window.
  // Only by the window beneath is that told to the window system as the director's own wish.
  if (!mainPlace_.isValid()) {
    // The session of an earlier run went on: it was never shown.
    mainPlace_ = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, frmMain_.size(),
                                     DirectorsDisplay().screen()->availableGeometry());
  }
  if (!frmMain_.isMaximized()) {
    frmMain_.winId();
    frmMain_.windowHandle()->setGeometry(mainPlace_);
  }
  frmMain_.show();
  frmMain_.raise();
  frmMain_.activateWindow();
}

/// In whatever program shows it. A missing file opens nothing.
void Desktop::OpenFile(const std::string& file) {
  const QString name = QString::fromStdString(file);
  if (QFile::exists(name)) QDesktopServices::openUrl(QUrl::fromLocalFile(name));
}

void Desktop::OpenProgramFile(const char* name) {
  OpenFile(session_.ProgramFolder + '/' + name);
}

void Desktop::ShowHelp() {
  FrmHelp help(QApplication::activeWindow());
  On(&help, &FrmHelp::SoundsWanted, "frmHelp.cmdSounds_Click",
     [this] { OpenProgramFile("sounds.txt"); });
  help.exec();
}

void Desktop::ShowDisplayOptions() {
  DisplayOptions options({.session = session_,
                          .save = [this](const auto& keys) { settings_.SaveDisplayOptions(keys); },
                          .rearrange = [this] { RearrangeDisplays(); },
                          .rewriteTimes = [this] { control_.RewriteTimes(); },
                          .errors = errors_});
  DisplayOptionsDialog(options, QApplication::activeWindow()).exec();
}

void Desktop::ShowGeneralOptions() {
  FrmOptions dialog({.options = session_.options,
                     .table = settings_,
                     .errors = errors_,
                     .applyOnTop = [this] { ApplyOnTop(); }},
                    QApplication::activeWindow());
  On(&dialog, &FrmOptions::DisplayOptionsWanted, "frmOptions.cmdDisplay_Click",
     [this] { ShowDisplayOptions(); });
  On(&dialog, &FrmOptions::SoundOptionsWanted, "frmOptions.cmdSound_Click",
     [this] { ShowSoundOptions(); });
  On(&dialog, &FrmOptions::UnitOptionsWanted, "frmOptions.cmdBridgemate_Click",
     [this] { ShowUnitOptions(); });
  dialog.exec();
}

/// Runs a dialog in which sounds are chosen and tested.
template <class Dialog>
int Desktop::ShowSounds(Dialog& dialog) {
  connect(&sounds_, &QtSoundPlayer::Tested, &dialog, &Dialog::Tested);
  connect(&sounds_, &QtSoundPlayer::Changed, &dialog, &Dialog::ShowSounds);
  const int result = dialog.exec();
  sounds_.StopTest();
  return result;
}

void Desktop::ShowSoundOptions() {
  SoundOptions options({.session = session_,
                        .table = settings_,
                        .sounds = sounds_,
                        .open = [this](const std::string& file) { OpenFile(file); },
                        .prompts = prompts_,
                        .errors = errors_});
  FrmSound dialog(options, QApplication::activeWindow());
  ShowSounds(dialog);
}

void Desktop::ShowUnitOptions() {
  UnitOptions options({session_, settings_, sounds_, prompts_, errors_});
  FrmOptionsBridgemate dialog(options, QApplication::activeWindow());
  if (ShowSounds(dialog) == QDialog::Accepted) scoring_.OptionsChanged();
}

void Desktop::ShowNetworkOptions() {
  FrmOptionsNetwork({session_.options, settings_, network_, OwnAddresses(), errors_},
                    QApplication::activeWindow())
      .exec();
  ShowCodeOnRoomDisplay();
}

/// The address that the director chose, as long as this computer has it; else its first.
void Desktop::ShowCodeOnRoomDisplay() {
  const Options& options = session_.options;
  std::string page;
  if (options.NetworkShowCode && network_.Serves()) {
    const auto own = OwnAddresses();
    const auto chosen = std::find(own.begin(), own.end(), options.NetworkAddress);
    if (!own.empty()) {
      page = PageAddress(chosen == own.end() ? own.front() : *chosen, options.NetworkPort);
    }
  }
  frmDisplay_.ShowAddress(QString::fromStdString(page));
}

void Desktop::HearDevice(const RemoteWord& word) {
  Guarded(errors_, "frmMain.HearDevice", [&] { remotes_.Hear(word); });
}

/// Writes the report's text where it can be written, opens it and shows the picture.
void Desktop::ShowPlayTimes() {
  ScoringLink& link = scoring_.Link();
  if (!link.IsOpen()) {
    prompts_.Message("Open the scoring file of the session first");
    return;
  }
  // What cannot be read just now was read a moment ago.
  link.ReadNow();
  const ScoringSession& session = link.Model();
  if (session.Empty()) {
    prompts_.Message("Error reading file " + link.Path());
    return;
  }
  const std::vector<SectionTimes> times = PlayTimesOf(session, rounds_.Starts());
  const std::string file = WriteOutput(disk_, "BST1.txt", PlayTimeReport(session, times));
  OpenFile(file);
  FrmPlayTime window(
      (session.Picture().sessionName.empty() ? "" : session.Picture().sessionName + "  ") +
          DateAndTimeText(session.Picture().SessionStart()),
      times, QString::fromStdString(file), QApplication::activeWindow());
  On(&window, &FrmPlayTime::TextWanted, "frmPlayTime.cmdText_Click", [&] { OpenFile(file); });
  On(&window, &FrmPlayTime::SaveWanted, "frmPlayTime.cmdSave_Click", [&] {
    const auto chosen =
        prompts_.ChooseFileToSave("Play times.pdf", "PDF or PNG (*.pdf *.png)|*.pdf *.png");
    if (chosen && !window.Page().Save(QString::fromStdString(*chosen))) {
      prompts_.Message("The picture could not be saved\r\n" + *chosen);
    }
  });
  window.exec();
}

/// Options that show beyond their own dialogs, after they were loaded.
void Desktop::ApplyOptions() {
  ApplyOnTop();
  scoring_.Link().BWSSetUnitCaptions();
  RearrangeDisplays();
  ApplyNetwork();
}

void Desktop::ApplyNetwork() {
  network_.Apply();
  ShowCodeOnRoomDisplay();
}

void Desktop::ShutDownComputer() {
  corvanel::ShutDownComputer();
}

void Desktop::EndProgram() {
  recorder_.Close();
  // Also before the event loop has begun.
  QTimer::singleShot(0, qApp, [] { QApplication::exit(0); });
}

}  // namespace corvanel
