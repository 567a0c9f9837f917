#include "startup/version.h"

#include <fmt/format.h>

namespace corvanel {

std::string VersionText() {
  return fmt::format("{}.{}.{:02}", CORVANEL_MAJOR, CORVANEL_MINOR, CORVANEL_REVISION);
}

}  // namespace corvanel
