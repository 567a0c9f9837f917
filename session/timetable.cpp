#include "session/timetable.h"

#include <algorithm>
#include <cmath>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr double kUsualSession = 180;  // minutes

double Length(const std::vector<TimetableLine>& lines) {
  return lines.empty() ? 0 : lines.back().startsIn + lines.back().minutes;
}

Schedule ScheduleOf(const std::vector<TimetableLine>& lines, const Standing& from, ClockTime start,
                    double allowance) {
  Schedule schedule;
  schedule.finish = ToNearestMinute(start.PlusMinutes(Length(lines) + allowance));
  const auto rest = std::find_if(lines.begin(), lines.end(), [](const TimetableLine& line) {
    return line.phase == Phase::Break;
  });
  if (rest != lines.end()) {
    if (from.phase != Phase::Break) schedule.breakAt = rest->Begins(start);
    schedule.breakEnd = rest->Ends(start);
  }
  return schedule;
}

/// Minutes from start to required finish, as the director means them.
double MinutesAvailable(const SessionSettings& s, ClockTime start, TimeForm form) {
  const ClockTime finish = s.RequiredFinish.value_or(start.PlusMinutes(kUsualSession));
  double available = std::trunc(finish.Seconds() - start.Seconds()) / 60;
  const bool halfDayMeant = form == TimeForm::Hours12 && available < 0 && available > -720;
  if (halfDayMeant) available += 720;
  if (available < 0) available += kMinutesPerDay;
  return available;
}

/// The minutes of each round not yet begun with which the evening lasts `available` minutes; and
/// how many such rounds there are.
struct Spread {
  int rounds = 0;
  double minutes = 0;
};

Spread SpreadOver(SessionSettings settings, const Standing& from, double available) {
  settings.MinPerRound = 0;
  const std::vector<TimetableLine> lines = Timetable(settings, from);
  Spread spread;
  spread.rounds =
      static_cast<int>(std::count_if(lines.begin(), lines.end(), [](const TimetableLine& line) {
        return line.phase == Phase::Round;
      }));
  if (from.phase == Phase::Round) --spread.rounds;
  if (spread.rounds > 0) {
    spread.minutes = RoundTo2Decimals(std::max(available - Length(lines), 0.0) / spread.rounds);
  }
  return spread;
}

}  // namespace

std::vector<TimetableLine> Timetable(const SessionSettings& s, const Standing& from) {
  std::vector<TimetableLine> lines;
  double at = 0;
  const auto add = [&](Phase phase, int round, double minutes) {
    lines.push_back({phase, round, at, minutes});
    at += minutes;
  };
  // Each phase leads on to the next, entered where the session stands.
  Phase phase = from.phase == Phase::Idle ? Phase::Round : from.phase;
  double minutes = from.phase == Phase::Idle ? s.MinPerRound : from.secondsLeft / 60;
  int round = from.round;
  while (phase != Phase::Ended) {
    add(phase, round, minutes);
    const bool last = round >= s.nRounds;
    if (phase == Phase::Round && last) break;
    if (phase == Phase::Round && s.BreakFollows(round)) {
      phase = Phase::Break;
      minutes = s.TimeForBreak;
    } else if (phase == Phase::Round || (phase == Phase::Break && s.MoveAfterBreak && !last)) {
      phase = Phase::Move;
      minutes = s.MinBetweenRounds;
    } else if (last) {
      break;
    } else {
      phase = Phase::Round;
      minutes = s.MinPerRound;
      ++round;
    }
  }
  return lines;
}

Schedule CalcFinishTime(const SessionSettings& s, int round, ClockTime start) {
  const Standing from{Phase::Idle, round};
  // Deliberate: an estimate that begins with the break round allows for one move more than will be
  // made; it errs on the late side.
  const bool breakRound = s.Calculate == 0 && s.BreakFollows(round) && round < s.nRounds;
  return ScheduleOf(Timetable(s, from), from, start, breakRound ? s.MinBetweenRounds : 0);
}

Schedule CalcFinish(const SessionSettings& s, const Standing& standing, ClockTime now) {
  return ScheduleOf(Timetable(s, standing), standing, now, 0);
}

float CalcRoundTime(const SessionSettings& s, int round, ClockTime start, TimeForm form) {
  const double available = MinutesAvailable(s, start, form);
  return static_cast<float>(SpreadOver(s, {Phase::Idle, round}, available).minutes);
}

std::optional<float> CalcRoundTimeLive(const SessionSettings& s, const Standing& standing,
                                       ClockTime now, TimeForm form) {
  const double available = MinutesAvailable(s, now, form);
  // More than half a day ahead is the finish that has just been missed.
  if (available > kMinutesPerDay / 2) return std::nullopt;
  const auto minutes = static_cast<float>(SpreadOver(s, standing, available).minutes);
  if (minutes <= 0 || minutes > kLongestPhase) return std::nullopt;
  return minutes;
}

ClockTime DefaultRequiredFinish(ClockTime start) {
  return ToTheMinute(start.PlusMinutes(kUsualSession));
}

}  // namespace corvanel
