#pragma once

#include <string>
#include <vector>

#include "basics/runtime_error.h"
#include "control/control_window.h"
#include "session/prompts.h"
#include "settings/settings_table.h"

namespace corvanel {

/// Saves, chooses and deletes favourites: named, complete sets of session settings in the slots 1
/// to 20 of the table. Names are matched without regard to case. Every refusal is a message and
/// leaves store and list unchanged.
class Favourites {
 public:
  struct Parts {
    SettingsTable& table;
    const RoundClock& clock;
    ControlWindowView& view;
    ControlWindow& control;
    Prompts& prompts;
    ErrorTrap& errors;
  };
  explicit Favourites(const Parts& parts) : parts_(parts) {}

  /// Saves the live settings under the name that was typed for a new favourite.
  void cmdSaveDefault_Click(const std::string& name);
  /// An entry of the list was chosen: its settings become the live ones.
  void cboFavs_Click(const std::string& name);
  /// Saves the live settings into the chosen favourite.
  void cmdFavSave_Click(const std::string& name);
  void cmdFavDelete_Click(const std::string& name);

  /// Loads everything anew from the store, as at the start or after an import.
  void Reload();

 private:
  void Save(int slot, const std::string& name);
  void Choose(int slot);
  void Delete(int slot, const std::string& name);
  void ShowList();
  int Find(const std::string& name) const;
  int FindOrTell(const std::string& name) const;
  void Refresh();

  Parts parts_;
  std::vector<std::string> list_;
};

}  // namespace corvanel
