// The entries of the control window: how each box's text is checked, stored and corrected.

#include <algorithm>

#include "basics/numbers.h"
#include "control/control_window.h"

namespace corvanel {
namespace {

// Meant so: the example of the finish box's second message is not that of the first.
const std::string kTimeWanted = "Please enter a valid time, e.g. 19:30";
const std::string kFinishWanted = "Please enter a valid time, e.g. 21:30";

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
  const bool running = parts_.clock.CurrentProgress().Running();
  if (running && text == shown_[static_cast<size_t>(box)]) return true;
  HandlerSteps step(parts_.errors, kPlace);
  bool stored = false;
  step([&] { stored = StoreEntry(box, text); });
  step([&] { Put(box); });
  step([&] { DoCalc(); });
  return stored;
}

bool ControlWindow::StoreEntry(Box box, const std::string& text) {
  Session& session = parts_.session;
  SessionSettings& s = session.settings;
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
      StoreCurrentRound(text);
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
      s.RequiredFinish = TimeText(*ParseTime(text));
      return true;
    case Box::StartTime:
      session.startTime = *ParseTime(TimeText(*ParseTime(text)));
      startedAt_.reset();
      return true;
  }
  return false;
}

void ControlWindow::StoreNumberOfRounds(const std::string& text) {
  Session& session = parts_.session;
  session.settings.nRounds = WholeNumber(text);
  if (session.settings.nRounds >= session.currentRound) return;
  session.currentRound = 1;
  Put(Box::CurrentRound);
  CaptionStart("1");
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
  if (parts_.clock.CurrentProgress().Running() && Val(text) == 0) {
    parts_.prompts.Message(std::string(kMinutesWanted));
    return false;
  }
  return StoreMinutes(parts_.session.settings.MinPerRound, text, 0);
}

bool ControlWindow::StoreBreakRound(const std::string& text) {
  const int16_t round = WholeNumber(text);
  if (round < 0) {
    parts_.prompts.Message("Please enter the number of a round, e.g. 6");
    return false;
  }
  parts_.session.settings.BreakAfterRound = round;
  return true;
}

void ControlWindow::StoreCurrentRound(const std::string& text) {
  Session& session = parts_.session;
  session.currentRound =
      std::clamp<int16_t>(WholeNumber(text), 1, std::max<int16_t>(session.settings.nRounds, 1));
  CaptionStart(TextOf(Box::CurrentRound));
}

}  // namespace corvanel
