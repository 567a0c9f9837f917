#include "console/commands.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <thread>

#include "basics/numbers.h"
#include "clock/round_clock.h"
#include "clock/virtual_time.h"
#include "console/scoring.h"
#include "console/served_session.h"
#include "scoring/progress_monitor.h"
#include "scoring/take_over.h"
#include "session/captions.h"
#include "session/timetable.h"
#include "settings/settings_table.h"
#include "system/folders.h"
#include "system/json_store.h"
#include "system/path_text.h"
#include "system/system_time.h"

namespace corvanel {
namespace {

/// Without a director to ask, an unexpected error ends the command.
class EndOnError : public ErrorTrap {
 public:
  void ReportError(std::string_view /*place*/, const RuntimeError& error, int /*line*/) override {
    throw UsageError(error.what());
  }
};

/// Puts the settings of the command line into the store's memory; the file stays as it is. Where
/// a favourite supplies the settings in use, they are changed in its section too.
void Override(JsonStore& store, const ConsoleArguments& arguments, int favouriteInUse) {
  for (const auto& [key, value] : arguments.settings) {
    const bool ofSet = FindSetKey(key) != nullptr;
    if (!ofSet && FindOptionKey(key) == nullptr)
      throw UsageError(fmt::format("unknown key \"{}\"", key));
    store.SaveSetting(SectionOfSet(0), key, value);
    if (ofSet && !SameName(key, "Name")) {
      store.SaveSetting(SectionOfSet(favouriteInUse), key, value);
    }
  }
}

/// The shape of a scoring file; settings of the command line go before it.
void TakeShape(const ConsoleArguments& arguments, Session& session) {
  const PicturePointer picture = ReadScoring(arguments.replay);
  TakeOver(ScoringSession(picture, AllSections(*picture)), session);
  SettingsSet set{session.settings, ""};
  for (const auto& [name, value] : arguments.settings) {
    if (const auto* key = FindSetKey(name)) key->Read(set, value);
  }
  session.settings = set;
}

/// A session to be planned or run, and the round and time with which it starts.
struct Plan {
  Session session;
  int16_t round = 1;
  ClockTime start;
};

Plan LoadPlan(const ConsoleArguments& arguments) {
  EndOnError errors;
  DiskWriter writer;  // which nothing is written with
  JsonStore store(arguments.store.empty() ? DefaultStoreFile() : PathOf(arguments.store), writer);
  if (!store.Damage().empty()) throw UsageError(store.Damage());
  Session session;
  session.ProgramFolder = ProgramFolderPath();
  SettingsTable table(store, session, errors);
  const ClockTime start = arguments.start.value_or(SystemTime().TimeOfDay());
  table.GetDefaults();
  Override(store, arguments, table.FavouriteInUse());
  table.GetDefaults();
  if (!arguments.replay.empty()) TakeShape(arguments, session);
  const int round = arguments.round.value_or(1);
  if (round > session.settings.nRounds) {
    throw UsageError(fmt::format("--round {} is beyond the {} rounds of the session", round,
                                 session.settings.nRounds));
  }
  SessionSettings& s = session.settings;
  if (s.Calculate == 1) {
    if (!s.RequiredFinish) s.RequiredFinish = DefaultRequiredFinish(start);
    s.MinPerRound = CalcRoundTime(s, round, start, session.options.Form());
  }
  return {session, static_cast<int16_t>(round), start};
}

void PrintPlan(const Plan& plan) {
  const auto& [session, round, start] = plan;
  const SessionSettings& s = session.settings;
  const Schedule schedule = CalcFinishTime(s, round, start);
  fmt::print("finish\t{}\n", TimeText(schedule.finish));
  if (schedule.breakAt) fmt::print("break\t{}\n", TimeText(*schedule.breakAt));
  fmt::print("minutes-per-round\t{}\n", TwoDecimals(s.MinPerRound));
  constexpr std::array<EventKind, 4> kKinds = {EventKind::Round, EventKind::Round, EventKind::Move,
                                               EventKind::Break};  // by Phase
  for (const TimetableLine& line : Timetable(s, {Phase::Idle, round})) {
    const bool move = line.phase == Phase::Move;
    fmt::print("{}\t{}\t{}\n", TimeText(line.Begins(start)),
               kEventNames[static_cast<size_t>(kKinds[static_cast<size_t>(line.phase)])],
               move ? MoveMessage(s, line.round) : PhaseCaption(s, {line.phase, line.round}));
  }
}

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
  void Play(const std::string& /*file*/) override {}
  void Test(const std::string& /*file*/) override {}
  void StopTest() override {}
  SoundFitness Fitness(const std::string& /*file*/) const override { return SoundFitness::Fine; }

 private:
  const TimeSource& time_;
  std::vector<std::string> lines_;
};

void Run(const Plan& plan, const ConsoleArguments& arguments) {
  const Session& session = plan.session;
  const float minutes = session.settings.MinPerRound;
  if (minutes <= 0) throw UsageError("The minutes per round must be greater than 0");
  if (minutes > kLongestPhase) throw UsageError("The minutes per round must be 600 or less");
  EndOnError errors;
  // Named like no other run, so that a page knows that its uptimes hold no more.
  const Moment now = SystemTime().ThisMoment();
  VirtualTime time(plan.start, {}, fmt::format("{} {}", now.boot, now.uptime));
  EventPrinter printer(time);
  Broadcast broadcast(errors);
  RoundClock clock({session, time, time, printer, broadcast, errors});
  double last = 1e18;
  if (arguments.until) {
    last = ClockTime(arguments.until->Seconds() - time.TimeOfDay().Seconds()).Seconds();
  }
  std::optional<Replay> replay;
  if (!arguments.replay.empty()) replay.emplace(ReadScoring(arguments.replay), session, time);
  NoLog storage;
  ActivityLog log(session, time, storage);
  Notices notices(broadcast);
  std::optional<ProgressMonitor> monitor;
  if (replay) {
    monitor.emplace(ProgressMonitor::Parts{session, *replay, clock, broadcast, printer, time, log,
                                           errors, notices});
    broadcast.Add(*monitor);
  }
  broadcast.Add(printer);
  double nextPoll = replay ? 0 : 1e18;
  const auto began = std::chrono::steady_clock::now();
  std::optional<ServedSession> served;
  if (!arguments.serve.empty()) {
    served.emplace(arguments.serve, session, clock, time, [began] {
      return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    });
    broadcast.Add(*served);
  }
  clock.Start(plan.round);
  while (time.Due() && *time.Due() <= last && clock.State().phase != Phase::Ended) {
    const bool poll = nextPoll < *time.Due();
    if (arguments.speed > 0) {
      std::fflush(stdout);
      const double next = poll ? nextPoll : *time.Due();
      std::this_thread::sleep_until(began + std::chrono::duration<double>(next / arguments.speed));
    }
    if (poll) {
      time.PassTo(nextPoll);
      monitor->TimerBWS_Timer();
      nextPoll += kPollSeconds;
    } else {
      time.PassToWakeUp();
      clock.Tick();
    }
  }
  std::fflush(stdout);
  // Who looks at the end of the session finds it there.
  while (served && !arguments.until) std::this_thread::sleep_for(std::chrono::hours(1));
}

}  // namespace

void RunCommand(const ConsoleArguments& arguments) {
  if (arguments.command == "scoring") {
    PrintScoring(arguments);
    return;
  }
  const Plan plan = LoadPlan(arguments);
  if (arguments.command == "plan") {
    PrintPlan(plan);
  } else {
    Run(plan, arguments);
  }
}

}  // namespace corvanel
