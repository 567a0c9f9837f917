#pragma once

#include <optional>
#include <string>

#include "basics/runtime_error.h"
#include "session/prompts.h"
#include "settings/settings_files.h"

namespace corvanel {

/// A file of standard settings that lies in the program folder, waiting to be imported once.
class StandardSettings {
 public:
  virtual ~StandardSettings() = default;
  /// Takes the file out of the way and returns its bytes; nothing when there is none, or when it
  /// could not be taken away and would be imported at every start.
  virtual std::optional<std::string> Take() = 0;
  /// The import failed: the file goes back to its place.
  virtual void PutBack() = 0;
  /// The import is done: the file is deleted.
  virtual void Delete() = 0;
};

/// Imports the standard settings where some are waiting, after a copy of the store was kept.
/// False when the import failed and the program must end; the store on the disk is as it was.
bool ImportStandardSettings(StandardSettings& waiting, SettingsStore& store, Prompts& prompts,
                            ErrorTrap& errors);

}  // namespace corvanel
