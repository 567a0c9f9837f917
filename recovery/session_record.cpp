#include "recovery/session_record.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <tuple>

namespace corvanel {

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Moment, boot, uptime, utc)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(ClockState, phase, paused, autoPaused, mayAutoPause, roundEnd,
                                   moveEnd, pauseMark, warningPending, inBreak, style)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(SoundChoices, files, play, playFinalRound)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(SessionSettings, nRounds, MinPerRound, MinBetweenRounds,
                                   MinWarning, MinWarning1, Skip, Arrow, optBreak, BreakAfterRound,
                                   TimeForBreak, MoveAfterBreak, ExtraMonitor, Calculate,
                                   RequiredFinish, Header, sounds)

static void to_json(nlohmann::json& json, const ClockTime& time) {
  json = time.Seconds();
}
static void from_json(const nlohmann::json& json, ClockTime& time) {
  time = ClockTime(json.get<double>());
}
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(ClockPoint, state, currentRound, startTime, finish, caption,
                                   message)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(UndoStep, command, at, before)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(SessionRecord, at, counter, point, settings, undo, scoringFile,
                                   sections)

namespace {

constexpr int kFormat = 1;  // to be raised when an older program would misread the record

bool InDays(double mark) {
  return std::isfinite(mark) && std::abs(mark) < 7 * kSecondsPerDay;
}

bool Possible(const ClockPoint& point) {
  const ClockState& state = point.state;
  return state.phase >= Phase::Idle && state.phase <= Phase::Ended && InDays(state.roundEnd) &&
         InDays(state.moveEnd) && InDays(state.pauseMark) && point.currentRound >= 1 &&
         state.style >= Element{} && static_cast<int>(state.style) < kElements &&
         (!state.paused || state.Running());
}

bool Possible(const UndoStep& step) {
  return step.command >= SessionCommand{} && static_cast<int>(step.command) < kSessionCommands &&
         std::isfinite(step.at) && Possible(step.before);
}

bool Possible(const SessionSettings& settings) {
  const auto minutes = {settings.MinPerRound, settings.MinBetweenRounds, settings.TimeForBreak,
                        settings.MinWarning, settings.MinWarning1};
  return settings.nRounds >= 1 && std::all_of(minutes.begin(), minutes.end(), [](float value) {
           return value >= 0 && value <= kLongestPhase;
         });
}

bool Possible(const SessionRecord& record) {
  return Possible(record.settings) && Possible(record.point) && InDays(record.counter) &&
         std::isfinite(record.at.uptime) && std::isfinite(record.at.utc) &&
         std::all_of(record.undo.begin(), record.undo.end(),
                     [](const UndoStep& step) { return Possible(step); });
}

}  // namespace

bool SessionRecord::SameState(const SessionRecord& other) const {
  const auto state = [](const SessionRecord& r) {
    return std::tie(r.point, r.settings, r.undo, r.scoringFile, r.sections);
  };
  return state(*this) == state(other);
}

std::string TextOf(const SessionRecord& record) {
  nlohmann::json json = record;
  json["format"] = kFormat;
  return json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

Result<SessionRecord> ReadRecord(const std::string& text) {
  try {
    const auto json = nlohmann::json::parse(text);
    if (json.at("format").get<int>() > kFormat) {
      return Error{13, "it was written by a newer version of the program"};
    }
    const auto record = json.get<SessionRecord>();
    if (Possible(record)) return record;
  } catch (const nlohmann::json::exception&) {
    return Error{13, "it is damaged"};
  }
  return Error{13, "what it says cannot be"};
}

}  // namespace corvanel
