#include "app/scoring_desk.h"

#include <QApplication>

#include "scoring/play_time.h"
#include "scoring/window/frm_options_bridgemate.h"
#include "scoring/window/frm_play_time.h"
#include "scoring/window/sections_dialog.h"
#include "startup/version.h"
#include "system/disk.h"
#include "system/folders.h"

namespace corvanel {
namespace {

constexpr int kPollInterval = kPollSeconds * 1000;  // milliseconds
constexpr double kLongestPoll = 0.3;                // seconds

std::vector<std::filesystem::path> LogFolders() {
  std::vector<std::filesystem::path> folders = OutputFolders();
  for (auto& folder : folders) folder /= "logs";
  return folders;
}

}  // namespace

ScoringDesk::ScoringDesk(const Parts& parts)
    : parts_(parts),
      logFile_(LogFolders()),
      log_(parts.session, parts.time, logFile_),
      link_({parts.session, parts.table, files_, folders_, *this, *this, parts.control, parts.clock,
             parts.prompts, parts.errors, parts.time, log_, ThisVersion().Text()}),
      monitor_({parts.session, link_, parts.clock, *this, parts.sounds, parts.events, parts.time,
                log_, parts.errors}) {
  timerBWS_.setSingleShot(true);
  connect(&timerBWS_, &QTimer::timeout, this, &ScoringDesk::Poll);
  connect(&parts_.window, &FrmMain::UnitOptionsWanted, this, &ScoringDesk::ShowUnitOptions);
  connect(&parts_.window, &FrmMain::OpenFileWanted, this,
          [this] { FileChanged(link_.mnuOpenFile_Click()); });
  connect(&parts_.window, &FrmMain::CloseFileWanted, this, [this] {
    link_.mnuCloseFile_Click();
    FileChanged(true);
  });
  connect(&parts_.window, &FrmMain::PlayTimeWanted, this, &ScoringDesk::mnuPlayTime_Click);
}

/// A file was opened or closed; the timer runs while one is open.
void ScoringDesk::FileChanged(bool changed) {
  if (!changed) return;
  monitor_.FileChanged();
  if (link_.IsOpen()) {
    timerBWS_.start(kPollInterval);
  } else {
    timerBWS_.stop();
  }
}

void ScoringDesk::Reopen(const std::string& path, const std::set<int16_t>& sections) {
  link_.Reopen(path, sections);
  FileChanged(true);
}

std::string ScoringDesk::Problem() {
  // A file that is being written cannot be read now and then.
  failedReads_ = !link_.IsOpen() || link_.BWSReadFile() ? 0 : failedReads_ + 1;
  return failedReads_ < 2 ? "" : "the file " + link_.Path() + " cannot be read";
}

/// A poll can take its time on a slow share; it waits until just after a second was shown, so that
/// the next one is never late.
void ScoringDesk::Poll() {
  const double toTick = parts_.ticks.SecondsToTick();
  if (toTick > 0 && toTick < kLongestPoll) {
    timerBWS_.start(static_cast<int>(toTick * 1000) + 20);
    return;
  }
  monitor_.TimerBWS_Timer();
  timerBWS_.start(kPollInterval);
}

void ScoringDesk::Happened(EventKind kind) {
  monitor_.Happened(kind);
  // A new round shows its tables at once.
  if (kind == EventKind::Round && link_.IsOpen()) timerBWS_.start(0);
}

void ScoringDesk::ShowUnitOptions() {
  UnitOptions options({parts_.session, parts_.table, parts_.sounds, parts_.prompts, parts_.errors});
  if (FrmOptionsBridgemate(options, QApplication::activeWindow()).exec() != QDialog::Accepted) {
    return;
  }
  link_.BWSSetUnitCaptions();
  monitor_.TimerBWS_Timer();
}

/// Writes the report's text where it can be written, opens it and shows the picture.
void ScoringDesk::mnuPlayTime_Click() {
  if (!link_.IsOpen()) {
    parts_.prompts.Message("Open the scoring file of the session first");
    return;
  }
  HandlerSteps(parts_.errors, "frmMain")([&] {
    // What cannot be read just now was read a moment ago.
    link_.BWSReadFile();
    const ScoringSession& session = link_.Model();
    if (session.Empty()) {
      parts_.prompts.Message("Error reading file " + link_.Path());
      return;
    }
    const std::vector<SectionTimes> times = PlayTimesOf(session);
    const std::string file = WriteOutput(parts_.disk, "BST1.txt", PlayTimeReport(session, times));
    if (!file.empty()) parts_.opener.Open(file);
    FrmPlayTime window(
        session.Picture().sessionName + "  " + DateAndTimeText(session.Picture().SessionStart()),
        times, QString::fromStdString(file), QApplication::activeWindow());
    connect(&window, &FrmPlayTime::TextWanted, this, [&] { parts_.opener.Open(file); });
    connect(&window, &FrmPlayTime::SaveWanted, this, [&] {
      const auto chosen =
          parts_.prompts.ChooseFileToSave("Play times.pdf", "PDF or PNG (*.pdf *.png)|*.pdf *.png");
      if (chosen && !window.Page().Save(QString::fromStdString(*chosen))) {
        parts_.prompts.Message("The picture could not be saved\r\n" + *chosen);
      }
    });
    window.exec();
  });
}

std::vector<bool> ScoringDesk::ChooseSections(const std::string& sessionName,
                                              const std::vector<std::string>& lines) {
  SectionsDialog dialog(sessionName, lines, QApplication::activeWindow());
  return dialog.exec() == QDialog::Accepted ? dialog.Ticked() : std::vector<bool>();
}

void ScoringDesk::SetUnitCaptions(const std::string& unit) {
  parts_.window.ShowUnit(QString::fromStdString(unit));
}

void ScoringDesk::ShowScoringFile(const std::string& path) {
  parts_.window.ShowScoringFile(QString::fromStdString(path));
}

void ScoringDesk::ShowTables(const ProgressFace& face) {
  for (DisplayWindow* display : parts_.displays) display->ShowTables(face);
}

}  // namespace corvanel
