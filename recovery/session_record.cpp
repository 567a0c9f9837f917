#include "recovery/session_record.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>

#include "settings/setting_keys.h"

namespace corvanel {
namespace {

using nlohmann::json;

// Names rather than numbers, so that a record means the same whatever comes into an enumeration.
constexpr std::array<const char*, 5> kPhases = {"idle", "round", "move", "break", "ended"};
constexpr std::array<const char*, 10> kCommands = {
    "start",     "pause",          "resume",    "nextRound", "restart",
    "addMinute", "subtractMinute", "autoPause", "autoEnd",   "takeOutGap"};
static_assert(kCommands.size() == static_cast<size_t>(SessionCommand::AutoResume));
constexpr std::array<const char*, 4> kStyles = {"running", "lastWarning", "timeUp", "earlyWarning"};
constexpr int kFirstStyle = static_cast<int>(Element::TimeRemaining);

template <size_t count>
int Find(const std::array<const char*, count>& names, const json& value) {
  const auto found = std::find(names.begin(), names.end(), value.get<std::string>());
  if (found == names.end()) throw json::other_error::create(501, "unknown name", &value);
  return static_cast<int>(found - names.begin());
}

}  // namespace

// The library finds these by their names.
static void to_json(json& value, Phase phase) {
  value = kPhases[static_cast<size_t>(phase)];
}
static void from_json(const json& value, Phase& phase) {
  phase = static_cast<Phase>(Find(kPhases, value));
}
static void to_json(json& value, SessionCommand command) {
  value = kCommands[static_cast<size_t>(command)];
}
static void from_json(const json& value, SessionCommand& command) {
  command = static_cast<SessionCommand>(Find(kCommands, value));
}
static void to_json(json& value, Element style) {
  value = kStyles[static_cast<size_t>(static_cast<int>(style) - kFirstStyle)];
}
static void from_json(const json& value, Element& style) {
  style = static_cast<Element>(Find(kStyles, value) + kFirstStyle);
}

/// The settings as the store has them, key by key.
static void to_json(json& value, const SessionSettings& settings) {
  const SettingsSet set{settings, ""};
  for (const auto& key : SetKeys()) value[std::string(key.key)] = key.text(set);
}
static void from_json(const json& value, SessionSettings& settings) {
  SettingsSet set;
  for (const auto& key : SetKeys()) {
    // A setting that came with a later version keeps its default.
    const auto found = value.find(std::string(key.key));
    if (found != value.end()) key.Read(set, found->get<std::string>());
  }
  settings = set;
}

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Moment, boot, uptime, utc)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(ClockState, phase, round, paused, autoPaused, mayAutoPause,
                                   roundEnd, moveEnd, pauseMark, countsFrom, endedAt,
                                   warningPending, warningGiven, style)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(UndoStep, command, at, before)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(DateTime, seconds)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(RoundStart, moved, began)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(FollowedFile, path, sections, identity, leftOut)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PhaseBegun, phase, round, at)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(SessionRecord, at, state, settings, undo, scoring, starts,
                                   evening)

namespace {

constexpr int kFormat = 5;  // to be raised when another version would misread the record

bool IsValid(const ClockState& state) {
  const auto marks = {state.roundEnd, state.moveEnd, state.pauseMark, state.countsFrom,
                      state.endedAt};
  return state.round >= 1 && (!state.paused || Runs(state.phase)) &&
         std::all_of(marks.begin(), marks.end(), [](double mark) { return std::isfinite(mark); });
}

bool IsValid(const UndoStep& step) {
  return std::isfinite(step.at) && IsValid(step.before) &&
         step.before.At(step.at).secondsLeft <= kLongestPhase * 60;
}

/// Nobody waits for a mark of another age.
bool IsValid(const SessionRecord& record) {
  const double now = record.at.uptime;
  return IsValid(record.state) && std::isfinite(now) && std::isfinite(record.at.utc) &&
         record.state.At(now).secondsLeft <= kLongestPhase * 60 &&
         std::all_of(record.undo.begin(), record.undo.end(),
                     [](const UndoStep& step) { return IsValid(step); }) &&
         std::all_of(record.evening.begin(), record.evening.end(), [](const PhaseBegun& begun) {
           return std::isfinite(begun.at) && begun.round >= 1 && Runs(begun.phase);
         });
}

}  // namespace

std::string TextOf(const SessionRecord& record) {
  json text = record;
  text["format"] = kFormat;
  return text.dump(1, ' ', false, json::error_handler_t::replace) + '\n';
}

Result<SessionRecord> ReadRecord(const std::string& text) {
  try {
    const auto parsed = json::parse(text);
    if (parsed.at("format") != kFormat) {
      return Error{13, "it was written by another version of the program"};
    }
    auto record = parsed.get<SessionRecord>();
    // A number that does not fit its place has become another one.
    const json back = record;
    const bool fits = back.at("state") == parsed.at("state") &&
                      back.at("undo") == parsed.at("undo") &&
                      back.at("evening") == parsed.at("evening");
    if (fits && IsValid(record)) return record;
  } catch (const std::exception&) {
    return Error{13, "it is damaged"};
  }
  return Error{13, "its contents are inconsistent"};
}

}  // namespace corvanel
