#pragma once

#include "basics/runtime_error.h"
#include "clock/round_clock.h"
#include "display/shortcuts.h"
#include "session/prompts.h"
#include "session/session.h"

namespace corvanel {

/// Where a window stands on the desktop, in twips, and whether it is a normal window (neither full
/// screen nor minimised).
struct WindowPlace {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  bool normal = true;
};

/// A display window as the shared commands see it.
class DisplayForm {
 public:
  virtual ~DisplayForm() = default;
  virtual WindowPlace Place() const = 0;
  virtual DisplayKind Kind() const = 0;
  /// Full screen, or back to a normal window.
  virtual void SetFullScreen(bool fullScreen) = 0;
  virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
};

/// What the displays have the program around them do.
class DisplayHost {
 public:
  virtual ~DisplayHost() = default;
  /// The control window comes to the front with the current round in its box.
  virtual void ShowControlWindow() = 0;
  virtual void ShowHelp() = 0;
  virtual void ShowSoundOptions() = 0;
  virtual void ShowDisplayOptions() = 0;
  /// Asks whether to end the program, and ends it. False when the director stays.
  virtual bool ExitFromDisplay() = 0;
  /// Full width of the primary screen, twips.
  virtual double ScreenWidth() const = 0;
  /// The button pairs of both windows follow how these stand now.
  virtual void ShowFullScreenPair(bool fullScreen) = 0;
  virtual void ShowMonitorPairs() = 0;
  virtual DisplayForm& RoomDisplay() = 0;
  virtual DisplayForm& Twin() = 0;
};

/// The commands that both display windows share: a button or key on either acts on the session.
class DisplayCommands {
 public:
  struct Parts {
    RoundClock& clock;
    Session& session;
    Prompts& prompts;
    ErrorTrap& errors;
    DisplayHost& host;
  };
  explicit DisplayCommands(const Parts& parts) : parts_(parts) {}

  /// Carries out a command that was given on a window.
  void Run(DisplayCommand command, DisplayForm& form);

  /// `index`: 0 for full screen, 1 for a normal window.
  void cmdFullScreen_Click(int index, DisplayForm& form);
  /// The twin's buttons for the room display. `index`: 0 to hide it, 1 to show it again.
  void cmdHide_Click(int index);
  /// `index`: 0 for full screen, 1 for a normal window.
  void cmdMonitorFullScreen_Click(int index);
  /// The minute adjuster moved: one step up (-1) adds a minute, one down (1) takes one off.
  void vsbChange_Change(int value);

  /// At the end of the program: takes over the room display's state and, when it was last seen as
  /// a normal window, its place; what is to be stored is in the options then.
  void CaptureGeometry(const DisplayForm& roomDisplay);

 private:
  void cmdClose_Click(DisplayForm& form);
  void cmdChange_Click();
  void Exit();
  bool RefuseFullScreen();
  bool RefuseMonitorFullScreen(const DisplayForm& room);
  void RememberPlace(const WindowPlace& place);

  Parts parts_;
};

}  // namespace corvanel
