#pragma once

#include "basics/runtime_error.h"
#include "session/prompts.h"
#include "settings/settings_store.h"
#include "startup/update_check.h"

namespace corvanel {

/// What start-up does while the splash is shown.
class StartUp {
 public:
  enum class End { Wait, OpenAtOnce, EndProgram };

  struct Parts {
    SettingsStore& store;
    SplashView& splash;
    UpdateCheck& update;
    Prompts& prompts;
    ErrorTrap& errors;
    Version version;
  };
  explicit StartUp(const Parts& parts) : parts_(parts) {}

  /// Whether the control window opens without waiting at the splash.
  bool AutoLaunch() const;
  /// Looks for an update and tells once per version what is new, unless the director has switched
  /// that off. Says whether the splash waits for its button.
  End Run();

 private:
  void TellWhatsNew();
  void AskForUnit();

  Parts parts_;
};

/// The splash's box was ticked or cleared; it may outlive start-up.
void SaveAutoLaunch(SettingsStore& store, ErrorTrap& errors, bool ticked);

}  // namespace corvanel
