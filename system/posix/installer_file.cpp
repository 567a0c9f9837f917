#include "system/installer_file.h"

namespace corvanel {

std::unique_ptr<InstallerFile> MakeInstallerFile() {
  return nullptr;
}

}  // namespace corvanel
