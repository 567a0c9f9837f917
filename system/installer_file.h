#pragma once

#include <memory>

#include "startup/update_check.h"

namespace corvanel {

/// The installer of an update on this computer; null on systems whose packages do that.
std::unique_ptr<InstallerFile> MakeInstallerFile();

}  // namespace corvanel
