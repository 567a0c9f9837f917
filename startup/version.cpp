#include "startup/version.h"

#include <fmt/format.h>

namespace corvanel {

std::string Version::Text() const {
  return fmt::format("{}.{}.{:02}", major, minor, revision);
}

Version ThisVersion() {
  return {CORVANEL_MAJOR, CORVANEL_MINOR, CORVANEL_REVISION};
}

}  // namespace corvanel
