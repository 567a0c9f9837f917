#include "console/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "basics/numbers.h"
#include "console/scoring.h"
#include "console/session_run.h"
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

Plan LoadPlan(const ConsoleArguments& arguments) {
  EndOnError errors;
  DiskWriter writer;  // which nothing is written with
  JsonStore store(StoreOf(arguments), writer);
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
    SessionRun(plan, arguments).Go();
  }
}

}  // namespace corvanel
