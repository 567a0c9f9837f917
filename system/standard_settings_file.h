#pragma once

#include <filesystem>

#include "startup/standard_settings.h"

namespace corvanel {

/// "EBUsettings.txt" in the program folder.
class StandardSettingsFile : public StandardSettings {
 public:
  explicit StandardSettingsFile(const std::filesystem::path& programFolder);
  std::optional<std::string> Take() override;
  void PutBack() override;
  void Delete() override;

 private:
  std::filesystem::path file_;
  std::filesystem::path taken_;
};

}  // namespace corvanel
