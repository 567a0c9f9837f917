#include "startup/standard_settings.h"

namespace corvanel {

bool ImportStandardSettings(const std::string& programFolder, FileAccess& files,
                            SettingsStore& store, Prompts& prompts, ErrorTrap& errors) {
  const std::string file = programFolder + "/EBUsettings.txt";
  const std::string taken = file + ".taken";
  // Whoever may give it another name may delete it too.
  if (!files.Rename(file, taken)) return true;
  const auto bytes = files.ReadFile(taken);
  bool imported = false;
  if (bytes) {
    Guarded(errors, "frmMain.Form_Load", [&] {
      store.KeepCopy();
      imported = ImportSettings(bytes.Value(), store);
      if (imported) store.Flush();
    });
  }
  if (!imported) {
    [[maybe_unused]] const Status back = files.Rename(taken, file);
    if (!bytes) return true;
    prompts.Message("EBU settings could not be imported");
    return false;
  }
  [[maybe_unused]] const Status gone = files.Remove(taken);
  prompts.Message("EBU standard settings have been loaded");
  return true;
}

}  // namespace corvanel
