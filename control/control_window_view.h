#pragma once

#include <optional>
#include <string>
#include <vector>

#include "control/entry_rules.h"
#include "control/live_strip.h"
#include "session/evening_so_far.h"
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
  /// What these boxes hold was taken over from a scoring file: they look so.
  virtual void ShowTakenOver(const std::vector<Box>& boxes) = 0;
  virtual void OfferFavouriteSave(bool offered) = 0;
  virtual void OfferResume() = 0;
  /// The evening as it is planned, or the one under way.
  virtual void ShowEvening(const Evening& evening) = 0;
  /// The session under way; nothing while there is none.
  virtual void ShowLive(const std::optional<LiveStrip>& live) = 0;

  /// The list `cboFavs`, its text, and whether the loader frame around it is shown.
  virtual void ShowFavourites(const std::vector<std::string>& names, const std::string& text) = 0;
  /// The label that names the favourite in use.
  virtual void ShowInUse(const std::string& name) = 0;
  virtual void ClearNewName() = 0;
};

/// What the control window has the program around it do.
class ControlHost {
 public:
  virtual ~ControlHost() = default;
  /// The director starts a session; it will be shown and begin to count next.
  virtual void SessionStarts() = 0;
  /// Shows the room display (and its twin when the session has one), hides the control window.
  virtual void ShowDisplays() = 0;
  /// Tells on the director's display how to find buttons and keys.
  virtual void ShowHint() = 0;
  /// Writes state, position and size of the room display to the store.
  virtual void SaveDisplayGeometry() = 0;
  virtual void ShutDownComputer() = 0;
  virtual void EndProgram() = 0;
};

}  // namespace corvanel
