#include "startup/start_up.h"

#include "basics/numbers.h"

namespace corvanel {
namespace {

constexpr std::string_view kPlace = "modStartUp";
constexpr const char* kSection = "Timer";
constexpr const char* kWhatsNew =
    "Click Help > Manual to see details of the latest changes (on page 2)\r\n"
    "Corvanel can now link to table-top unit (Bridgemate etc.) files\r\n\r\n"
    "Do you want to see this message next time Corvanel starts?";

void Save(SettingsStore& store, ErrorTrap& errors, const char* key, const std::string& value) {
  Guarded(errors, kPlace, [&] {
    store.SaveSetting(kSection, key, value);
    store.Flush();
  });
}

}  // namespace

void SaveAutoLaunch(SettingsStore& store, ErrorTrap& errors, bool ticked) {
  Save(store, errors, "AutoLaunch", ticked ? "True" : "False");
}

/// Read from the store itself: the session's options are loaded after start-up.
bool StartUp::Flag(const char* key, bool fallback) const {
  const auto value = parts_.store.GetSetting(kSection, key);
  if (!value) return fallback;
  return SameName(*value, "True") || Val(*value) != 0;
}

bool StartUp::AutoLaunch() const {
  return Flag("AutoLaunch", false);
}

StartUp::End StartUp::Run() {
  HandlerSteps step(parts_.errors, kPlace);
  if (Flag("AutoUpdate", true)) {
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
  const auto shown = parts_.store.GetSetting(kSection, "ShowMessage");
  const bool due = Val(shown.value_or("0")) < version;
  if (!due || parts_.prompts.AskYesNo(kWhatsNew) == Answer::No) {
    Save(parts_.store, parts_.errors, "ShowMessage", std::to_string(version));
  }
  if (due) AskForUnit();
}

/// Meant so: without the key nothing is asked, though the option itself is on by default.
void StartUp::AskForUnit() {
  if (!Flag("BMSuggest", false)) return;
  if (!parts_.store.GetSetting(kSection, "TableTopUnit").value_or("").empty()) return;
  parts_.prompts.Message("Set the type of tabletop unit in options");
  Save(parts_.store, parts_.errors, "TableTopUnit", "Bridgemate");
}

}  // namespace corvanel
