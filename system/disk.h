#pragma once

#include "settings/settings_files.h"

namespace corvanel {

/// Whole files on the disk. A file larger than any that this program reads is an error.
class Disk : public FileAccess {
 public:
  Result<std::string> ReadFile(const std::string& path) override;
  Status WriteFile(const std::string& path, const std::string& bytes) override;
  Status Rename(const std::string& from, const std::string& to) override;
  Status Remove(const std::string& path) override;
};

/// Writes a file of the program's own to the first of the output folders that takes it. Returns
/// where; empty when none did.
std::string WriteOutput(FileAccess& files, const std::string& name, const std::string& bytes);

}  // namespace corvanel
