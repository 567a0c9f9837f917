#include "system/folders.h"

#include "basics/numbers.h"
#include "system/path_text.h"

namespace corvanel {

namespace fs = std::filesystem;

std::string SoundFile(const std::string& stored, const std::string& programFolder) {
  std::error_code error;
  if (fs::is_regular_file(PathOf(stored), error)) return stored;
  return PathText(PathOf(programFolder) / PathOf(FileName(stored)));
}

}  // namespace corvanel
