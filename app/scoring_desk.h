#pragma once

#include <QObject>
#include <QTimer>
#include <array>

#include "control/settings_menu.h"
#include "control/window/frm_main.h"
#include "display/window/display_window.h"
#include "scoring/progress_monitor.h"
#include "scoring/scoring_link.h"
#include "session/file_opener.h"
#include "system/log_file.h"
#include "system/qt/qt_tick_timer.h"
#include "system/scoring_files.h"

namespace corvanel {

/// The link to the table-top units within the desktop program: its objects, its timer and its
/// dialogs.
class ScoringDesk : public QObject, public SectionChooser, public LinkView, public ProgressView {
  Q_OBJECT

 public:
  struct Parts {
    Session& session;
    SettingsTable& table;
    ControlWindow& control;
    RoundClock& clock;
    Prompts& prompts;
    SoundPlayer& sounds;
    FileOpener& opener;
    FileAccess& disk;
    ErrorTrap& errors;
    ClockEvents& events;
    const TimeSource& time;
    const QtTickTimer& ticks;
    FrmMain& window;
    std::array<DisplayWindow*, 2> displays;
  };
  explicit ScoringDesk(const Parts& parts);

  /// The control window is shown for the first time: offers the latest scoring file.
  void Suggest() { FileChanged(link_.Suggest()); }
  /// Goes on with the file of an earlier run of the program.
  void Reopen(const std::string& path, const std::set<int16_t>& sections);
  const ScoringLink& Link() const { return link_; }
  /// Why the file that is open cannot be followed, found by reading it; empty when it can.
  std::string Problem();
  /// Writes the unit's name into menus; to be called when the options were loaded.
  void ShowUnitName() { link_.BWSSetUnitCaptions(); }
  /// The clock did something.
  void Happened(EventKind kind);
  /// The director starts a session.
  void SessionStarts() { monitor_.SessionStarts(); }
  void ShowUnitOptions();

  std::vector<bool> ChooseSections(const std::string& sessionName,
                                   const std::vector<std::string>& lines) override;
  void SetUnitCaptions(const std::string& unit) override;
  void ShowScoringFile(const std::string& path) override;
  void ShowTables(const ProgressFace& face) override;

 private:
  void FileChanged(bool changed);
  void Poll();
  void mnuPlayTime_Click();

  Parts parts_;
  ScoringFiles files_;
  ScoringFoldersOnDisk folders_;
  LogFile logFile_;
  ActivityLog log_;
  ScoringLink link_;
  ProgressMonitor monitor_;
  QTimer timerBWS_;
  int failedReads_ = 0;  // one after the other
};

}  // namespace corvanel
