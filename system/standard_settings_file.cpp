#include "system/standard_settings_file.h"

#include "system/disk.h"

namespace corvanel {

namespace fs = std::filesystem;

StandardSettingsFile::StandardSettingsFile(const fs::path& programFolder)
    : file_(programFolder / "EBUsettings.txt"), taken_(programFolder / "EBUsettings.txt.taken") {}

std::optional<std::string> StandardSettingsFile::Take() {
  std::error_code error;
  if (!fs::is_regular_file(file_, error)) return std::nullopt;
  // Whoever may give it another name may delete it too.
  fs::rename(file_, taken_, error);
  if (error) return std::nullopt;
  const auto bytes = Disk().ReadFile(taken_.string());
  if (bytes) return bytes.Value();
  PutBack();
  return std::nullopt;
}

void StandardSettingsFile::PutBack() {
  std::error_code error;
  fs::rename(taken_, file_, error);
}

void StandardSettingsFile::Delete() {
  std::error_code error;
  fs::remove(taken_, error);
}

}  // namespace corvanel
