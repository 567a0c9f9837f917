#pragma once

#include "settings/settings_store.h"

namespace corvanel {

/// Copies the settings of the program that this one follows, where the system keeps some for this
/// user, whole into the store: session, favourites, fonts. They stay as they were. Returns whether
/// there were any.
bool TakeOverFormerSettings(SettingsStore& store);

}  // namespace corvanel
