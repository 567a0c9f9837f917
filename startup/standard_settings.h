#pragma once

#include <string>

#include "basics/runtime_error.h"
#include "session/prompts.h"
#include "settings/settings_files.h"

namespace corvanel {

/// Imports the standard settings where "EBUsettings.txt" waits in the program folder, after a copy
/// of the store was kept, and deletes the file. One that cannot be taken away is left alone: it
/// would be imported at every start. False when the import failed and the program must end; the
/// store on the disk is as it was.
bool ImportStandardSettings(const std::string& programFolder, FileAccess& files,
                            SettingsStore& store, Prompts& prompts, ErrorTrap& errors);

}  // namespace corvanel
