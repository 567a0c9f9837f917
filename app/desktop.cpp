#include "app/desktop.h"

#include <QApplication>
#include <cmath>
#include <cstdlib>

#include "control/window/dlg_welcome.h"
#include "display/window/display_options_dialog.h"
#include "display/window/frm_help.h"
#include "settings/sound_options.h"
#include "settings/window/frm_options.h"
#include "settings/window/frm_sound.h"
#include "startup/start_up.h"
#include "startup/version.h"
#include "system/folders.h"
#include "system/qt/qt_installer_file.h"
#include "system/qt/qt_update_server.h"
#include "system/shut_down.h"
#include "system/standard_settings_file.h"

namespace corvanel {

Desktop::Desktop(const std::filesystem::path& store)
    : store_(store),
      ticks_([this] { clock_.Tick(); }, [this] { clock_.WasHeld(); }),
      prompts_(ticks_),
      errors_(prompts_, [] { std::_Exit(EXIT_FAILURE); }),
      settings_(store_, session_, errors_),
      sounds_(ProgramFolderPath()),
      exit_(session_, prompts_, *this),
      frmMain_(session_),
      clock_({session_, time_, ticks_, *this, sounds_, *this, errors_}),
      control_({session_, frmMain_, prompts_, errors_, time_, clock_, settings_, *this, exit_}),
      favourites_({settings_, session_, frmMain_, control_, prompts_, errors_, time_, clock_}),
      settingsMenu_({store_, session_, disk_, favourites_, prompts_, errors_}),
      commands_({clock_, session_, prompts_, errors_, *this, exit_}),
      frmDisplay_(session_, commands_),
      frmDisplay2_(session_, commands_),
      scoring_({session_,
                settings_,
                control_,
                clock_,
                prompts_,
                sounds_,
                opener_,
                disk_,
                errors_,
                *this,
                time_,
                ticks_,
                frmMain_,
                {&frmDisplay_, &frmDisplay2_}}),
      safety_({session_,
               control_,
               clock_,
               scoring_,
               prompts_,
               sounds_,
               time_,
               store_,
               frmMain_,
               {&frmDisplay_, &frmDisplay2_}},
              store) {
  session_.ProgramFolder = ProgramFolderPath();
  frmMain_.SetLogic(control_);
  frmMain_.ShowVersion(QString::fromStdString(ThisVersion().Text()));
  ConnectDisplays();
  qApp->installEventFilter(&dialogPlacer_);
  timerCurrentTime_.setSingleShot(true);
  timerCurrentTime_.setTimerType(Qt::PreciseTimer);
  connect(&timerCurrentTime_, &QTimer::timeout, this, [this] {
    clock_.TimerCurrentTime_Timer();
    ArmTimeOfDay();
  });
  connect(&frmMain_, &FrmMain::ShortcutsWanted, this, [this] { ShowHelp(); });
  connect(&frmMain_, &FrmMain::ExportWanted, this,
          [this] { settingsMenu_.mnuSettingsExport_Click(); });
  connect(&frmMain_, &FrmMain::ImportWanted, this, [this] {
    settingsMenu_.mnuSettingsImport_Click();
    ApplyOptions();
  });
  connect(&frmMain_, &FrmMain::UndoImportWanted, this, [this] {
    settingsMenu_.mnuSettingsUndoImport_Click();
    ApplyOptions();
  });
  connect(&frmMain_, &FrmMain::SaveAsNew, this,
          [this](const std::string& name) { favourites_.cmdSaveDefault_Click(name); });
  connect(&frmMain_, &FrmMain::FavouriteChosen, this,
          [this](const std::string& name) { favourites_.cboFavs_Click(name); });
  connect(&frmMain_, &FrmMain::FavouriteSaveWanted, this,
          [this](const std::string& name) { favourites_.cmdFavSave_Click(name); });
  connect(&frmMain_, &FrmMain::FavouriteDeleteWanted, this,
          [this](const std::string& name) { favourites_.cmdFavDelete_Click(name); });
}

bool Desktop::Load() {
  StandardSettingsFile waiting(session_.ProgramFolder);
  if (!ImportStandardSettings(waiting, store_, prompts_, errors_)) return false;
  HandlerSteps step(errors_, "frmMain");
  step([&] { settings_.GetDefaults(time_.TimeOfDay()); });
  step([&] { favourites_.Fill(); });
  step([&] { control_.Display(); });
  step([&] { ApplyOptions(); });
  return true;
}

void Desktop::StartUp() {
  splash_ = std::make_unique<DlgSplash>(QString::fromStdString(ThisVersion().Text()));
  QtUpdateServer server(UpdateUrl());
  QtInstallerFile installer;
  UpdateCheck update(
      {*splash_, server, installer, prompts_, ThisVersion(),
       [this](const std::string& bytes) { WriteOutput(disk_, "version.txt", bytes); }});
  corvanel::StartUp start({store_, *splash_, update, prompts_, errors_, ThisVersion()});
  connect(splash_.get(), &DlgSplash::AutoLaunchTicked, this,
          [this](bool ticked) { corvanel::SaveAutoLaunch(store_, errors_, ticked); });
  splash_->SetAutoLaunch(start.AutoLaunch());
  splash_->show();
  const auto end = start.Run();
  if (end == corvanel::StartUp::End::EndProgram) {
    EndProgram();
    return;
  }
  // A splash that was closed meanwhile does not wait either.
  if (end == corvanel::StartUp::End::OpenAtOnce || !splash_->isVisible()) {
    splash_->hide();
    OpenControlWindow();
    return;
  }
  splash_->ShowLaunch();
  connect(splash_.get(), &QDialog::finished, this, &Desktop::OpenControlWindow);
}

void Desktop::OpenControlWindow() {
  if (!Load()) {
    EndProgram();
    return;
  }
  frmMain_.show();
  if (!store_.Damage().empty()) {
    prompts_.Message(store_.Damage() +
                     "\n\nWhat could be read of it is used, and defaults for the rest. "
                     "The damaged file will be kept beside the new one.");
  }
  if (safety_.OfferToContinue()) return;
  scoring_.Suggest();
  if (firstStart_) Welcome();
}

/// On a computer that has never seen the program; kept from coming again by what it stores.
void Desktop::Welcome() {
  HandlerSteps step(errors_, "frmMain");
  step([&] { settings_.SaveSession(); });
  DlgWelcome dialog(session_, &frmMain_);
  if (dialog.exec() != QDialog::Accepted) return;
  session_.settings = dialog.Settings();
  step([&] { control_.Display(); });
  control_.cmdStart_Click();
}

/// The time of day is shown to the minute, and changes with it. That the computer's clock was set
/// is noticed by the round clock's ticks.
void Desktop::ArmTimeOfDay() {
  const double intoMinute = std::fmod(time_.TimeOfDay().Seconds(), 60);
  timerCurrentTime_.start(static_cast<int>(std::ceil((60 - intoMinute) * 1000)));
}

void Desktop::Happened(EventKind kind, const std::string& text) {
  scoring_.Happened(kind);
  emit SessionEvent(static_cast<int>(kind), QString::fromStdString(text));
}

void Desktop::ShowControlWindow() {
  control_.ShowProgress();
  // Where it stood, rather than where the window system would put a new window.
  frmMain_.move(frmMain_.pos());
  frmMain_.show();
  frmMain_.raise();
  frmMain_.activateWindow();
}

void Desktop::OpenProgramFile(const char* name) {
  HandlerSteps(errors_, "frmMain")([&] { opener_.Open(session_.ProgramFolder + '/' + name); });
}

void Desktop::ShowHelp() {
  FrmHelp help(QApplication::activeWindow());
  connect(&help, &FrmHelp::SoundsWanted, this, [this] { OpenProgramFile("sounds.txt"); });
  help.exec();
}

void Desktop::RewriteTimes() {
  control_.RewriteTimes();
  clock_.RefreshSchedule();
  clock_.TimerCurrentTime_Timer();
}

void Desktop::ShowDisplayOptions() {
  DisplayOptions options(session_, settings_, *this, errors_);
  DisplayOptionsDialog(options, QApplication::activeWindow()).exec();
}

void Desktop::ShowGeneralOptions() {
  GeneralOptions options(session_, settings_, errors_, [this] { ApplyOnTop(); });
  FrmOptions dialog(options, QApplication::activeWindow());
  connect(&dialog, &FrmOptions::DisplayOptionsWanted, this, &Desktop::ShowDisplayOptions);
  connect(&dialog, &FrmOptions::SoundOptionsWanted, this, &Desktop::ShowSoundOptions);
  connect(&dialog, &FrmOptions::UnitOptionsWanted, &scoring_, &ScoringDesk::ShowUnitOptions);
  dialog.exec();
}

void Desktop::ShowSoundOptions() {
  SoundOptions options({session_, settings_, sounds_, opener_, prompts_, errors_});
  FrmSound(options, QApplication::activeWindow()).exec();
}

/// Options that show beyond their own dialogs, after they were loaded.
void Desktop::ApplyOptions() {
  ApplyOnTop();
  scoring_.ShowUnitName();
  RearrangeDisplays();
}

void Desktop::ShutDownComputer() {
  corvanel::ShutDownComputer();
}

void Desktop::EndProgram() {
  safety_.EndProgram();
  // Also before the event loop has begun.
  QTimer::singleShot(0, qApp, [] { QApplication::exit(0); });
}

}  // namespace corvanel
