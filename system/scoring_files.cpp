#include "system/scoring_files.h"

#include <algorithm>
#include <filesystem>

#include "basics/numbers.h"
#include "system/file_content.h"
#include "system/path_text.h"
#include "system/system_time.h"

namespace corvanel {

namespace fs = std::filesystem;

Result<ScoringContent> ReadScoringFile(const std::string& path, const ScoringContent& last) {
  Result<FileContent> content = Fetch(path);
  if (!content) return content.Failure();
  if (last.picture && content.Value().bytes == *last.bytes) return last;
  return ReadScoringContent(std::move(content.Value().bytes), LocalTime(content.Value().modified),
                            last);
}

std::vector<ScoringFile> ListScoringFiles(const std::string& folder) {
  std::vector<ScoringFile> files;
  std::error_code error;
  fs::directory_iterator entry(PathOf(folder), error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const fs::path& path = entry->path();
    if (!SameName(PathText(path.extension()), ".bws")) continue;
    const auto modified = ModifiedAt(path);
    if (modified) files.push_back({PathText(path.filename()), LocalTime(*modified)});
  }
  std::sort(files.begin(), files.end(),
            [](const ScoringFile& a, const ScoringFile& b) { return a.name < b.name; });
  return files;
}

std::string FindFolder(const std::string& folder) {
  std::error_code error;
  if (fs::is_directory(PathOf(folder), error)) return folder;
  fs::path real;
  for (const fs::path& part : PathOf(folder)) {
    fs::path next = real / part;
    if (!part.empty() && !fs::exists(next, error)) {
      fs::directory_iterator entry(real.empty() ? fs::path(".") : real, error);
      for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (SameName(PathText(entry->path().filename()), PathText(part))) next = entry->path();
      }
    }
    real = next;
  }
  return fs::is_directory(real, error) ? PathText(real) : folder;
}

}  // namespace corvanel
