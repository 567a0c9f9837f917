#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "basics/runtime_error.h"
#include "control/control_window_view.h"
#include "control/program_exit.h"
#include "session/prompts.h"
#include "session/session.h"
#include "session/time_source.h"

namespace corvanel {

/// The logic of the control window: what each box, switch and button does to the session.
/// Entries are stored when they are finished; a wrong one is told in one message and the old value
/// stays. Every handler reports unexpected errors under the name of the window.
class ControlWindow {
 public:
  struct Parts {
    Session& session;
    ControlWindowView& view;
    Prompts& prompts;
    ErrorTrap& errors;
    const TimeSource& time;
    SessionClock& clock;
    SessionKeeper& keeper;
    Stage& stage;
    ProgramExit& exit;
  };
  explicit ControlWindow(const Parts& parts) : parts_(parts) {}

  /// Fills the whole window from the session and calculates once.
  void Display();
  /// The same after the session was changed from outside: offers to save the favourite in use.
  void DisplayChanged();

  /// The text of a box was edited, not yet finished.
  void Change(Box box, const std::string& text);
  /// The box that Enter leads to.
  Box EnterLeadsTo(Box box) const;
  /// The focus is about to leave the box for another control. False: the entry is wrong, the
  /// director has been told, and the focus must stay.
  bool Leave(Box box, const std::string& text);
  /// The entry ends although the focus stays (a button pressed by its key). False: refused, the
  /// box put back or kept.
  bool Commit(Box box, const std::string& text);

  void chkBreak_Click(bool ticked);
  void chkMoveAfterBreak_Click(bool ticked);
  void chkMonitor_Click(bool ticked);
  void chkHeader_Click(bool ticked);
  /// `index`: 0 to estimate the finish, 1 to meet a required one.
  void optCalc_Click(int index);
  void cmdStart_Click();
  /// Shows the displays of the session under way again. The clock has not stopped meanwhile; a
  /// paused one stays paused.
  void cmdResume_Click();
  void cmdStop_Click();
  /// The clock goes on with a session of an earlier run of the program: shows it.
  void SessionContinues();

  /// The clock moved on: shows round, start time and finish as they are now.
  void ShowProgress();

  /// Ticks or clears the title's box as its show flag now is.
  void ShowTitleTick();
  /// Writes every time of day anew, after the form of times has changed.
  void RewriteTimes();

  /// Brings the derived times up to date: those of the plan, or of the session under way.
  void DoCalc();

 private:
  static constexpr std::string_view kPlace = "frmMain";
  static constexpr std::string_view kMinutesWanted = "The minutes per round must be greater than 0";

  bool Validate(Box box, const std::string& text);
  bool Store(Box box, const std::string& text);
  bool StoreEntry(Box box, const std::string& text);
  void StoreNumberOfRounds(const std::string& text);
  bool StoreMinutes(float& minutes, const std::string& text, float least);
  bool StoreMinPerRound(const std::string& text);
  bool StoreBreakRound(const std::string& text);
  void StoreCurrentRound(const std::string& text);
  std::string TextOf(Box box) const;
  void Put(Box box);
  void CaptionStart(const std::string& round);
  void Calculate(const Progress& progress);
  void MeetRequiredFinish(ClockTime& finish) const;
  void ShowSchedule(const Schedule& schedule);
  bool TitleTicked() const;
  bool RefuseRoundLength();
  void Handle(const std::function<void()>& step);
  TimeForm Form() const { return parts_.session.options.Form(); }

  Parts parts_;
  bool started_ = false;
  std::optional<ClockTime> startedAt_;     // shown to the second until the first move sets another
  std::array<std::string, kBoxes> shown_;  // what each box held when it was last in order
};

}  // namespace corvanel
