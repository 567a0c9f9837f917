#include "system/former_settings.h"

namespace corvanel {

bool TakeOverFormerSettings(SettingsStore& /*store*/) {
  return false;
}

}  // namespace corvanel
