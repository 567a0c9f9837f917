#include "app/desktop.h"

#include <QApplication>
#include <QScreen>
#include <cmath>
#include <cstdlib>

#include "display/window/frm_help.h"
#include "platform/folders.h"
#include "platform/shut_down.h"
#include "startup/version.h"

namespace corvanel {

Desktop::Desktop(const std::filesystem::path& store)
    : store_(store),
      ticks_([this] { clock_.Tick(); }),
      prompts_(ticks_),
      errors_(prompts_, [] { std::_Exit(EXIT_FAILURE); }),
      settings_(store_, session_, errors_),
      sounds_(ProgramFolderPath()),
      exit_(session_, prompts_, *this),
      frmMain_(session_),
      clock_({session_, time_, ticks_, *this, sounds_, *this, errors_}),
      control_({session_, frmMain_, prompts_, errors_, time_, clock_, settings_, *this, exit_}),
      commands_({clock_, session_, prompts_, errors_, *this, exit_}),
      frmDisplay_(session_, commands_) {
  session_.ProgramFolder = ProgramFolderPath();
  frmMain_.SetLogic(control_);
  frmMain_.ShowVersion(QString::fromStdString(VersionText()));
  frmDisplay_.setWindowTitle(frmMain_.windowTitle());
  timerCurrentTime_.setSingleShot(true);
  timerCurrentTime_.setTimerType(Qt::PreciseTimer);
  connect(&timerCurrentTime_, &QTimer::timeout, this, [this] {
    clock_.TimerCurrentTime_Timer();
    ArmTimeOfDay();
  });
  connect(&frmMain_, &FrmMain::ShortcutsWanted, this, [this] { ShowHelp(); });
  HandlerSteps step(errors_, "frmMain");
  step([&] { settings_.GetDefaults(time_.TimeOfDay()); });
  step([&] {
    frmMain_.ShowFavourites(settings_.FavouriteNames(),
                            settings_.Entry(settings_.FavouriteInUse()).Name);
  });
  step([&] { control_.Display(); });
}

void Desktop::Open() {
  frmMain_.show();
  if (!store_.Damage().empty()) {
    prompts_.Message(store_.Damage() +
                     "\n\nWhat could be read of it is used, and defaults for the rest. "
                     "The damaged file will be kept beside the new one.");
  }
}

/// The time of day is shown to the minute, and changes with it. That the computer's clock was set
/// is noticed by the round clock's ticks.
void Desktop::ArmTimeOfDay() {
  const double intoMinute = std::fmod(time_.TimeOfDay().Seconds(), 60);
  timerCurrentTime_.start(static_cast<int>(std::ceil((60 - intoMinute) * 1000)));
}

void Desktop::ShowFace(const ClockFace& face) {
  frmDisplay_.ShowFace(face);
  clock_.TimerCurrentTime_Timer();
  control_.ShowProgress();
}

void Desktop::ShowTimeOfDay(const std::string& time) {
  frmDisplay_.ShowTimeOfDay(time);
}

void Desktop::Happened(EventKind kind, const std::string& text) {
  emit SessionEvent(static_cast<int>(kind), QString::fromStdString(text));
}

void Desktop::ShowControlWindow() {
  control_.ShowProgress();
  frmMain_.show();
  frmMain_.raise();
  frmMain_.activateWindow();
}

void Desktop::ShowHelp() {
  FrmHelp(QApplication::activeWindow()).exec();
}

double Desktop::ScreenWidth() const {
  return QGuiApplication::primaryScreen()->geometry().width() * kTwipsPerPixel;
}

void Desktop::ShowFullScreenPair(bool fullScreen) {
  frmDisplay_.ShowFullScreenPair(fullScreen);
}

void Desktop::ShowDisplays() {
  if (!frmDisplay_.isVisible()) frmDisplay_.Restore();
  frmDisplay_.show();
  frmDisplay_.activateWindow();
  frmDisplay_.setFocus();
  ArmTimeOfDay();
  frmMain_.hide();
}

void Desktop::SaveDisplayGeometry() {
  // The program ends all the same when the store cannot be written.
  HandlerSteps step(errors_, "modTimer");
  step([&] { commands_.CaptureGeometry(frmDisplay_); });
  step([&] {
    settings_.SaveOptions({"DisplayState", "FormX", "FormY", "FormSizeX", "FormSizeY"});
  });
}

void Desktop::ShutDownComputer() {
  corvanel::ShutDownComputer();
}

void Desktop::EndProgram() {
  QApplication::exit(0);
}

}  // namespace corvanel
