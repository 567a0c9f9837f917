#include "recovery/continue_session.h"

#include <fmt/format.h>

#include <algorithm>

namespace corvanel {
namespace {

constexpr double kOverFor = 3600;  // seconds after its end during which the director is still asked

/// Where the session stood at `moment`, which lies after the record was taken.
Standing Last(const SessionRecord& record, const Moment& moment) {
  return record.state.At(record.at.uptime + moment.Since(record.at));
}

std::string TextOfPhase(const SessionRecord& record) {
  const int round = record.state.round;
  switch (record.state.phase) {
    case Phase::Break:
      return "Break";
    case Phase::Move:
      return fmt::format("Move after round {} of {}", round, record.settings.nRounds);
    default:
      return fmt::format("Round {} of {}", round, record.settings.nRounds);
  }
}

}  // namespace

/// The newest record that can be read. One that is damaged is reported, and gives way to an older
/// one.
std::optional<SessionRecord> ContinueSession::Latest() {
  const auto tell = [&](const std::string& text) {
    parts_.notices.Set({NoticeKind::LastSession, text, ""});
  };
  std::string damage;
  for (const std::string& text : parts_.keeper.Kept()) {
    auto record = ReadRecord(text);
    if (record) {
      if (!damage.empty()) tell("The last saved state was damaged; the one before it is used");
      return std::move(record.Value());
    }
    if (damage.empty()) damage = record.Failure().description;
  }
  if (!damage.empty()) tell("The saved state of the last session cannot be used: " + damage);
  return {};
}

/// Whether the session would have ended some time ago, had it run on since it was last alive.
bool ContinueSession::LongOver(const SessionRecord& record) const {
  const std::vector<TimetableLine> rest = Timetable(record.settings, Last(record, stopped_));
  const double minutes = rest.empty() ? 0 : rest.back().startsIn + rest.back().minutes;
  return parts_.time.ThisMoment().Since(stopped_) > minutes * 60 + kOverFor;
}

std::string ContinueSession::Question(const SessionRecord& record) const {
  const double ago = parts_.time.ThisMoment().Since(stopped_);
  const ClockTime when = parts_.time.TimeOfDay().PlusSeconds(-ago);
  return fmt::format(
      "Corvanel closed while a session was running.\r\n\r\n{}, {} left{}\r\n"
      "Last seen at {}, {}\r\n\r\nHow do you want to continue?",
      TextOfPhase(record), MinutesAndSeconds(Last(record, stopped_).secondsLeft),
      record.state.paused ? ", paused" : "",
      TimeTextWithSeconds(when, parts_.session.options.Form()), AgoText(ago));
}

/// Of a session whose evening is not long over.
std::optional<SessionRecord> ContinueSession::Unfinished() {
  auto record = Latest();
  if (!record || !Runs(record->state.phase)) return {};
  const auto alive = parts_.keeper.LastAlive();
  stopped_ = alive && alive->Since(record->at) > 0 ? *alive : record->at;
  return LongOver(*record) ? std::nullopt : record;
}

bool ContinueSession::Waits() {
  return Unfinished().has_value();
}

std::optional<SessionRecord> ContinueSession::Ask() {
  auto record = Unfinished();
  if (!record) return {};
  const auto chosen = parts_.prompts.Choose(
      Question(*record),
      {"As if the clock had kept running",
       "From " + MinutesAndSeconds(Last(*record, stopped_).secondsLeft) + ", where it stopped",
       "Do not continue"});
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
  // From the uptimes of that run to those of this one; and the time in between, if it is not to
  // count, on top.
  const double elapsed = now.Since(record.at);
  const double toThisRun = now.uptime - elapsed - record.at.uptime;
  const double notCounted = fromWhereItStopped_ ? elapsed - stopped_.Since(record.at) : 0;
  std::vector<UndoStep> undo = record.undo;
  for (UndoStep& step : undo) {
    step.at += toThisRun;
    step.before = step.before.Shifted(toThisRun + notCounted);
  }
  std::vector<PhaseBegun> evening = record.evening;
  for (PhaseBegun& begun : evening) begun.at += toThisRun;
  parts_.evening.GoOn(std::move(evening));
  parts_.clock.Continue(record.state.Shifted(toThisRun + notCounted), undo);
}

}  // namespace corvanel
