#include "scoring/progress_monitor.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <utility>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr double kBlindAfter = 60;  // seconds without a good picture

}  // namespace

ProgressInput ProgressMonitor::Input() const {
  const Progress progress = parts_.clock.CurrentProgress();
  const Options& options = session_.options;
  return {session_.currentRound, session_.settings.nRounds,
          progress.phase == Phase::Round ? progress.secondsLeft : 0, options.BMMinPerBoard,
          options.BMSlowTables};
}

/// Seconds since the last good picture, over midnight too.
double ProgressMonitor::Age() const {
  if (!lastGood_) return 0;
  const double age = parts_.time.Counter() - *lastGood_;
  return age < 0 ? age + kSecondsPerDay : age;
}

void ProgressMonitor::TimerBWS_Timer() {
  HandlerSteps step(parts_.errors, "frmMain");
  if (!parts_.link.IsOpen() || parts_.clock.State().phase == Phase::Idle) return;
  step([&] {
    if (!lastGood_) lastGood_ = parts_.time.Counter();
    if (parts_.link.BWSReadFile()) {
      lastGood_ = parts_.time.Counter();
      Follow();
    } else if (Age() >= kBlindAfter) {
      LetGo();
      Show({});
    } else if (parts_.link.Model().Empty()) {
      Show({});  // the file of an earlier run is not there
    }
  });
}

void ProgressMonitor::Follow() {
  parts_.clock.OmitWarnings();
  const RoundProgress progress = ProgressOf(parts_.link.Model(), Input());
  if (progress.tables.empty()) {
    LetGo();
    Show({});
    return;
  }
  if (progress.Playing() > 0) waitForPlaying_ = false;
  PauseOrResume(progress);
  EndRoundWhenFinished(progress);
  Show(progress);
}

void ProgressMonitor::PauseOrResume(const RoundProgress& progress) {
  const Options& options = session_.options;
  // Meant so: strictly more tables pause the clock, as many let it run again.
  if (parts_.clock.State().autoPaused) {
    if (progress.Playing() <= options.BMPauseTables || !options.BMAutoPause) LetGo();
  } else if (progress.Playing() > options.BMPauseTables && MayPause(progress)) {
    parts_.clock.Pause(Hand::Link);
    parts_.log.LogWrite(fmt::format("Paused - {} tables playing", progress.Playing()));
    if (options.BMPausePlay) {
      parts_.events.Happened(EventKind::Sound, std::string(FileName(options.BMPauseSound)));
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
  const bool nearlySpent = parts_.clock.CurrentProgress().secondsLeft <= minutes * 60.0 ||
                           minutes >= session_.settings.MinPerRound;
  const bool resultInRound =
      std::any_of(progress.tables.begin(), progress.tables.end(),
                  [](const TableProgress& table) { return table.received > 0; });
  return options.BMAutoPause && state.phase == Phase::Round && !state.paused && nearlySpent &&
         resultInRound && state.mayAutoPause;
}

/// Resumes a pause of the monitor's own, and no other.
void ProgressMonitor::LetGo() {
  if (!parts_.clock.State().autoPaused) return;
  parts_.clock.Resume(Hand::Link);
  parts_.log.LogWrite("Resumed");
}

bool ProgressMonitor::MayEndRound(const RoundProgress& progress) const {
  const ClockState& state = parts_.clock.State();
  return progress.AllFinished() && !waitForPlaying_ && session_.options.BMAutoMove &&
         progress.highestRound >= session_.currentRound && state.phase == Phase::Round &&
         !state.paused;
}

void ProgressMonitor::EndRoundWhenFinished(const RoundProgress& progress) {
  const bool confirmed = std::exchange(sawFinished_, false);
  if (!MayEndRound(progress)) return;
  // The file may have been caught half-way: a second look must agree. On a share too slow for that
  // the next poll is the second look.
  if (!confirmed) {
    sawFinished_ = !parts_.link.BWSReadFile();
    if (sawFinished_ || !MayEndRound(ProgressOf(parts_.link.Model(), Input()))) return;
  }
  parts_.log.LogWrite("End of round " + std::to_string(session_.currentRound));
  parts_.clock.EndRound();
}

void ProgressMonitor::SessionStarts() {
  if (!parts_.link.IsOpen()) return;
  parts_.log.LogWrite(
      fmt::format("GetUserInputs - Max boards per set {}", parts_.link.Model().MaxBoardsPerSet()));
}

void ProgressMonitor::Happened(EventKind kind) {
  if (kind == EventKind::Round) BeginRound();
  if (kind == EventKind::Continue) BeginRound();
  // Else a round that was ended by mistake would end again at the next look.
  if (kind == EventKind::Undo) waitForPlaying_ = true;
}

bool ProgressMonitor::AllFinished() const {
  return !parts_.link.Model().Empty() && ProgressOf(parts_.link.Model(), Input()).AllFinished();
}

/// A round begins or is begun again. One that all tables have finished already (an old file, a
/// restart) is not ended at once.
void ProgressMonitor::BeginRound() {
  const bool again = round_ == session_.currentRound;
  round_ = session_.currentRound;
  sawFinished_ = false;
  waitForPlaying_ = again || AllFinished();
}

void ProgressMonitor::FileChanged() {
  HandlerSteps(parts_.errors, "frmMain")([&] {
    LetGo();
    lastGood_.reset();
    // A file that has all results of this round already is an old one.
    waitForPlaying_ = AllFinished();
    face_ = ProgressFace();
    parts_.view.ShowTables(face_);
  });
  TimerBWS_Timer();
}

void ProgressMonitor::Show(const RoundProgress& progress) {
  ProgressFace face;
  face.lines = progress.texts;
  if (!progress.tables.empty()) face.sections = GridOf(parts_.link.Model(), progress, Input());
  face.info = Info(progress);
  if (face == face_) return;
  face_ = face;
  parts_.view.ShowTables(face_);
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
  const auto playing = std::count_if(
      progress.tables.begin(), progress.tables.end(),
      [](const TableProgress& table) { return table.state != TableState::NotPlaying; });
  return unit + fmt::format("{} of {} tables finished", finished.size(), playing);
}

}  // namespace corvanel
