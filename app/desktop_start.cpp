// How the desktop program starts: what it looks at and asks before the control window stands.

#include <QApplication>
#include <QTimer>

#include "app/desktop.h"
#include "control/window/dlg_welcome.h"
#include "startup/standard_settings.h"
#include "startup/start_up.h"
#include "startup/version.h"
#include "system/installer_file.h"
#include "system/qt/qt_update_server.h"

namespace corvanel {
namespace {

constexpr int kWindowPlaced = 300;  // milliseconds

}  // namespace

bool Desktop::Load() {
  if (!ImportStandardSettings(session_.ProgramFolder, disk_, store_, prompts_, errors_))
    return false;
  favourites_.Reload();
  remotes_.Load();
  ApplyOptions();
  return true;
}

void Desktop::StartUp() {
  // The room stands still: nothing comes before the question how its session goes on.
  if (continue_.Waits()) {
    OpenControlWindow();
    return;
  }
  splash_ = std::make_unique<DlgSplash>(QString::fromStdString(ThisVersion().Text()));
  QtUpdateServer server(UpdateUrl());
  connect(splash_.get(), &QDialog::finished, this, [&server] { server.Stop(); });
  const auto installer = MakeInstallerFile();
  UpdateCheck update(
      {*splash_, server, installer.get(), prompts_, time_, ThisVersion(), CORVANEL_UPDATE_KEY,
       [this](const std::string& bytes) { WriteOutput(disk_, "version.txt", bytes); }});
  corvanel::StartUp start({store_, *splash_, update, prompts_, errors_, ThisVersion()});
  On(splash_.get(), &DlgSplash::AutoLaunchTicked, "dlgSplash.chkAutoLaunch_Click",
     [this](bool ticked) { corvanel::SaveAutoLaunch(store_, errors_, ticked); });
  splash_->SetAutoLaunch(start.AutoLaunch());
  splash_->show();
  const auto end = start.Run();
  disconnect(splash_.get(), &QDialog::finished, this, nullptr);
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
  On(splash_.get(), &QDialog::finished, "dlgSplash.cmdLaunch_Click",
     [this](int) { OpenControlWindow(); });
}

void Desktop::OpenControlWindow() {
  if (!Load()) {
    EndProgram();
    return;
  }
  loaded_ = true;
  const bool goesOn = OfferToContinue();
  if (!goesOn) frmMain_.show();
  if (!store_.Damage().empty()) {
    prompts_.Message(store_.Damage() +
                     "\n\nWhat could be read of it is used, and defaults for the rest. "
                     "The damaged file will be kept beside the new one.");
  }
  if (takenOver_) {
    store_.Flush();
    prompts_.Message(
        "The settings and favourites of the former program on this computer were taken over.\n\n"
        "They stay there as they are.");
  }
  if (goesOn) return;
  // The window system has not put the window in its place yet, over which these will stand.
  QTimer::singleShot(kWindowPlaced, this, [this] {
    if (clock_.UnderWay()) return;
    openFirst_.empty() ? scoring_.Suggest() : scoring_.Open(openFirst_);
    if (firstStart_) Welcome();
  });
}

/// An earlier run may have left a session behind. True when it goes on.
bool Desktop::OfferToContinue() {
  const auto record = continue_.Ask();
  if (!record) return false;
  scoring_.Reopen(record->scoring);
  rounds_.GoOn(record->starts);
  continue_.GoOn(*record);
  control_.SessionContinues();
  return true;
}

/// On a computer that has never seen the program; kept from coming again by what it stores.
void Desktop::Welcome() {
  settings_.SaveSession();
  DlgWelcome dialog(session_, time_.TimeOfDay(), QGuiApplication::screens().size(), &frmMain_);
  if (dialog.exec() != QDialog::Accepted) return;
  session_.settings = dialog.Settings();
  control_.Display();
  control_.cmdStart_Click();
}

}  // namespace corvanel
