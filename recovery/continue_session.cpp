#include "recovery/continue_session.h"

#include <fmt/format.h>

#include <algorithm>

namespace corvanel {
namespace {

constexpr double kOverFor = 3600;  // seconds after its end for which an evening is asked for
constexpr double kLongestAbsence = 40000;  // seconds over which marks can be followed

/// Seconds left of the phase at `moment`, which lies after the record was taken.
double SecondsLeft(const SessionRecord& record, const Moment& moment) {
  const ClockState& state = record.point.state;
  const double end = state.phase == Phase::Move ? state.moveEnd : state.roundEnd;
  if (state.paused) return SecondsRemaining(end, state.pauseMark);
  return std::max(SecondsRemaining(end, record.counter) - moment.Since(record.at), 0.0);
}

std::string TextOfPhase(const SessionRecord& record) {
  const int round = record.point.currentRound;
  switch (record.point.state.phase) {
    case Phase::Break:
      return "Break";
    case Phase::Move:
      return fmt::format("Move after round {} of {}", round, record.settings.nRounds);
    default:
      return fmt::format("Round {} of {}", round, record.settings.nRounds);
  }
}

}  // namespace

/// The newest record that can be read. One that is damaged is told of, and stands back for an older
/// one.
std::optional<SessionRecord> ContinueSession::Latest() {
  const auto tell = [&](const std::string& text) {
    parts_.notices.Set({NoticeKind::LastSession, text, ""});
  };
  std::string damage;
  for (const std::string& text : parts_.keeper.Kept()) {
    auto record = ReadRecord(text);
    if (record) {
      if (!damage.empty())
        tell("The last record of the session cannot be used, the one before it is");
      return std::move(record.Value());
    }
    if (damage.empty()) damage = record.Failure().description;
  }
  if (!damage.empty()) tell("The record of the last session cannot be used: " + damage);
  return {};
}

/// Whether the session would have ended some time ago, had it run on since it was last alive.
bool ContinueSession::LongOver(const SessionRecord& record) const {
  const Moment now = parts_.time.ThisMoment();
  const std::vector<TimetableLine> rest = Timetable(record.settings, record.point.currentRound);
  const double minutes = rest.empty() ? 0 : rest.back().startsIn + rest.back().minutes;
  if (now.Since(stopped_) > minutes * 60 + kOverFor) return true;
  return !record.point.state.paused && now.Since(record.at) > kLongestAbsence;
}

std::string ContinueSession::Question(const SessionRecord& record) const {
  const double ago = parts_.time.ThisMoment().Since(stopped_);
  const ClockTime when = parts_.time.TimeOfDay().PlusSeconds(-ago);
  return fmt::format(
      "Corvanel was ended while a session was running.\r\n\r\n{}, {} left{}\r\n"
      "as it stood at {}, {}\r\n\r\nHow shall the session go on?",
      TextOfPhase(record), MinutesAndSeconds(SecondsLeft(record, stopped_)),
      record.point.state.paused ? ", paused" : "",
      TimeTextWithSeconds(when, parts_.session.options.Form()), AgoText(ago));
}

std::optional<SessionRecord> ContinueSession::Ask() {
  auto record = Latest();
  if (!record || !record->point.state.Running()) return {};
  const auto alive = parts_.keeper.LastAlive();
  stopped_ = alive && alive->Since(record->at) > 0 ? *alive : record->at;
  if (LongOver(*record)) return {};
  const auto chosen = parts_.prompts.Choose(
      Question(*record),
      {"As if the clock had run on", "From " + MinutesAndSeconds(SecondsLeft(*record, stopped_)),
       "Not at all"});
  if (!chosen) return {};  // nothing was decided: it can still be asked at the next start
  if (*chosen == 2) {
    parts_.keeper.Forget();
    return {};
  }
  fromWhereItStopped_ = *chosen == 1;
  return record;
}

void ContinueSession::GoOn(const SessionRecord& record) {
  parts_.session.settings = record.settings;
  const Moment now = parts_.time.ThisMoment();
  const double elapsed = now.Since(record.at);
  double counted = fromWhereItStopped_ ? stopped_.Since(record.at) : elapsed;
  // The question may have stood open all night: then the evening is over.
  if (!record.point.state.paused) counted = std::min(counted, kLongestAbsence);
  const double shift = parts_.time.Counter() - counted - record.counter;
  std::vector<UndoStep> undo = record.undo;
  for (UndoStep& step : undo) {
    step.at += now.uptime - elapsed - record.at.uptime;
    step.before = Shifted(step.before, shift);
  }
  parts_.clock.Continue(Shifted(record.point, shift), undo);
}

}  // namespace corvanel
