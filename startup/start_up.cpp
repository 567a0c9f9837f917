#include "startup/start_up.h"

#include "settings/settings_table.h"

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "modStartUp";
constexpr const char* kWhatsNew =
    "Click Help > Manual to see details of the latest changes (on page 2)\r\n"
    "Corvanel can now link to table-top unit (Bridgemate etc.) files\r\n\r\n"
    "Do you want to see this message next time Corvanel starts?";

void Save(SettingsStore& store, ErrorTrap& errors, const char* key, const std::string& value) {
  Guarded(errors, kPlace, [&] {
    store.SaveSetting(SectionOfSet(0), key, value);
    store.Flush();
  });
}

}  // namespace

void SaveAutoLaunch(SettingsStore& store, ErrorTrap& errors, bool ticked) {
  Save(store, errors, "AutoLaunch", ticked ? "True" : "False");
}

bool StartUp::AutoLaunch() const {
  return StoredOptions(parts_.store).AutoLaunch;
}

StartUp::End StartUp::Run() {
  HandlerSteps step(parts_.errors, kPlace);
  if (StoredOptions(parts_.store).AutoUpdate) {
    bool ends = false;
    step([&] { ends = parts_.update.Run(); });
    if (ends) return End::EndProgram;
    step([&] { TellWhatsNew(); });
  } else {
    parts_.splash.Log("Starting Corvanel");
    parts_.splash.Log("Option to check for updates is switched off");
  }
  return AutoLaunch() ? End::OpenAtOnce : End::Wait;
}

void StartUp::TellWhatsNew() {
  const int version = parts_.version.Number();
  const bool due = StoredOptions(parts_.store).ShowMessage < version;
  if (!due || parts_.prompts.AskYesNo(kWhatsNew) == Answer::No) {
    Save(parts_.store, parts_.errors, "ShowMessage", std::to_string(version));
  }
  if (due) AskForUnit();
}

/// Deliberate: only where the link was once stored as wanted, though it is on by default.
void StartUp::AskForUnit() {
  if (!parts_.store.GetSetting(SectionOfSet(0), "BMSuggest")) return;
  if (!StoredOptions(parts_.store).BMSuggest) return;
  if (!parts_.store.GetSetting(SectionOfSet(0), "TableTopUnit").value_or("").empty()) return;
  parts_.prompts.Message("Set the type of tabletop unit in options");
  Save(parts_.store, parts_.errors, "TableTopUnit", "Bridgemate");
}

}  // namespace corvanel
