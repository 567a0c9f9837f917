#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace corvanel {

/// What can be done from a display, by key or by button.
enum class DisplayCommand {
  TogglePause,
  Pause,
  Resume,
  AddMinute,
  SubtractMinute,
  NextRound,
  Restart,
  Undo,
  Close,
  ToggleFullScreen,
  Help,
  Exit,
  ExplainMinutes,
  Sounds,
  Options,
  ToggleHidden,  // of the room display, from its twin
  ToggleMonitorFullScreen
};

/// Which display a key was pressed on: the one for the room, or its twin on the director's screen.
enum class DisplayKind { Room, Twin };

/// Virtual-key codes of the keys that are not letters; a letter's code is its capital.
namespace key {
constexpr int kEscape = 27;
constexpr int kF1 = 112;
constexpr int kAdd = 107;
constexpr int kSubtract = 109;
constexpr int kPlus = 187;   // the = + key
constexpr int kMinus = 189;  // the - _ key
}  // namespace key

/// One shortcut: its keys by virtual-key code (0: no second one), how the help window lists it
/// (empty: not listed), what it does, and whether there must be a twin for it.
struct Shortcut {
  std::array<int, 2> keys;
  std::string_view listed;
  std::string_view action;
  DisplayCommand command;
  bool withTwin = false;
};

/// All shortcuts, in the order of the help window's list.
inline constexpr std::array kShortcuts = std::to_array<Shortcut>({
    {{'F', 0},
     "f",
     "toggle between full screen and normal window",
     DisplayCommand::ToggleFullScreen},
    {{'P', 0}, "p", "toggle between pause and resume", DisplayCommand::TogglePause},
    {{key::kAdd, key::kPlus}, "+", "add 1 minute", DisplayCommand::AddMinute},
    {{key::kSubtract, key::kMinus}, "-", "subtract 1 minute", DisplayCommand::SubtractMinute},
    {{'N', 0}, "n", "next round", DisplayCommand::NextRound},
    {{'R', 0}, "r", "restart the current round", DisplayCommand::Restart},
    {{'U', 0}, "u", "undo the last command", DisplayCommand::Undo},
    {{key::kEscape, 0}, "esc", "return to main menu", DisplayCommand::Close},
    {{'E', 0}, "e", "end the program", DisplayCommand::Exit},
    {{'H', 0}, "h", "hide/unhide the monitor display", DisplayCommand::ToggleHidden, true},
    {{'M', 0},
     "m",
     "maximise/restore monitor display",
     DisplayCommand::ToggleMonitorFullScreen,
     true},
    {{key::kF1, 0}, "", "", DisplayCommand::Help},
});

/// The command of a virtual key, with or without Shift; nothing for a key without one. `twin`:
/// whether both displays are in use; whichever of them has the keys then knows all commands.
constexpr std::optional<DisplayCommand> CommandOfKey(int virtualKey, bool twin) {
  if (virtualKey == 0) return std::nullopt;  // stands for no second key in the table
  for (const Shortcut& shortcut : kShortcuts) {
    if (shortcut.withTwin && !twin) continue;
    if (shortcut.keys[0] == virtualKey || shortcut.keys[1] == virtualKey) return shortcut.command;
  }
  return std::nullopt;
}

}  // namespace corvanel
