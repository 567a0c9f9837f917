#include "display/display_commands.h"

#include <cmath>

namespace corvanel {
namespace {

constexpr const char* kUnlessOnSecondMonitor =
    "You can't use full screen when you have set\r\n"
    "the option for Corvanel to be always on top\r\n"
    "unless Corvanel is on the second monitor.\r\n"
    "You can change the setting from the options menu";

int32_t WholeTwips(double twips) {
  return static_cast<int32_t>(std::lround(twips));
}

}  // namespace

void DisplayCommands::Run(DisplayCommand command, DisplayForm& form) {
  RoundClock& clock = parts_.clock;
  DisplayForm& room = parts_.host.RoomDisplay();
  switch (command) {
    case DisplayCommand::TogglePause:
      return clock.Do(clock.State().paused ? SessionCommand::Resume : SessionCommand::Pause);
    case DisplayCommand::Pause:
      return clock.Do(SessionCommand::Pause);
    case DisplayCommand::Resume:
      return clock.Do(SessionCommand::Resume);
    case DisplayCommand::AddMinute:
      return vsbChange_Change(-1);
    case DisplayCommand::SubtractMinute:
      return vsbChange_Change(1);
    case DisplayCommand::NextRound:
      return clock.Do(SessionCommand::NextRound);
    case DisplayCommand::Restart:
      return clock.Do(SessionCommand::Restart);
    case DisplayCommand::Undo:
      return clock.Do(SessionCommand::Undo);
    case DisplayCommand::Close:
      return cmdClose_Click(form);
    case DisplayCommand::ToggleFullScreen:
      return cmdFullScreen_Click(form.Place().normal ? 0 : 1, form);
    case DisplayCommand::Help:
      return parts_.host.ShowHelp();
    case DisplayCommand::Exit:
      return Exit();
    case DisplayCommand::ExplainMinutes:
      return cmdChange_Click();
    case DisplayCommand::Sounds:
      return parts_.host.ShowSoundOptions();
    case DisplayCommand::Options:
      return parts_.host.ShowDisplayOptions();
    case DisplayCommand::ToggleHidden:
      return cmdHide_Click(room.Visible() ? 0 : 1);
    case DisplayCommand::ToggleMonitorFullScreen:
      return cmdMonitorFullScreen_Click(room.Place().normal ? 0 : 1);
  }
}

void DisplayCommands::cmdClose_Click(DisplayForm& form) {
  HandlerSteps step(parts_.errors, "modTimer.cmdClose_Click");
  step([&] { parts_.host.ShowControlWindow(); });
  step([&] { form.SetVisible(false); });
  step([&] { parts_.host.ShowMonitorPairs(); });
}

/// The twin makes way for the question, and is back when the director stays.
void DisplayCommands::Exit() {
  DisplayForm& twin = parts_.host.Twin();
  const bool twinMakesWay = parts_.session.settings.ExtraMonitor && twin.Visible();
  if (twinMakesWay) twin.SetVisible(false);
  const bool ends = parts_.host.ExitFromDisplay();
  if (twinMakesWay && !ends) twin.SetVisible(true);
}

bool DisplayCommands::RefuseFullScreen() {
  if (!parts_.session.options.OnTop) return false;
  if (!parts_.session.settings.ExtraMonitor) {
    parts_.prompts.Message(
        "You can't use full screen when you have set\r\n"
        "the option for Corvanel to be always on top.\r\n"
        "You can change the setting from the options menu");
    return true;
  }
  // Deliberate: refused wherever the window stands, though the message speaks of an exception. That
  // one is the twin's to give.
  parts_.prompts.Message(kUnlessOnSecondMonitor);
  return true;
}

void DisplayCommands::cmdFullScreen_Click(int index, DisplayForm& form) {
  HandlerSteps step(parts_.errors, "modTimer.cmdFullScreen_Click");
  const bool fullScreen = index == 0;
  bool refused = false;
  step([&] { refused = fullScreen && RefuseFullScreen(); });
  if (refused) return;
  step([&] {
    if (fullScreen && form.Kind() == DisplayKind::Room) RememberPlace(form.Place());
  });
  step([&] { form.SetFullScreen(fullScreen); });
  step([&] { parts_.host.ShowFullScreenPair(fullScreen); });
  step([&] { parts_.host.ShowMonitorPairs(); });
}

void DisplayCommands::cmdHide_Click(int index) {
  HandlerSteps step(parts_.errors, "frmDisplay2.cmdHide_Click");
  step([&] { parts_.host.RoomDisplay().SetVisible(index > 0); });
  step([&] { parts_.host.ShowMonitorPairs(); });
}

bool DisplayCommands::RefuseMonitorFullScreen(const DisplayForm& room) {
  if (!parts_.session.options.OnTop || !parts_.session.settings.ExtraMonitor) return false;
  // Unlike the room display's own full-screen rule this one lets through what stands elsewhere.
  const double left = room.Place().left;
  if (left > parts_.host.ScreenWidth() - 500 || left < -200) return false;
  parts_.prompts.Message(kUnlessOnSecondMonitor);
  return true;
}

void DisplayCommands::cmdMonitorFullScreen_Click(int index) {
  HandlerSteps step(parts_.errors, "frmDisplay2.cmdMonitorFullScreen_Click");
  DisplayForm& room = parts_.host.RoomDisplay();
  step([&] {
    if (index != 0) {
      room.SetFullScreen(false);
      return;
    }
    if (!room.Place().normal) room.SetFullScreen(false);
    if (RefuseMonitorFullScreen(room)) return;
    RememberPlace(room.Place());
    room.SetFullScreen(true);
  });
  step([&] { parts_.host.ShowFullScreenPair(!room.Place().normal); });
  step([&] { parts_.host.ShowMonitorPairs(); });
}

void DisplayCommands::cmdChange_Click() {
  parts_.prompts.Message(
      "Click on the up or down arrows to the right\r\nto add or subtract one minute");
}

void DisplayCommands::vsbChange_Change(int value) {
  if (value == 0) return;
  parts_.clock.Do(value < 0 ? SessionCommand::AddMinute : SessionCommand::SubtractMinute);
}

void DisplayCommands::RememberPlace(const WindowPlace& place) {
  if (!place.normal) return;
  Options& options = parts_.session.options;
  options.FormX = WholeTwips(place.left);
  options.FormY = WholeTwips(place.top);
  options.FormSizeX = WholeTwips(place.width);
  options.FormSizeY = WholeTwips(place.height);
}

void DisplayCommands::CaptureGeometry(const DisplayForm& roomDisplay) {
  const WindowPlace place = roomDisplay.Place();
  parts_.session.options.DisplayState = place.normal;
  RememberPlace(place);
}

}  // namespace corvanel
