#include "control/control_window.h"

#include <algorithm>
#include <cmath>

#include "basics/numbers.h"
#include "session/captions.h"

namespace corvanel {
namespace {

constexpr std::array<Box, kBoxes> kAllBoxes = {
    Box::nRounds,     Box::MinPerRound,  Box::MinBetweenRounds,
    Box::FinishTime,  Box::MinWarning1,  Box::MinWarning0,
    Box::Skip,        Box::Arrow,        Box::BreakRound,
    Box::BreakLength, Box::CurrentRound, Box::StartTime,
    Box::Header};

}  // namespace

void ControlWindow::Handle(const std::function<void()>& step) {
  HandlerSteps(parts_.errors, kPlace)(step);
}

void ControlWindow::Display() {
  HandlerSteps step(parts_.errors, kPlace);
  const SessionSettings& s = parts_.session.settings;
  Options& o = parts_.session.options;
  step([&] {
    for (const Box box : kAllBoxes) Put(box);
    // The caption of the window's design; from the first edit on it reads "round".
    parts_.view.SetLabel(Label::cmdStart, "Start Timer from Round " + TextOf(Box::CurrentRound));
  });
  step([&] {
    if (!o.ShowTitle) o.Show[kShowTitle] = 0;
    parts_.view.SetTick(Tick::chkBreak, s.optBreak);
    parts_.view.SetTick(Tick::chkMoveAfterBreak, s.MoveAfterBreak);
    parts_.view.SetTick(Tick::chkMonitor, s.ExtraMonitor != 0);
    ShowTitleTick();
    parts_.view.SetMode(s.Calculate);
    parts_.view.OfferFavouriteSave(false);
  });
  step([&] { DoCalc(); });
}

void ControlWindow::DisplayChanged() {
  Display();
  Change(Box::Header, parts_.session.settings.Header);
}

std::string ControlWindow::TextOf(Box box) const {
  const Session& session = parts_.session;
  const SessionSettings& s = session.settings;
  switch (box) {
    case Box::nRounds:
      return std::to_string(s.nRounds);
    case Box::MinPerRound:
      return s.Calculate == 1 ? TwoDecimals(s.MinPerRound) : SingleText(s.MinPerRound);
    case Box::MinBetweenRounds:
      return SingleText(s.MinBetweenRounds);
    case Box::FinishTime: {
      const auto time = ParseTime(s.RequiredFinish);
      return time ? TimeText(*time, Form()) : std::string();
    }
    case Box::MinWarning1:
      return SingleText(s.MinWarning1);
    case Box::MinWarning0:
      return SingleText(s.MinWarning);
    case Box::Skip:
      return s.Skip;
    case Box::Arrow:
      return s.Arrow;
    case Box::BreakRound:
      return std::to_string(s.BreakAfterRound);
    case Box::BreakLength:
      return SingleText(s.TimeForBreak);
    case Box::CurrentRound:
      return std::to_string(session.currentRound);
    case Box::StartTime:
      return startedAt_ == session.startTime ? TimeTextWithSeconds(session.startTime, Form())
                                             : TimeText(session.startTime, Form());
    case Box::Header:
      return s.Header;
  }
  return {};
}

void ControlWindow::Put(Box box) {
  std::string& shown = shown_[static_cast<size_t>(box)];
  shown = TextOf(box);
  parts_.view.SetText(box, shown);
}

void ControlWindow::Change(Box box, const std::string& text) {
  Handle([&] {
    parts_.view.OfferFavouriteSave(true);
    if (box == Box::CurrentRound) CaptionStart(text);
    if (box == Box::Header && parts_.session.options.ShowTitle) {
      parts_.view.SetTick(Tick::chkHeader, !text.empty());
      chkHeader_Click(!text.empty());
    }
  });
}

void ControlWindow::CaptionStart(const std::string& round) {
  parts_.view.SetLabel(Label::cmdStart, "Start Timer from round " + round);
}

Box ControlWindow::EnterLeadsTo(Box box) const {
  return RuleOf(box).next[parts_.session.settings.Calculate == 1 ? 1 : 0];
}

void ControlWindow::chkBreak_Click(bool ticked) {
  Handle([&] {
    parts_.session.settings.optBreak = ticked;
    DoCalc();
    parts_.view.OfferFavouriteSave(true);
  });
}

void ControlWindow::chkMoveAfterBreak_Click(bool ticked) {
  Handle([&] {
    parts_.session.settings.MoveAfterBreak = ticked;
    DoCalc();
    parts_.view.OfferFavouriteSave(true);
  });
}

void ControlWindow::chkMonitor_Click(bool ticked) {
  Handle([&] {
    parts_.session.settings.ExtraMonitor = ticked ? -1 : 0;
    parts_.view.OfferFavouriteSave(true);
  });
}

void ControlWindow::chkHeader_Click(bool ticked) {
  Handle([&] { parts_.session.options.Show[kShowTitle] = ticked ? 1 : 0; });
}

void ControlWindow::optCalc_Click(int index) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] {
    parts_.session.settings.Calculate = static_cast<int16_t>(index);
    parts_.view.SetMode(index);
  });
  step([&] { DoCalc(); });
  step([&] { Put(Box::MinPerRound); });
}

void ControlWindow::RewriteTimes() {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] {
    Put(Box::StartTime);
    Put(Box::FinishTime);
  });
  step([&] {
    const Session& session = parts_.session;
    if (!parts_.clock.CurrentProgress().Running()) {
      DoCalc();
      return;
    }
    ShowProgress();
    parts_.view.ShowTimetable(Timetable(session.settings, session.currentRound), session.startTime);
  });
}

void ControlWindow::DoCalc() {
  Calculate(parts_.clock.CurrentProgress());
}

void ControlWindow::Calculate(const Progress& progress) {
  Session& session = parts_.session;
  SessionSettings& s = session.settings;
  const ClockTime now = parts_.time.TimeOfDay();
  parts_.view.SetLabel(Label::lblFinish,
                       s.Calculate == 1 ? "Required Finish Time" : "Estimated Finish Time");
  if (s.Calculate == 1) {
    if (s.RequiredFinish.empty()) {
      s.RequiredFinish = DefaultRequiredFinish(session.startTime);
      Put(Box::FinishTime);
    }
    s.MinPerRound = progress.Running()
                        ? CalcRoundTimeLive(session, progress, now).value_or(s.MinPerRound)
                        : CalcRoundTime(s, session.currentRound, session.startTime, Form());
    Put(Box::MinPerRound);
    parts_.view.SetLabel(Label::lblMinPerRound, TwoDecimals(s.MinPerRound));
  }
  Schedule schedule = progress.Running() ? CalcFinish(s, session.currentRound, progress, now)
                                         : CalcFinishTime(s, session.currentRound,
                                                          session.startTime, progress.inBreak);
  if (s.Calculate == 1 && !progress.Running()) MeetRequiredFinish(schedule.finish);
  ShowSchedule(schedule);
  parts_.view.ShowTimetable(Timetable(s, session.currentRound), session.startTime);
  parts_.clock.RefreshSchedule();
}

/// Minutes of two decimals meet the required finish but for some seconds: then it is that time.
void ControlWindow::MeetRequiredFinish(ClockTime& finish) const {
  const Session& session = parts_.session;
  const auto required = ParseTime(session.settings.RequiredFinish);
  if (!required) return;
  const double off = required->PlusSeconds(60 - finish.Seconds()).Seconds() - 60;
  const double rounding = 0.005 * 60 * (session.settings.nRounds - session.currentRound + 1);
  if (std::abs(off) <= rounding) finish = *required;
}

void ControlWindow::ShowSchedule(const Schedule& schedule) {
  parts_.view.SetLabel(Label::lblFinishTime, TimeText(schedule.finish, Form()));
  parts_.view.SetLabel(Label::lblBreakTime,
                       schedule.breakAt ? TimeText(*schedule.breakAt, Form()) : std::string());
}

bool ControlWindow::RefuseRoundLength() {
  const float minutes = parts_.session.settings.MinPerRound;
  if (minutes > 0 && minutes <= kLongestPhase) return false;
  parts_.prompts.Message(minutes > 0 ? "The minutes per round must be 600 or less"
                                     : std::string(kMinutesWanted));
  return true;
}

bool ControlWindow::TitleTicked() const {
  return parts_.session.options.Show[kShowTitle] != 0 && !parts_.session.settings.Header.empty();
}

void ControlWindow::ShowTitleTick() {
  parts_.view.SetTick(Tick::chkHeader, TitleTicked());
}

void ControlWindow::cmdStart_Click() {
  Session& session = parts_.session;
  if (!parts_.view.CommitEditing() || RefuseRoundLength()) return;
  HandlerSteps step(parts_.errors, kPlace);
  step([&] {
    session.options.ShowTitle = TitleTicked();
    parts_.keeper.SaveSession();
  });
  step([&] {
    session.startTime = parts_.time.TimeOfDay();
    startedAt_ = session.startTime;
    Put(Box::StartTime);
  });
  step([&] { Calculate(Progress{}); });
  // The calculation for a required finish may have left no time for a round, or a whole day.
  if (RefuseRoundLength()) return;
  step([&] { parts_.stage.SessionStarts(); });
  step([&] { parts_.stage.ShowDisplays(); });
  step([&] {
    parts_.clock.Start();
    started_ = true;
    parts_.view.OfferResume();
  });
}

void ControlWindow::cmdResume_Click() {
  if (!parts_.view.CommitEditing()) return;
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { parts_.keeper.SaveSession(); });
  step([&] { parts_.clock.RefreshSchedule(); });
  step([&] { parts_.stage.ShowDisplays(); });
}

void ControlWindow::SessionContinues() {
  started_ = true;
  Display();
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { parts_.view.OfferResume(); });
  step([&] { parts_.stage.ShowDisplays(); });
}

void ControlWindow::cmdStop_Click() {
  Handle([&] { parts_.exit.FromControlWindow(started_); });
}

void ControlWindow::ShowProgress() {
  const Session& session = parts_.session;
  const auto putIfChanged = [&](Box box) {
    if (TextOf(box) != shown_[static_cast<size_t>(box)]) Put(box);
  };
  if (TextOf(Box::CurrentRound) != shown_[static_cast<size_t>(Box::CurrentRound)]) {
    Put(Box::CurrentRound);
    CaptionStart(TextOf(Box::CurrentRound));
    parts_.view.ShowTimetable(Timetable(session.settings, session.currentRound), session.startTime);
  }
  const Progress progress = parts_.clock.CurrentProgress();
  putIfChanged(Box::StartTime);
  if (!progress.Running()) return;
  ShowSchedule(
      CalcFinish(session.settings, session.currentRound, progress, parts_.time.TimeOfDay()));
}

}  // namespace corvanel
