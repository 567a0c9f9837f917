#include "system/folders.h"

#include "basics/numbers.h"

namespace corvanel {

namespace fs = std::filesystem;

std::string SoundFile(const std::string& stored, const std::string& programFolder) {
  std::error_code error;
  if (fs::is_regular_file(stored, error)) return stored;
  return (fs::path(programFolder) / FileName(stored)).string();
}

}  // namespace corvanel
