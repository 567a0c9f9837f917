#pragma once

#include <string>
#include <vector>

#include "control/entry_rules.h"
#include "session/timetable.h"

namespace corvanel {

/// The texts of the control window that the program writes.
enum class Label { lblFinish, lblFinishTime, lblBreakTime, lblMinPerRound, cmdStart };

/// The check boxes of the control window.
enum class Tick { chkBreak, chkMoveAfterBreak, chkMonitor, chkHeader };

/// The control window as its logic sees it. Nothing written here fires a handler.
class ControlWindowView {
 public:
  virtual ~ControlWindowView() = default;
  virtual void SetText(Box box, const std::string& text) = 0;
  virtual void SetLabel(Label label, const std::string& text) = 0;
  virtual void SetTick(Tick tick, bool on) = 0;
  /// Shows which way the schedule is calculated: 0 or 1, as SessionSettings::Calculate.
  virtual void SetMode(int calculate) = 0;
  virtual void Focus(Box box) = 0;
  /// The box that is being edited, with its text: ends its entry as leaving it would. False when
  /// the entry was refused.
  virtual bool CommitEditing() = 0;
  virtual void OfferFavouriteSave(bool offered) = 0;
  virtual void OfferResume() = 0;
  /// The evening from `start` on.
  virtual void ShowTimetable(const std::vector<TimetableLine>& lines, ClockTime start) = 0;
};

/// The round clock as the control window sees it.
class SessionClock {
 public:
  virtual ~SessionClock() = default;
  virtual Progress CurrentProgress() const = 0;
  /// Starts the session with the current round, from any state.
  virtual void Start() = 0;
  /// Writes the schedule texts on the displays anew.
  virtual void RefreshSchedule() = 0;
};

/// Keeps the settings in use.
class SessionKeeper {
 public:
  virtual ~SessionKeeper() = default;
  /// Copies the live settings into the set in use and writes the store.
  virtual void SaveSession() = 0;
  /// Writes fonts and colours of all ten display elements and the options of the displays.
  virtual void SaveDisplayOptions() = 0;
};

/// Switches between the control window and the displays.
class Stage {
 public:
  virtual ~Stage() = default;
  /// The director starts a session; it will be shown and begin to count next.
  virtual void SessionStarts() = 0;
  /// Shows the room display (and its twin when the session has one), hides the control window.
  virtual void ShowDisplays() = 0;
};

}  // namespace corvanel
