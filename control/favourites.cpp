#include "control/favourites.h"

#include <fmt/format.h>

#include <algorithm>

#include "basics/numbers.h"

namespace corvanel {

int Favourites::Find(const std::string& name) const {
  for (int slot = 1; slot <= kFavourites; ++slot) {
    const std::string& present = parts_.table.Entry(slot).Name;
    if (!present.empty() && SameName(present, name)) return slot;
  }
  return 0;
}

/// The slot of a favourite of the list; 0, and a message, when there is none of that name.
int Favourites::FindOrTell(const std::string& name) const {
  const int slot = Find(name);
  if (slot == 0) {
    parts_.prompts.Message(name.empty() ? "Please provide a name for the favourite"
                                        : "Favourite " + name + " not found");
  }
  return slot;
}

void Favourites::ShowList() {
  parts_.view.ShowFavourites(list_, parts_.table.CurrentName());
  parts_.view.ShowInUse(parts_.table.CurrentName());
  parts_.view.ClearNewName();
}

/// Shows list and label for the favourite in use, and the settings in their boxes.
void Favourites::Refresh() {
  HandlerSteps step(parts_.errors, "frmMain.Display");
  step([&] { ShowList(); });
  step([&] { parts_.control.SettingsExchanged(); });
}

void Favourites::cmdSaveDefault_Click(const std::string& name) {
  if (name.empty()) {
    parts_.prompts.Message("Please provide a name for this favourite");
    return;
  }
  int slot = Find(name);
  if (slot != 0) {
    const Answer answer = parts_.prompts.AskYesNo(
        name +
        " already exists as a favourite\r\n\r\nDo you want to overwrite it with these settings?");
    if (answer != Answer::Yes) return;
  } else {
    slot = parts_.table.FreeSlot();
    if (slot == 0) {
      parts_.prompts.Message(fmt::format(
          "You already have {} favourites\r\n\r\nYou need to delete one first", kFavourites));
      return;
    }
  }
  Save(slot, name);
}

/// Puts the live settings into a slot under a name, in whatever spelling it now has.
void Favourites::Save(int slot, const std::string& name) {
  const std::string before = parts_.table.Entry(slot).Name;
  HandlerSteps step(parts_.errors, "frmMain.cmdFavSave_Click");
  parts_.table.UseFavourite(slot, name);
  parts_.table.CaptureSettings(slot);
  step([&] { parts_.table.SaveDefaults(); });
  const auto listed = std::find(list_.begin(), list_.end(), before);
  if (before.empty() || listed == list_.end()) {
    list_.push_back(name);
  } else {
    *listed = name;
  }
  Refresh();
}

void Favourites::cboFavs_Click(const std::string& name) {
  if (const int slot = FindOrTell(name); slot != 0) Choose(slot);
}

void Favourites::Choose(int slot) {
  HandlerSteps step(parts_.errors, "frmMain.cboFavs_Click");
  parts_.table.UseFavourite(slot, parts_.table.Entry(slot).Name);
  parts_.table.ApplySettings(slot);
  step([&] { parts_.table.SaveDefaults(); });
  Refresh();
}

void Favourites::cmdFavSave_Click(const std::string& name) {
  if (name.empty()) {
    parts_.prompts.Message("Please provide a name for this favourite");
    return;
  }
  const int slot = Find(name);
  if (slot == 0) {
    // Deliberate: the message ends in the two line breaks, where the others go on.
    parts_.prompts.Message(name + " cannot be found\r\n\r\n");
    return;
  }
  const Answer answer =
      parts_.prompts.AskYesNo("Do you want to overwrite the favourite - \r\n\r\n" + name);
  if (answer == Answer::Yes) Save(slot, name);
}

void Favourites::cmdFavDelete_Click(const std::string& name) {
  const int slot = FindOrTell(name);
  if (slot == 0) return;
  const Answer answer =
      parts_.prompts.AskYesNo("Do you want to delete the favourite - \r\n\r\n" + name);
  if (answer == Answer::Yes) Delete(slot, name);
}

/// The first one of the list comes into use in its place; but the evening of a session under way
/// stays as it is.
void Favourites::Delete(int slot, const std::string& name) {
  HandlerSteps step(parts_.errors, "frmMain.cmdFavDelete_Click");
  const bool inUse = slot == parts_.table.FavouriteInUse();
  parts_.table.DeleteFavourite(slot);
  const auto listed = std::find_if(list_.begin(), list_.end(),
                                   [&](const std::string& item) { return SameName(item, name); });
  if (listed != list_.end()) list_.erase(listed);
  if (parts_.clock.UnderWay()) {
    if (inUse) parts_.table.UseFavourite(0, "");
  } else {
    const std::string next = list_.empty() ? "" : list_.front();
    parts_.table.UseFavourite(Find(next), next);
  }
  step([&] { parts_.table.SaveDefaults(); });
  if (parts_.clock.UnderWay()) {
    step([&] { ShowList(); });
  } else {
    Reload();
  }
}

void Favourites::Reload() {
  HandlerSteps step(parts_.errors, "frmMain.GetDefaults");
  step([&] { parts_.table.GetDefaults(); });
  step([&] {
    list_ = parts_.table.FavouriteNames();
    ShowList();
  });
  step([&] { parts_.control.SettingsLoaded(); });
}

}  // namespace corvanel
