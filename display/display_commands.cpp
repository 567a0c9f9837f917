#include "display/display_commands.h"

#include <cmath>

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "modTimer";
constexpr std::string_view kTwinPlace = "frmDisplay2";

const std::string kUnlessOnSecondMonitor =
    "You can't use full screen when you have set\r\n"
    "the option for Corvanel to be always on top\r\n"
    "unless Corvanel is on the second monitor.\r\n"
    "You can change the setting from the options menu";

int32_t WholeTwips(double twips) {
  return static_cast<int32_t>(std::lround(twips));
}

}  // namespace

void DisplayCommands::Form_KeyDown(int virtualKey, DisplayForm& form) {
  const auto command = CommandOfKey(virtualKey, form.Kind());
  if (!command) return;
  HandlerSteps(parts_.errors, kPlace)([&] { Run(*command, form); });
}

void DisplayCommands::Run(DisplayCommand command, DisplayForm& form) {
  switch (command) {
    case DisplayCommand::TogglePause:
      if (parts_.clock.State().paused) {
        cmdResume_Click();
      } else {
        cmdPause_Click();
      }
      break;
    case DisplayCommand::AddMinute:
      vsbChange_Change(-1);
      break;
    case DisplayCommand::SubtractMinute:
      vsbChange_Change(1);
      break;
    case DisplayCommand::NextRound:
      cmdNextRound_Click();
      break;
    case DisplayCommand::Restart:
      cmdRestart_Click();
      break;
    case DisplayCommand::Undo:
      cmdUndo_Click();
      break;
    case DisplayCommand::Close:
      cmdClose_Click(form);
      break;
    case DisplayCommand::ToggleFullScreen:
      cmdFullScreen_Click(form.Place().normal ? 0 : 1, form);
      break;
    case DisplayCommand::Help:
      parts_.host.ShowHelp();
      break;
    case DisplayCommand::Exit:
      Exit();
      break;
    case DisplayCommand::ToggleHidden:
      cmdHide_Click(parts_.host.RoomDisplay().Visible() ? 0 : 1);
      break;
    case DisplayCommand::ToggleMonitorFullScreen:
      cmdMonitorFullScreen_Click(parts_.host.RoomDisplay().Place().normal ? 0 : 1);
      break;
  }
}

void DisplayCommands::cmdPause_Click() {
  parts_.clock.Pause();
}

void DisplayCommands::cmdResume_Click() {
  parts_.clock.Resume();
}

void DisplayCommands::cmdNextRound_Click() {
  parts_.clock.NextRound();
}

void DisplayCommands::cmdRestart_Click() {
  parts_.clock.Restart();
}

void DisplayCommands::cmdUndo_Click() {
  parts_.clock.Undo();
}

void DisplayCommands::cmdClose_Click(DisplayForm& form) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { parts_.host.ShowControlWindow(); });
  step([&] { form.SetVisible(false); });
  step([&] { parts_.host.ShowMonitorPairs(); });
}

/// The twin makes way for the question, and is back when the director stays.
void DisplayCommands::Exit() {
  DisplayForm& twin = parts_.host.Twin();
  const bool twinMakesWay = parts_.session.settings.ExtraMonitor != 0 && twin.Visible();
  if (twinMakesWay) twin.SetVisible(false);
  const bool ends = parts_.exit.FromDisplay();
  if (twinMakesWay && !ends) twin.SetVisible(true);
}

bool DisplayCommands::RefuseFullScreen(const DisplayForm& form) {
  if (!parts_.session.options.OnTop) return false;
  if (parts_.session.settings.ExtraMonitor == 0) {
    parts_.prompts.Message(
        "You can't use full screen when you have set\r\n"
        "the option for Corvanel to be always on top.\r\n"
        "You can change the setting from the options menu");
    return true;
  }
  const double left = form.Place().left;
  // Meant so: joined by "or" one of the two always holds, and the refusal always comes.
  if (left < parts_.host.ScreenWidth() - 500 || left > -200) {
    parts_.prompts.Message(kUnlessOnSecondMonitor);
    return true;
  }
  return false;
}

void DisplayCommands::cmdFullScreen_Click(int index, DisplayForm& form) {
  HandlerSteps step(parts_.errors, kPlace);
  const bool fullScreen = index == 0;
  bool refused = false;
  step([&] { refused = fullScreen && RefuseFullScreen(form); });
  if (refused) return;
  step([&] {
    if (fullScreen && form.Kind() == DisplayKind::Room) RememberPlace(form.Place());
  });
  step([&] { form.SetFullScreen(fullScreen); });
  step([&] { parts_.host.ShowFullScreenPair(fullScreen); });
  step([&] { parts_.host.ShowMonitorPairs(); });
}

void DisplayCommands::cmdHide_Click(int index) {
  HandlerSteps step(parts_.errors, kTwinPlace);
  step([&] { parts_.host.RoomDisplay().SetVisible(index > 0); });
  step([&] { parts_.host.ShowMonitorPairs(); });
}

bool DisplayCommands::RefuseMonitorFullScreen(const DisplayForm& room) {
  if (!parts_.session.options.OnTop || parts_.session.settings.ExtraMonitor == 0) return false;
  // Unlike the room display's own full-screen rule this one lets through what stands elsewhere.
  const double left = room.Place().left;
  if (left > parts_.host.ScreenWidth() - 500 || left < -200) return false;
  parts_.prompts.Message(kUnlessOnSecondMonitor);
  return true;
}

void DisplayCommands::cmdMonitorFullScreen_Click(int index) {
  HandlerSteps step(parts_.errors, kTwinPlace);
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
  HandlerSteps(parts_.errors, kPlace)([&] {
    parts_.prompts.Message(
        "Click on the up or down arrows to the right\r\nto add or subtract one minute");
  });
}

void DisplayCommands::vsbChange_Change(int value) {
  if (value != 0) parts_.clock.ChangeMinutes(-value);
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
  parts_.session.options.DisplayState = place.normal ? -1 : 0;
  RememberPlace(place);
}

}  // namespace corvanel
