#pragma once

#include <string>

namespace corvanel {

/// The program's version as it is shown: major, minor, and the revision with two digits, "1.4.02".
std::string VersionText();

}  // namespace corvanel
