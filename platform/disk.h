#pragma once

#include "settings/settings_files.h"

namespace corvanel {

/// Whole files on the disk. A file larger than any that this program reads is an error.
class Disk : public FileAccess {
 public:
  Result<std::string> ReadFile(const std::string& path) override;
  Result<bool> WriteFile(const std::string& path, const std::string& bytes) override;
};

}  // namespace corvanel
