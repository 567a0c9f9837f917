#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "control/control_window.h"

namespace corvanel {

/// The control window without a window: remembers what was written into it.
class FakeControlWindow : public ControlWindowView, public ControlHost {
 public:
  void SetText(Box box, const std::string& text) override { texts[box] = text; }
  void SetLabel(Label label, const std::string& text) override { labels[label] = text; }
  void SetTick(Tick tick, bool on) override { ticks[tick] = on; }
  void SetMode(int calculate) override { mode = calculate; }
  void Focus(Box box) override { focus = box; }
  bool CommitEditing() override { return commit(); }
  void ShowTakenOver(const std::vector<Box>& boxes) override { takenOver = boxes; }
  void OfferFavouriteSave(bool offered) override { favouriteOffered = offered; }
  void OfferResume() override { resumeOffered = true; }
  void ShowEvening(const Evening& shown) override {
    evening = shown;
    ++calculations;
  }
  void ShowLive(const std::optional<LiveStrip>& shown) override { live = shown; }
  void ShowFavourites(const std::vector<std::string>& names, const std::string& text) override {
    listed = names;
    chosen = text;
  }
  void ShowInUse(const std::string& name) override { inUse = name; }
  void ClearNewName() override { ++newNamesCleared; }
  void SessionStarts() override { done += "session "; }
  void ShowDisplays() override { displaysShown = true; }
  void ShowHint() override { ++hints; }
  void SaveDisplayGeometry() override { done += "geometry "; }
  void ShutDownComputer() override { done += "shutdown "; }
  void EndProgram() override { done += "end "; }

  std::map<Box, std::string> texts;
  std::map<Label, std::string> labels;
  std::map<Tick, bool> ticks;
  std::function<bool()> commit = [] { return true; };
  std::optional<Box> focus;
  int mode = -1;
  Evening evening;
  std::optional<LiveStrip> live;
  std::vector<Box> takenOver;
  int calculations = 0;
  bool favouriteOffered = false;
  bool resumeOffered = false;
  bool displaysShown = false;
  int hints = 0;
  std::string done;
  std::vector<std::string> listed;  // favourites
  std::string chosen;
  std::string inUse;
  int newNamesCleared = 0;
};

}  // namespace corvanel
