#include "control/settings_menu.h"

#include <string_view>

namespace corvanel {
namespace {

// Where the settings before an import that failed are kept; gone with them, or with a good import.
constexpr std::string_view kSection = "Timer";
constexpr std::string_view kLastGood = "SettingsBeforeImport";

}  // namespace

void SettingsMenu::mnuSettingsExport_Click() {
  Guarded(parts_.errors, "frmMain.mnuSettingsExport_Click", [&] {
    const auto path = parts_.prompts.ChooseFileToSave("Settings.txt", "Settings (*.txt)|*.txt");
    if (path) Export(*path);
  });
}

void SettingsMenu::Export(const std::string& path) {
  const ExportOutcome outcome = ExportSettings(parts_.store);
  const Status written = parts_.files.WriteFile(path, outcome.bytes);
  if (!written) {
    parts_.prompts.Message("Settings could not be saved\r\n" + written.Failure().description);
    return;
  }
  parts_.prompts.Message("Settings were saved successfully to file\r\n" + path);
  if (outcome.changed.empty()) return;
  std::string text = "A settings file cannot hold the character \". It was written as ' in:";
  for (const std::string& key : outcome.changed) text += "\r\n" + key;
  parts_.prompts.Message(text);
}

void SettingsMenu::mnuSettingsImport_Click() {
  Guarded(parts_.errors, "frmMain.mnuSettingsImport_Click", [&] {
    const auto path = parts_.prompts.ChooseFileToOpen(
        "Select import file", parts_.session.ProgramFolder, "Text File(*.txt)|*.txt");
    if (!path) {
      // Deliberate: the same words whether the director cancels or the file fails.
      parts_.prompts.Message("Settings could not be imported");
    } else if (Import(*path)) {
      parts_.prompts.Message("Settings imported successfully");
      parts_.favourites.Reload();
    }
  });
}

bool SettingsMenu::Import(const std::string& path) {
  const Result<std::string> bytes = parts_.files.ReadFile(path);
  if (!bytes) {
    parts_.prompts.Message("Settings could not be imported\r\n" + bytes.Failure().description);
    return false;
  }
  // What an import that failed has left is nothing to come back to, in a later run neither.
  std::string lastGood = parts_.store.GetSetting(kSection, kLastGood).value_or("");
  if (lastGood.empty() || !parts_.files.ReadFile(lastGood)) lastGood = parts_.store.KeepCopy();
  const bool whole = ImportSettings(bytes.Value(), parts_.store);
  if (!whole) parts_.store.SaveSetting(kSection, kLastGood, lastGood);
  parts_.store.Flush();
  if (whole) return true;
  parts_.prompts.Message(
      "Settings could not be imported\r\nThe settings before the import are kept in " + lastGood);
  return false;
}

void SettingsMenu::mnuSettingsUndoImport_Click() {
  Guarded(parts_.errors, "frmMain.mnuSettingsUndoImport_Click", [&] {
    if (!parts_.store.RestoreCopy()) {
      parts_.prompts.Message("No settings have been kept by an import yet");
      return;
    }
    parts_.favourites.Reload();
    parts_.prompts.Message("The settings before the last import are back");
  });
}

}  // namespace corvanel
