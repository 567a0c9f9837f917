#include "display/display_commands.h"

#include <cmath>

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "modTimer";

int32_t WholeTwips(double twips) {
  return static_cast<int32_t>(std::lround(twips));
}

}  // namespace

void DisplayCommands::Form_KeyDown(int virtualKey, DisplayForm& form) {
  const auto command = CommandOfKey(virtualKey);
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
      parts_.exit.FromDisplay();
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

void DisplayCommands::cmdClose_Click(DisplayForm& form) {
  HandlerSteps step(parts_.errors, kPlace);
  step([&] { parts_.host.ShowControlWindow(); });
  step([&] { form.Hide(); });
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
    parts_.prompts.Message(
        "You can't use full screen when you have set\r\n"
        "the option for Corvanel to be always on top\r\n"
        "unless Corvanel is on the second monitor.\r\n"
        "You can change the setting from the options menu");
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
    if (fullScreen) RememberPlace(form.Place());
  });
  step([&] { form.SetFullScreen(fullScreen); });
  step([&] { parts_.host.ShowFullScreenPair(fullScreen); });
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
