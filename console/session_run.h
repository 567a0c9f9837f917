#pragma once

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clock/round_clock.h"
#include "clock/virtual_time.h"
#include "console/arguments.h"
#include "console/scoring.h"
#include "console/served_session.h"
#include "scoring/progress_monitor.h"

namespace corvanel {

/// The settings file that the command line names, or the user's own.
std::filesystem::path StoreOf(const ConsoleArguments& arguments);

/// Without a director to ask, an unexpected error ends the command.
class EndOnError : public ErrorTrap {
 public:
  void ReportError(std::string_view /*place*/, const RuntimeError& error, int /*line*/) override {
    throw UsageError(error.what());
  }
};

/// A session to be planned or run, and the round and time with which it starts.
struct Plan {
  Session session;
  int16_t round = 1;
  ClockTime start;
};

/// Prints the session's events; shows and plays nothing.
class EventPrinter : public SessionListener, public SoundPlayer {
 public:
  explicit EventPrinter(const TimeSource& time) : time_(time) {}
  void Happened(EventKind kind, const std::string& text) override {
    fmt::print("{}\t{}\t{}\n", TimeTextWithSeconds(time_.TimeOfDay()),
               kEventNames[static_cast<size_t>(kind)], text);
  }
  void ShowTables(const ProgressFace& face) override {
    if (face.lines == lines_) return;
    lines_ = face.lines;
    fmt::print("{}\tprogress\t{}\n", TimeTextWithSeconds(time_.TimeOfDay()),
               fmt::join(lines_, "; "));
  }
  /// What whoever started the program has to know.
  void ShowNotices(const std::vector<Notice>& notices) override {
    for (const Notice& notice : notices) {
      if (notice.kind == NoticeKind::Devices || notice.kind == NoticeKind::Broker)
        fmt::print(stderr, "{}\n", notice.text);
    }
  }
  void Play(const std::string& /*file*/) override {}
  void Test(const std::string& /*file*/) override {}
  void StopTest() override {}
  SoundFitness Fitness(const std::string& /*file*/) const override { return SoundFitness::Fine; }

 private:
  const TimeSource& time_;
  std::vector<std::string> lines_;
};

/// A session that runs without a window: as fast as the command line says, or by the clock on the
/// wall where it is served to other screens.
class SessionRun {
 public:
  /// Throws UsageError for a plan that cannot be run.
  SessionRun(const Plan& plan, const ConsoleArguments& arguments);
  /// Runs to the end of the session; one that is served, until the program is stopped.
  void Go();

 private:
  double Elapsed() const;
  bool GoesOn() const;
  bool WaitFor(double moment);

  Session session_;
  const ConsoleArguments& arguments_;
  const int16_t round_;
  EndOnError errors_;
  VirtualTime time_;
  EventPrinter printer_{time_};
  Broadcast broadcast_{errors_};
  RoundClock clock_{{session_, time_, time_, printer_, broadcast_, errors_}};
  std::optional<Replay> replay_;
  NoLog storage_;
  ActivityLog log_{session_, time_, storage_};
  Notices notices_{broadcast_};
  std::optional<ProgressMonitor> monitor_;
  double nextPoll_;  // seconds since the start
  double last_;      // the same
  std::chrono::steady_clock::time_point began_;
  std::optional<ServedSession> served_;
};

}  // namespace corvanel
