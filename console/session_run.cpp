#include "console/session_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "system/folders.h"
#include "system/path_text.h"
#include "system/system_time.h"

namespace corvanel {
namespace {

constexpr double kNever = 1e9;  // seconds; more than any session lasts

/// Named like no other run, so that a page knows that its uptimes hold no more.
std::string NameOfRun() {
  const Moment now = SystemTime().ThisMoment();
  return fmt::format("{} {}", now.boot, now.uptime);
}

}  // namespace

std::filesystem::path StoreOf(const ConsoleArguments& arguments) {
  return arguments.store.empty() ? DefaultStoreFile() : PathOf(arguments.store);
}

SessionRun::SessionRun(const Plan& plan, const ConsoleArguments& arguments)
    : session_(plan.session),
      arguments_(arguments),
      round_(plan.round),
      time_(plan.start, {}, NameOfRun()),
      nextPoll_(arguments.replay.empty() ? kNever : 0),
      last_(kNever) {
  const float minutes = session_.settings.MinPerRound;
  if (minutes <= 0) throw UsageError("The minutes per round must be greater than 0");
  if (minutes > kLongestPhase) throw UsageError("The minutes per round must be 600 or less");
  if (arguments.until) {
    last_ = ClockTime(arguments.until->Seconds() - time_.TimeOfDay().Seconds()).Seconds();
  }
  if (!arguments.replay.empty()) {
    replay_.emplace(ReadScoring(arguments.replay), session_, time_);
    monitor_.emplace(ProgressMonitor::Parts{session_, *replay_, clock_, broadcast_, printer_, time_,
                                            log_, errors_, notices_});
    broadcast_.Add(*monitor_);
  }
  broadcast_.Add(printer_);
  began_ = std::chrono::steady_clock::now();
  if (arguments.serve.empty()) return;
  session_.options.NetworkBroker = arguments.broker;
  session_.options.NetworkRoom = arguments.room;
  const char* const password = std::getenv("CORVANEL_BROKER_PASSWORD");
  session_.options.NetworkBrokerPassword = password == nullptr ? "" : password;
  served_.emplace(
      arguments.serve,
      ServedSession::Parts{session_, clock_, time_, notices_, broadcast_, StoreOf(arguments)},
      [this] { return Elapsed(); });
}

double SessionRun::Elapsed() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - began_).count();
}

/// Who looks at the end of a session that is served finds it there.
bool SessionRun::GoesOn() const {
  return served_ || (time_.Due() && clock_.State().phase != Phase::Ended);
}

/// False when something was done before that, as a device said.
bool SessionRun::WaitFor(double moment) {
  if (arguments_.speed == 0) return true;
  std::fflush(stdout);
  const auto until = began_ + std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                  std::chrono::duration<double>(moment / arguments_.speed));
  if (!served_) {
    std::this_thread::sleep_until(until);
    return true;
  }
  const auto what = served_->WaitUntil(until);
  if (!what) return true;
  time_.PassTo(Elapsed());
  (*what)();
  return false;
}

void SessionRun::Go() {
  clock_.Start(round_);
  while (GoesOn()) {
    const double due = time_.Due().value_or(kNever);
    const double next = std::min(due, nextPoll_);
    if (next > last_) break;
    if (!WaitFor(next)) continue;
    if (nextPoll_ < due) {
      time_.PassTo(nextPoll_);
      monitor_->TimerBWS_Timer();
      nextPoll_ += kPollSeconds;
    } else {
      time_.PassToWakeUp();
      clock_.Tick();
    }
  }
  std::fflush(stdout);
}

}  // namespace corvanel
