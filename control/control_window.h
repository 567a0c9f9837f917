#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "clock/round_clock.h"
#include "control/control_window_view.h"
#include "control/program_exit.h"
#include "session/notices.h"
#include "session/prompts.h"
#include "settings/settings_table.h"

namespace corvanel {

/// The round and the time of day with which the next Start begins.
struct PlannedStart {
  int16_t round = 1;  // 1 to nRounds
  ClockTime time;
};

/// The logic of the control window: what each box, switch and button does to the session. Owns the
/// planned start, which follows a session under way.
/// Entries are stored when they are finished; a wrong one gets one message and the old value
/// stays. Every handler reports unexpected errors under its name.
class ControlWindow : public SessionListener {
 public:
  struct Parts {
    Session& session;
    ControlWindowView& view;
    Prompts& prompts;
    ErrorTrap& errors;
    const TimeSource& time;
    RoundClock& clock;
    const EveningSoFar& evening;  // which is told of each face first
    Notices& notices;
    SettingsTable& table;
    ControlHost& host;
    ProgramExit& exit;
  };
  explicit ControlWindow(const Parts& parts) : parts_(parts) {}

  /// Fills the whole window from the session and calculates once.
  void Display();
  /// The settings were exchanged as a whole: shows them. In a session under way the number of
  /// rounds is raised to the round in play, and said.
  void SettingsExchanged();
  /// The store was loaded: proposes the next quarter hour as the start, unless a session is under
  /// way, and shows the settings.
  void SettingsLoaded();
  /// A scoring file was opened for a session that has not begun, which is to start with round 1;
  /// at `start` when the session's shape was taken over from the file.
  void ScoringFileOpened(std::optional<ClockTime> start);
  const PlannedStart& Planned() const { return planned_; }

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
  /// A button of the live strip, or its key.
  void cmdLive_Click(SessionCommand command);

  /// The clock goes on with a session of an earlier run of the program: shows it.
  void SessionContinues();
  /// The director comes back from the displays: the next Start is proposed from the round in play.
  void BackFromDisplays();
  /// The clock moved on: round, start time and finish follow.
  void ShowFace(const ClockFace& face) override;
  /// For whom the clock is held.
  void ShowTables(const ProgressFace& tables) override { waiting_ = tables.waiting; }
  /// Ticks or clears the title's box as its show flag now is.
  void ShowTitleTick();
  /// Writes every time of day anew, after the form of times has changed.
  void RewriteTimes();
  /// Brings the derived times up to date: those of the plan, or of the session under way.
  void DoCalc();

 private:
  bool Validate(Box box, const std::string& text);
  bool Store(Box box, const std::string& text);
  bool StoreEntry(Box box, const std::string& text);
  bool StoreMinutes(float& minutes, const std::string& text, float least);
  bool StoreMinPerRound(const std::string& text);
  bool StoreBreakRound(const std::string& text);
  void StoreNumberOfRounds(const std::string& text);
  void PlanRound(int16_t round);
  void ShowPlannedRound(const std::string& round);
  void ShowEnd();
  void KeepRoundInPlay();
  std::string TextOf(Box box) const;
  void Put(Box box);
  void PutIfChanged(Box box);
  void Calculate(const Standing& standing);
  void ShowSchedule(const Schedule& schedule, const Standing& standing, ClockTime start);
  bool TitleTicked() const;
  bool RefuseRoundLength(float minutes);
  bool RefuseSecondStart();
  void TellWhatWillNotBe(double minutesLate);
  template <class Step>
  void Handle(std::string_view handler, Step&& step);
  TimeForm Form() const { return parts_.session.options.Form(); }
  SessionSettings& Settings() const { return parts_.session.settings; }

  Parts parts_;
  PlannedStart planned_;
  std::optional<ClockTime> startedAt_;  // shown to the second until the first move sets another
  bool started_ = false;                // in this run
  std::optional<float> typedMinutes_;   // while those for a required finish stand in their place
  bool underWay_ = false;               // a session was, when the last face came
  std::vector<Box> takenOver_;          // from a scoring file, until the first edit
  std::string waiting_;     // "WAITING FOR TABLES 5 7", while the clock is held for them
  Evening evening_;         // as it was shown last
  int shownRound_ = 0;      // of the clock, as it was last seen
  double countsFrom_ = -1;  // and its mark
  std::array<std::string, kBoxes> shown_;  // what each box held when it was last in order
};

}  // namespace corvanel
