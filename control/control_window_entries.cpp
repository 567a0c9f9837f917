// The entries of the control window: how each box's text is checked, stored and corrected.

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "basics/numbers.h"
#include "control/control_window.h"

namespace corvanel {
namespace {

constexpr const char* kTimeWanted = "Please enter a valid time, e.g. 19:30";
// Deliberate: a finish is later than a start, and so is its example; but only at the second asking.
constexpr const char* kFinishWanted = "Please enter a valid time, e.g. 21:30";

bool IsTimeBox(Box box) {
  return box == Box::StartTime || box == Box::FinishTime;
}

}  // namespace

bool ControlWindow::Leave(Box box, const std::string& text) {
  return Validate(box, text) && Store(box, text);
}

bool ControlWindow::Validate(Box box, const std::string& text) {
  if (box == Box::nRounds && Val(text) < 1) {
    parts_.prompts.Message("The number of rounds must be greater than 0");
    return false;
  }
  if (IsTimeBox(box) && !ParseTime(text)) {
    parts_.prompts.Message(kTimeWanted);
    return false;
  }
  return true;
}

bool ControlWindow::Commit(Box box, const std::string& text) {
  if (box == Box::nRounds && !Validate(box, text)) return false;
  if (IsTimeBox(box) && !ParseTime(text)) {
    parts_.prompts.Message(box == Box::FinishTime ? kFinishWanted : kTimeWanted);
    if (box == Box::StartTime) Put(box);
    if (box == Box::FinishTime) parts_.view.Focus(box);
    return false;
  }
  return Store(box, text);
}

bool ControlWindow::Store(Box box, const std::string& text) {
  if (parts_.clock.UnderWay() && text == shown_[static_cast<size_t>(box)]) return true;
  HandlerSteps step(parts_.errors, "frmMain.LostFocus");
  bool stored = false;
  step([&] { stored = StoreEntry(box, text); });
  step([&] {
    Put(box);
    // The caption followed the typing of a number that could not be stored.
    if (!stored && box == Box::CurrentRound) ShowPlannedRound(TextOf(Box::CurrentRound));
  });
  step([&] { DoCalc(); });
  return stored;
}

bool ControlWindow::StoreEntry(Box box, const std::string& text) {
  SessionSettings& s = Settings();
  switch (box) {
    case Box::nRounds:
      StoreNumberOfRounds(text);
      return true;
    case Box::MinPerRound:
      return StoreMinPerRound(text);
    case Box::MinBetweenRounds:
      return StoreMinutes(s.MinBetweenRounds, text, kShortestMove);
    case Box::MinWarning1:
      return StoreMinutes(s.MinWarning1, text, 0);
    case Box::MinWarning0:
      return StoreMinutes(s.MinWarning, text, 0);
    case Box::BreakLength:
      return StoreMinutes(s.TimeForBreak, text, 0);
    case Box::BreakRound:
      return StoreBreakRound(text);
    case Box::CurrentRound:
      PlanRound(std::clamp<int16_t>(WholeNumber(text), 1, s.nRounds));
      return true;
    case Box::Skip:
      s.Skip = text;
      return true;
    case Box::Arrow:
      s.Arrow = text;
      return true;
    case Box::Header:
      s.Header = text;
      return true;
    case Box::FinishTime:
      s.RequiredFinish = ToTheMinute(*ParseTime(text));
      return true;
    case Box::StartTime:
      planned_.time = ToTheMinute(*ParseTime(text));
      startedAt_.reset();
      return true;
  }
  return false;
}

void ControlWindow::StoreNumberOfRounds(const std::string& text) {
  Settings().nRounds = WholeNumber(text);
  if (parts_.clock.UnderWay()) {
    KeepRoundInPlay();
    planned_.round = std::min(planned_.round, Settings().nRounds);
    PutIfChanged(Box::CurrentRound);
  } else if (Settings().nRounds < planned_.round) {
    // Deliberate: back to the first round, not to the last.
    PlanRound(1);
  }
}

/// A session under way has at least as many rounds as are in play, or as the room moves for.
void ControlWindow::KeepRoundInPlay() {
  int16_t& rounds = Settings().nRounds;
  const bool moves = parts_.clock.State().phase == Phase::Move;
  const auto round = static_cast<int16_t>(parts_.clock.State().round + (moves ? 1 : 0));
  if (!parts_.clock.UnderWay() || rounds >= round) return;
  const int16_t wanted = std::exchange(rounds, round);
  parts_.prompts.Message(fmt::format("Round {} {}, so the number of rounds was set to {}, not {}",
                                     round, moves ? "comes next" : "is in play", round, wanted));
}

bool ControlWindow::StoreMinutes(float& minutes, const std::string& text, float least) {
  const double value = Val(text);
  if (value < 0 || value > kLongestPhase) {
    parts_.prompts.Message("Please enter a number of minutes from 0 to 600");
    return false;
  }
  minutes = std::max(static_cast<float>(value), least);
  return true;
}

bool ControlWindow::StoreMinPerRound(const std::string& text) {
  if (parts_.clock.UnderWay() && Val(text) == 0) {
    RefuseRoundLength(0);
    return false;
  }
  return StoreMinutes(Settings().MinPerRound, text, 0);
}

bool ControlWindow::StoreBreakRound(const std::string& text) {
  const int16_t round = WholeNumber(text);
  if (round < 0) {
    parts_.prompts.Message("Please enter the number of a round, e.g. 6");
    return false;
  }
  Settings().BreakAfterRound = round;
  return true;
}

}  // namespace corvanel
