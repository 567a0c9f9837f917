#include "scoring/progress_monitor.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <utility>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr double kBlindAfter = 60;  // seconds without a good picture
constexpr int kSilentRounds = 2;    // after which a table is named to the director

}  // namespace

ProgressInput ProgressMonitor::Input() const {
  const Standing standing = parts_.clock.Now();
  const Options& options = session_.options;
  return {parts_.clock.State().round,
          session_.settings.nRounds,
          standing.phase == Phase::Round ? standing.secondsLeft : 0,
          options.BMMinPerBoard,
          options.BMSlowTables,
          parts_.link.LeftOut()};
}

/// Seconds since the last good picture.
double ProgressMonitor::Age() const {
  return lastGood_ ? parts_.time.Uptime() - *lastGood_ : 0;
}

void ProgressMonitor::TimerBWS_Timer() {
  const Phase phase = parts_.clock.State().phase;
  if (!parts_.link.IsOpen() || phase == Phase::Idle) return;
  // The evening is over: nothing more is to come.
  if (phase == Phase::Ended && AllFinished()) return;
  if (!lastGood_) lastGood_ = parts_.time.Uptime();
  parts_.link.BWSReadFile([this](bool read) {
    Guarded(parts_.errors, "frmMain.TimerBWS_Timer", [&] { Polled(read); });
  });
}

void ProgressMonitor::Polled(bool read) {
  if (!parts_.link.IsOpen()) return;
  if (read) {
    lastGood_ = parts_.time.Uptime();
    Follow();
  } else if (Age() >= kBlindAfter) {
    LetGo();
    Show({});
  } else if (parts_.link.Model().Empty()) {
    Show({});  // the file of an earlier run is not there
  }
}

void ProgressMonitor::OmitWarnings() {
  parts_.clock.OmitWarnings(session_.options.BMOmitwarning1, session_.options.BMOmitwarning2);
}

void ProgressMonitor::Follow() {
  OmitWarnings();
  const RoundProgress progress = ProgressOf(parts_.link.Model(), Input());
  if (progress.tables.empty()) {
    LetGo();
    Show({});
    return;
  }
  if (!parts_.link.IsTonights()) {
    // Shown, and no more: in doubt the clock runs as if there were no link.
    waitForPlaying_ = true;
    LetGo();
    TellSilent({});
    Show(progress);
    return;
  }
  if (progress.Playing() > 0) waitForPlaying_ = false;
  PauseOrResume(progress);
  EndRoundWhenFinished(progress);
  TellSilent(progress);
  Show(progress);
}

/// A table that is not there, or whose unit is broken, would hold the others up all evening.
void ProgressMonitor::TellSilent(const RoundProgress& progress) {
  std::map<std::string, TableId> silent;
  for (const TableProgress& table : progress.tables) {
    if (table.silentRounds < kSilentRounds || table.state == TableState::LeftOut) continue;
    if (table.received == 0) silent[table.label] = {table.section, table.table};
  }
  for (const auto& [label, table] : silent_) {
    if (!silent.contains(label)) parts_.notices.Clear(NoticeKind::SilentTable, label);
  }
  silent_ = silent;
  for (const auto& [label, table] : silent_) {
    parts_.notices.Set({NoticeKind::SilentTable,
                        fmt::format("Table {} has sent nothing for two rounds", label),
                        "Leave it out", label});
  }
}

std::optional<TableId> ProgressMonitor::SilentTable(const std::string& label) const {
  const auto found = silent_.find(label);
  return found == silent_.end() ? std::nullopt : std::optional(found->second);
}

void ProgressMonitor::PauseOrResume(const RoundProgress& progress) {
  const Options& options = session_.options;
  // Deliberate: strictly more tables pause the clock, as many let it run again.
  if (parts_.clock.State().autoPaused) {
    if (progress.Playing() <= options.BMPauseTables || !options.BMAutoPause) LetGo();
  } else if (progress.Playing() > options.BMPauseTables && MayPause(progress)) {
    parts_.clock.Do(SessionCommand::AutoPause);
    parts_.log.LogWrite(fmt::format("Paused - {} tables playing", progress.Playing()));
    for (const TableProgress& table : progress.tables) {
      if (table.StillPlaying()) {
        parts_.log.LogWrite(" Table " +
                            PairsAt(parts_.link.Model(), table, parts_.clock.State().round));
      }
    }
    if (options.BMPausePlay) {
      parts_.listener.Happened(EventKind::Sound, std::string(FileName(options.BMPauseSound)));
      parts_.sounds.Play(options.BMPauseSound);
    }
  }
}

/// Early in a round every table is still playing; only when its time is nearly spent are they
/// late.
bool ProgressMonitor::MayPause(const RoundProgress& progress) const {
  const ClockState& state = parts_.clock.State();
  const Options& options = session_.options;
  const float minutes = options.BMPauseMinutes;
  const bool nearlySpent =
      parts_.clock.Now().secondsLeft <= minutes * 60.0 || minutes >= session_.settings.MinPerRound;
  const bool resultInRound =
      std::any_of(progress.tables.begin(), progress.tables.end(),
                  [](const TableProgress& table) { return table.received > 0; });
  return options.BMAutoPause && state.phase == Phase::Round && !state.paused && nearlySpent &&
         resultInRound && state.mayAutoPause;
}

/// Resumes a pause of the monitor's own, and no other.
void ProgressMonitor::LetGo() {
  if (!parts_.clock.State().autoPaused) return;
  parts_.clock.Do(SessionCommand::AutoResume);
  parts_.log.LogWrite("Resumed");
}

bool ProgressMonitor::MayEndRound(const RoundProgress& progress) const {
  const ClockState& state = parts_.clock.State();
  return parts_.link.IsTonights() && progress.AllFinished() && !waitForPlaying_ &&
         session_.options.BMAutoMove && state.phase == Phase::Round && !state.paused;
}

/// The file may have been caught half-way: a second look must agree. On a share too slow for that
/// the next poll is the second look.
void ProgressMonitor::EndRoundWhenFinished(const RoundProgress& progress) {
  const bool confirmed = std::exchange(sawFinished_, false);
  if (!MayEndRound(progress)) return;
  if (confirmed) {
    EndRound();
    return;
  }
  parts_.link.BWSReadFile([this](bool read) {
    sawFinished_ = !read;
    if (read && MayEndRound(ProgressOf(parts_.link.Model(), Input()))) EndRound();
  });
}

void ProgressMonitor::EndRound() {
  parts_.log.LogWrite("End of round " + std::to_string(parts_.clock.State().round));
  parts_.clock.Do(SessionCommand::AutoEnd);
}

void ProgressMonitor::SessionStarts() {
  parts_.notices.Clear(NoticeKind::TakenOver);
  if (!parts_.link.IsOpen()) return;
  parts_.log.LogWrite(
      fmt::format("GetUserInputs - Max boards per set {}", parts_.link.Model().MaxBoardsPerSet()));
}

void ProgressMonitor::Happened(EventKind kind, const std::string& /*text*/) {
  if (kind == EventKind::Round || kind == EventKind::Continue) BeginRound();
  if (kind == EventKind::Round && parts_.link.IsOpen()) OmitWarnings();
  // Else a round that was ended by mistake would end again at the next look.
  if (kind == EventKind::Undo) waitForPlaying_ = true;
}

bool ProgressMonitor::AllFinished() const {
  return !parts_.link.Model().Empty() && ProgressOf(parts_.link.Model(), Input()).AllFinished();
}

/// A round begins or is begun again. One that all tables have finished already (an old file, a
/// restart) is not ended at once.
void ProgressMonitor::BeginRound() {
  const int16_t round = parts_.clock.State().round;
  const bool again = round_ == round;
  round_ = round;
  sawFinished_ = false;
  waitForPlaying_ = again || AllFinished();
  // His way back, should he have dismissed the line.
  parts_.link.TellOfLeftOut();
}

void ProgressMonitor::FileChanged() {
  Guarded(parts_.errors, "frmMain.FileChanged", [&] {
    LetGo();
    lastGood_.reset();
    TellSilent({});
    // A file that has all results of this round already is an old one.
    waitForPlaying_ = AllFinished();
    face_ = ProgressFace();
    parts_.listener.ShowTables(face_);
  });
  TimerBWS_Timer();
}

void ProgressMonitor::Show(const RoundProgress& progress) {
  ProgressFace face;
  face.lines = progress.texts;
  if (!progress.tables.empty()) face.sections = GridOf(parts_.link.Model(), progress, Input());
  face.info = Info(progress);
  if (parts_.clock.State().autoPaused) face.waiting = progress.Waiting();
  if (face == face_) return;
  face_ = face;
  parts_.listener.ShowTables(face_);
}

std::string ProgressMonitor::Info(const RoundProgress& progress) const {
  const std::string unit = session_.options.TableTopUnit + ": ";
  if (Age() >= kBlindAfter) {
    return unit + fmt::format("no data for {} min", static_cast<int>(Age() / 60));
  }
  if (parts_.link.Model().Empty()) return unit + "no data";
  if (progress.tables.empty()) return unit + "no tables in the chosen sections";
  if (parts_.clock.State().autoPaused) {
    return unit + fmt::format("waiting for {} table{}", progress.Playing(),
                              progress.Playing() == 1 ? "" : "s");
  }
  const auto silent = progress.Labels(TableState::Silent);
  if (!silent.empty() && progress.Playing() == 0) {
    return unit + fmt::format("nothing from table{} {}", silent.size() == 1 ? "" : "s",
                              fmt::join(silent, " "));
  }
  const auto finished = progress.Labels(TableState::Finished);
  const auto playing =
      std::count_if(progress.tables.begin(), progress.tables.end(), [](const TableProgress& table) {
        return table.state != TableState::NotPlaying && table.state != TableState::LeftOut;
      });
  if (playing == 0) return unit + "no table plays this round";
  return unit + fmt::format("{} of {} tables finished", finished.size(), playing);
}

}  // namespace corvanel
