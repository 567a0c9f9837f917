#include "system/folders.h"

#include "basics/numbers.h"
#include "system/file_content.h"
#include "system/path_text.h"

namespace corvanel {

namespace fs = std::filesystem;

std::string SoundFile(const std::string& stored, const std::string& programFolder) {
  std::error_code error;
  if (fs::is_regular_file(PathOf(stored), error)) return stored;
  return PathText(PathOf(programFolder) / PathOf(FileName(stored)));
}

std::optional<std::string> SoundBytes(const std::string& stored, const std::string& programFolder) {
  auto content = Fetch(SoundFile(stored, programFolder));
  return content ? std::optional(std::move(content.Value().bytes)) : std::nullopt;
}

}  // namespace corvanel
