// What the control window works out of the session: the minutes for a required finish, when all
// ends, and what of it will not be.

#include <fmt/format.h>

#include <cmath>

#include "basics/numbers.h"
#include "control/control_window.h"

namespace corvanel {
namespace {

/// How much later than it is required a session ends; negative when it is earlier. In 12-hour form
/// either half of the day may be meant.
double MinutesLate(ClockTime finish, ClockTime required, TimeForm form) {
  return std::remainder((finish.Seconds() - ToNearestMinute(required).Seconds()) / 60,
                        form == TimeForm::Hours12 ? kMinutesPerDay / 2 : kMinutesPerDay);
}

}  // namespace

void ControlWindow::DoCalc() {
  Standing standing = parts_.clock.Now();
  if (!Runs(standing.phase)) standing = {Phase::Idle, planned_.round};
  Calculate(standing);
}

void ControlWindow::Calculate(const Standing& standing) {
  SessionSettings& s = Settings();
  const bool underWay = Runs(standing.phase);
  const ClockTime start = underWay ? parts_.time.TimeOfDay() : planned_.time;
  if (s.Calculate == 1) {
    if (!s.RequiredFinish) {
      s.RequiredFinish = DefaultRequiredFinish(planned_.time);
      Put(Box::FinishTime);
    }
    s.MinPerRound = underWay ? CalcRoundTimeLive(s, standing, start, Form()).value_or(s.MinPerRound)
                             : CalcRoundTime(s, standing.round, start, Form());
    Put(Box::MinPerRound);
    parts_.view.SetLabel(Label::lblMinPerRound, TwoDecimals(s.MinPerRound));
  }
  ShowSchedule(underWay ? CalcFinish(s, standing, start) : CalcFinishTime(s, standing.round, start),
               standing, start);
  parts_.clock.Refresh();
}

/// A line each for what the director has set and the evening will not have.
void ControlWindow::TellWhatWillNotBe(double minutesLate) {
  const SessionSettings& s = Settings();
  // Every second, so that a text is made only where there is something to tell.
  if (minutesLate > 0) {
    parts_.notices.Set({NoticeKind::Finish,
                        fmt::format("The finish at {} will not be met", TextOf(Box::FinishTime))});
  } else {
    parts_.notices.Clear(NoticeKind::Finish);
  }
  if (s.BreakFollows(s.BreakAfterRound) && !s.BreakComes()) {
    parts_.notices.Set({NoticeKind::Break,
                        fmt::format("No break will come: it is set after round {}, and the session "
                                    "has {} round{}",
                                    s.BreakAfterRound, s.nRounds, s.nRounds == 1 ? "" : "s")});
  } else {
    parts_.notices.Clear(NoticeKind::Break);
  }
}

void ControlWindow::ShowSchedule(const Schedule& schedule, const Standing& standing,
                                 ClockTime start) {
  SessionSettings& s = Settings();
  const bool required = s.Calculate == 1 && s.RequiredFinish;
  const double late = required ? MinutesLate(schedule.finish, *s.RequiredFinish, Form()) : 0;
  // The half of the day that was meant stands in the box too.
  if (required && late == 0 &&
      MinutesLate(schedule.finish, *s.RequiredFinish, TimeForm::Hours24) != 0) {
    s.RequiredFinish = schedule.finish;
    PutIfChanged(Box::FinishTime);
  }
  parts_.view.SetLabel(Label::lblFinish,
                       required && late == 0 ? "Required Finish Time" : "Estimated Finish Time");
  TellWhatWillNotBe(late);
  parts_.view.SetLabel(Label::lblFinishTime, TimeText(schedule.finish, Form()));
  parts_.view.SetLabel(Label::lblBreakTime,
                       schedule.breakAt ? TimeText(*schedule.breakAt, Form()) : std::string());
  const auto lines = Timetable(s, standing);
  evening_ = Runs(standing.phase) ? parts_.evening.Whole(lines) : Evening{lines, start};
  parts_.view.ShowEvening(evening_);
}

}  // namespace corvanel
