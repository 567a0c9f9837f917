#pragma once

#include <string>

#include "basics/runtime_error.h"
#include "control/favourites.h"
#include "session/prompts.h"
#include "settings/settings_files.h"

namespace corvanel {

/// The Settings menu: export, import, and the way back from an import.
class SettingsMenu {
 public:
  struct Parts {
    SettingsStore& store;
    const Session& session;
    FileAccess& files;
    Favourites& favourites;
    Prompts& prompts;
    ErrorTrap& errors;
  };
  explicit SettingsMenu(const Parts& parts) : parts_(parts) {}

  void mnuSettingsExport_Click();
  void mnuSettingsImport_Click();
  /// Brings back the copy of the store that the last import kept.
  void mnuSettingsUndoImport_Click();

 private:
  void Export(const std::string& path);
  bool Import(const std::string& path);

  Parts parts_;
};

}  // namespace corvanel
