#include "control/control_window.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr int kHints = 3;          // sessions that begin with a hint
constexpr double kSameMoment = 1;  // second; what two clocks read one after the other can differ by

}  // namespace

template <class Step>
void ControlWindow::Handle(std::string_view handler, Step&& step) {
  Guarded(parts_.errors, "frmMain." + std::string(handler), step);
}

void ControlWindow::Display() {
  HandlerSteps step(parts_.errors, "frmMain.Display");
  const SessionSettings& s = Settings();
  Options& o = parts_.session.options;
  step([&] {
    for (size_t i = 0; i < kBoxes; ++i) Put(static_cast<Box>(i));
    // The caption of the window's design; from the first edit on it reads "round".
    parts_.view.SetLabel(Label::cmdStart, "Start Timer from Round " + TextOf(Box::CurrentRound));
  });
  step([&] {
    if (!o.ShowTitle) o.Show[kShowTitle] = false;
    parts_.view.SetTick(Tick::chkBreak, s.optBreak);
    parts_.view.SetTick(Tick::chkMoveAfterBreak, s.MoveAfterBreak);
    parts_.view.SetTick(Tick::chkMonitor, s.ExtraMonitor);
    ShowTitleTick();
    parts_.view.SetMode(s.Calculate);
    parts_.view.OfferFavouriteSave(false);
  });
  step([&] { DoCalc(); });
}

void ControlWindow::SettingsExchanged() {
  typedMinutes_.reset();
  KeepRoundInPlay();
  planned_.round = std::clamp<int16_t>(planned_.round, 1, Settings().nRounds);
  Display();
}

void ControlWindow::SettingsLoaded() {
  if (!parts_.clock.UnderWay()) {
    planned_.time = NextQuarterHour(parts_.time.TimeOfDay());
    startedAt_.reset();
  }
  SettingsExchanged();
}

void ControlWindow::ScoringFileOpened(std::optional<ClockTime> start) {
  const auto before = shown_;
  planned_.round = 1;
  if (start) planned_.time = ToTheMinute(*start);
  Display();
  // What was taken over differs from the favourite in use.
  if (start) Change(Box::Header, Settings().Header);
  takenOver_.clear();
  for (size_t i = 0; start && i < kBoxes; ++i) {
    if (shown_[i] != before[i]) takenOver_.push_back(static_cast<Box>(i));
  }
  parts_.view.ShowTakenOver(takenOver_);
}

std::string ControlWindow::TextOf(Box box) const {
  const SessionSettings& s = Settings();
  switch (box) {
    case Box::nRounds:
      return std::to_string(s.nRounds);
    case Box::MinPerRound:
      return s.Calculate == 1 ? TwoDecimals(s.MinPerRound) : SingleText(s.MinPerRound);
    case Box::MinBetweenRounds:
      return SingleText(s.MinBetweenRounds);
    case Box::FinishTime:
      return s.RequiredFinish ? TimeText(*s.RequiredFinish, Form()) : "";
    case Box::MinWarning1:
      return SingleText(s.MinWarning1);
    case Box::MinWarning0:
      return SingleText(s.MinWarning);
    case Box::Skip:
      return s.Skip.Text();
    case Box::Arrow:
      return s.Arrow.Text();
    case Box::BreakRound:
      return std::to_string(s.BreakAfterRound);
    case Box::BreakLength:
      return SingleText(s.TimeForBreak);
    case Box::CurrentRound:
      return std::to_string(planned_.round);
    case Box::StartTime:
      return startedAt_ == planned_.time ? TimeTextWithSeconds(planned_.time, Form())
                                         : TimeText(planned_.time, Form());
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

void ControlWindow::PutIfChanged(Box box) {
  if (TextOf(box) != shown_[static_cast<size_t>(box)]) Put(box);
}

void ControlWindow::Change(Box box, const std::string& text) {
  Handle("Change", [&] {
    if (!takenOver_.empty()) parts_.view.ShowTakenOver({});
    takenOver_.clear();
    parts_.view.OfferFavouriteSave(true);
    if (box == Box::CurrentRound) ShowPlannedRound(text);
    if (box == Box::Header && parts_.session.options.ShowTitle) {
      parts_.view.SetTick(Tick::chkHeader, !text.empty());
      chkHeader_Click(!text.empty());
    }
  });
}

Box ControlWindow::EnterLeadsTo(Box box) const {
  return RuleOf(box).next[Settings().Calculate == 1 ? 1 : 0];
}

void ControlWindow::chkBreak_Click(bool ticked) {
  Handle("chkBreak_Click", [&] {
    Settings().optBreak = ticked;
    DoCalc();
    parts_.view.OfferFavouriteSave(true);
  });
}

void ControlWindow::chkMoveAfterBreak_Click(bool ticked) {
  Handle("chkMoveAfterBreak_Click", [&] {
    Settings().MoveAfterBreak = ticked;
    DoCalc();
    parts_.view.OfferFavouriteSave(true);
  });
}

void ControlWindow::chkMonitor_Click(bool ticked) {
  Handle("chkMonitor_Click", [&] {
    Settings().ExtraMonitor = ticked;
    parts_.view.OfferFavouriteSave(true);
  });
}

void ControlWindow::chkHeader_Click(bool ticked) {
  Handle("chkHeader_Click", [&] {
    parts_.session.options.Show[kShowTitle] = ticked;
    parts_.view.OfferFavouriteSave(true);
  });
}

void ControlWindow::optCalc_Click(int index) {
  HandlerSteps step(parts_.errors, "frmMain.optCalc_Click");
  step([&] {
    SessionSettings& s = Settings();
    // What was typed comes back with its mode, unless a session was given other minutes meanwhile.
    if (index == 1 && s.Calculate == 0) typedMinutes_ = s.MinPerRound;
    if (index == 0 && s.Calculate == 1 && typedMinutes_) {
      s.MinPerRound = *std::exchange(typedMinutes_, std::nullopt);
    }
    s.Calculate = static_cast<int16_t>(index);
    parts_.view.SetMode(index);
  });
  step([&] { DoCalc(); });
  step([&] {
    Put(Box::MinPerRound);
    parts_.view.OfferFavouriteSave(true);
  });
}

void ControlWindow::RewriteTimes() {
  HandlerSteps step(parts_.errors, "frmMain.RewriteTimes");
  step([&] {
    Put(Box::StartTime);
    Put(Box::FinishTime);
  });
  step([&] { DoCalc(); });
}

bool ControlWindow::RefuseRoundLength(float minutes) {
  if (minutes > 0 && minutes <= kLongestPhase) return false;
  parts_.prompts.Message(minutes > 0 ? "The minutes per round must be 600 or less"
                                     : "The minutes per round must be greater than 0");
  return true;
}

bool ControlWindow::TitleTicked() const {
  return parts_.session.options.Show[kShowTitle] && !Settings().Header.empty();
}

void ControlWindow::ShowTitleTick() {
  parts_.view.SetTick(Tick::chkHeader, TitleTicked());
}

/// A session under way is given up only when the director says so.
bool ControlWindow::RefuseSecondStart() {
  if (!parts_.clock.UnderWay()) return false;
  return parts_.prompts.AskYesNo(fmt::format(
             "Round {} of {} is in play.\r\nDo you want to start round {} from its beginning?",
             parts_.clock.State().round, Settings().nRounds, planned_.round)) != Answer::Yes;
}

void ControlWindow::cmdStart_Click() {
  if (!parts_.view.CommitEditing() || RefuseRoundLength(Settings().MinPerRound)) return;
  if (RefuseSecondStart()) return;
  HandlerSteps step(parts_.errors, "frmMain.cmdStart_Click");
  int16_t& hintsGiven = parts_.session.options.HintsGiven;
  const bool hint = hintsGiven < kHints;
  step([&] {
    // An evening without a title does not say what the director wants with one.
    if (!Settings().Header.empty()) parts_.session.options.ShowTitle = TitleTicked();
    parts_.table.SaveSession();
    if (!hint) return;
    ++hintsGiven;
    parts_.table.SaveOptions({"HintsGiven"});
  });
  step([&] {
    planned_.time = parts_.time.TimeOfDay();
    startedAt_ = planned_.time;
    Put(Box::StartTime);
  });
  step([&] { Calculate({Phase::Idle, planned_.round}); });
  // The calculation for a required finish may have left no time for a round, or a whole day.
  if (RefuseRoundLength(Settings().MinPerRound)) return;
  step([&] { parts_.host.SessionStarts(); });
  step([&] { parts_.host.ShowDisplays(); });
  step([&] {
    parts_.clock.Start(planned_.round);
    started_ = true;
    parts_.view.OfferResume();
  });
  // A bare screen without a pointer says nothing to who sees it for the first time.
  step([&] {
    if (hint) parts_.host.ShowHint();
  });
}

void ControlWindow::cmdResume_Click() {
  if (!parts_.view.CommitEditing()) return;
  HandlerSteps step(parts_.errors, "frmMain.cmdResume_Click");
  step([&] { parts_.table.SaveSession(); });
  step([&] { parts_.clock.Refresh(); });
  step([&] { parts_.host.ShowDisplays(); });
}

void ControlWindow::SessionContinues() {
  started_ = true;
  Display();
  HandlerSteps step(parts_.errors, "frmMain.SessionContinues");
  step([&] { parts_.view.OfferResume(); });
  step([&] { parts_.host.ShowDisplays(); });
}

void ControlWindow::cmdStop_Click() {
  Handle("cmdStop_Click", [&] { parts_.exit.FromControlWindow(started_); });
}

void ControlWindow::cmdLive_Click(SessionCommand command) {
  Handle("cmdLive_Click", [&] { parts_.clock.Do(command); });
}

void ControlWindow::BackFromDisplays() {
  Handle("BackFromDisplays", [&] {
    if (parts_.clock.UnderWay()) PlanRound(parts_.clock.State().round);
  });
}

void ControlWindow::PlanRound(int16_t round) {
  planned_.round = round;
  if (TextOf(Box::CurrentRound) == shown_[static_cast<size_t>(Box::CurrentRound)]) return;
  Put(Box::CurrentRound);
  ShowPlannedRound(TextOf(Box::CurrentRound));
}

/// All was played; the next Start is that of another evening.
void ControlWindow::ShowEnd() {
  PlanRound(1);
  parts_.view.SetLabel(Label::lblFinish, "End of play");
  parts_.view.SetLabel(Label::lblFinishTime, TimeText(parts_.time.TimeOfDay(), Form()));
  if (evening_.lines.empty()) return;
  evening_.standsAt = evening_.lines.back().startsIn + evening_.lines.back().minutes;
  parts_.view.ShowEvening(evening_);
}

void ControlWindow::ShowPlannedRound(const std::string& round) {
  parts_.view.SetLabel(Label::cmdStart, "Start Timer from round " + round);
}

/// The proposal for the next Start follows the clock whenever that goes on to another round or
/// move; what the director plans meanwhile stands until then.
void ControlWindow::ShowFace(const ClockFace& face) {
  if (face.round != std::exchange(shownRound_, face.round)) {
    PlanRound(static_cast<int16_t>(face.round));
  }
  if (face.countsFrom != std::exchange(countsFrom_, face.countsFrom)) {
    const ClockTime from =
        parts_.time.TimeOfDay().PlusSeconds(face.countsFrom - parts_.time.Uptime());
    const bool start = startedAt_ && std::abs(from.Seconds() - startedAt_->Seconds()) < kSameMoment;
    planned_.time = start ? *startedAt_ : ToTheMinute(from);
    PutIfChanged(Box::StartTime);
  }
  const bool ran = std::exchange(underWay_, Runs(face.phase));
  if (!underWay_) {
    parts_.view.ShowLive(std::nullopt);
    if (ran) ShowEnd();
    return;
  }
  parts_.view.ShowLive(LiveStripOf(face, waiting_, parts_.session));
  ShowSchedule(face.schedule, {face.phase, face.round, face.secondsLeft}, parts_.time.TimeOfDay());
}

}  // namespace corvanel
