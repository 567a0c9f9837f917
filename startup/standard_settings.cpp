#include "startup/standard_settings.h"

namespace corvanel {

bool ImportStandardSettings(StandardSettings& waiting, SettingsStore& store, Prompts& prompts,
                            ErrorTrap& errors) {
  HandlerSteps step(errors, "frmMain");
  std::optional<std::string> bytes;
  step([&] { bytes = waiting.Take(); });
  if (!bytes) return true;
  bool imported = false;
  step([&] {
    store.KeepCopy();
    imported = ImportSettings(*bytes, store);
    if (imported) store.Flush();
  });
  if (!imported) {
    waiting.PutBack();
    prompts.Message("EBU settings could not be imported");
    return false;
  }
  waiting.Delete();
  prompts.Message("EBU standard settings have been loaded");
  return true;
}

}  // namespace corvanel
