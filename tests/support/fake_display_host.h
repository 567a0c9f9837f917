#pragma once

#include <string>

#include "display/display_commands.h"

namespace corvanel {

/// Notes what the displays have done, and does nothing.
class FakeDisplayHost : public DisplayHost {
 public:
  /// The windows must be there before a command is given.
  FakeDisplayHost(DisplayForm& room, DisplayForm& twin) : room_(room), twin_(twin) {}

  void ShowControlWindow() override { done += "control "; }
  void ShowHelp() override { done += "help "; }
  void ShowSoundOptions() override { done += "sounds "; }
  void ShowDisplayOptions() override { done += "options "; }
  bool ExitFromDisplay() override {
    done += "exit ";
    return ends;
  }
  double ScreenWidth() const override { return 1920 * 15; }
  void ShowFullScreenPair(bool fullScreen) override { done += fullScreen ? "full " : "normal "; }
  void ShowMonitorPairs() override { ++pairsShown; }
  DisplayForm& RoomDisplay() override { return room_; }
  DisplayForm& Twin() override { return twin_; }

  bool ends = false;
  int pairsShown = 0;  // how often the buttons were brought up to date
  std::string done;

 private:
  DisplayForm& room_;
  DisplayForm& twin_;
};

}  // namespace corvanel
