#include "system/scoring_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "basics/numbers.h"
#include "system/system_time.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

constexpr off_t kLargest = 256 << 20;  // bytes; a database of this kind cannot be so large
/// An open file; closed when it goes.
class OpenFile {
 public:
  explicit OpenFile(const std::string& path)
      // Not even the time of the last access changes, where the file's owner is asking.
      : number_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOATIME)) {
    if (number_ < 0) number_ = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  }
  ~OpenFile() {
    if (number_ >= 0) close(number_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool State(struct stat& state) const { return number_ >= 0 && fstat(number_, &state) == 0; }
  bool Read(std::string& bytes) const {
    size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t read = ::read(number_, bytes.data() + done, bytes.size() - done);
      if (read <= 0) return false;
      done += static_cast<size_t>(read);
    }
    return true;
  }

 private:
  int number_;
};

bool SameMoment(const struct stat& a, const struct stat& b) {
  return a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

/// The bytes of a file and when it was changed.
struct Content {
  std::string bytes;
  DateTime modified;
};

Result<Content> Fetch(const std::string& path) {
  const OpenFile file(path);
  struct stat before {};
  struct stat after {};
  if (!file.State(before) || !S_ISREG(before.st_mode)) return Error{53, "File not found"};
  if (before.st_size > kLargest) return Error{7, "The file is too large"};
  Content content{std::string(static_cast<size_t>(before.st_size), '\0'),
                  LocalTime(before.st_mtim.tv_sec)};
  if (!file.Read(content.bytes) || !file.State(after)) return Error{57, "Device I/O error", true};
  if (!SameMoment(before, after)) return Error{70, "The file is being written", true};
  return content;
}

}  // namespace

Result<ScoringContent> ReadScoringFile(const std::string& path, const ScoringContent& last) {
  Result<Content> content = Fetch(path);
  if (!content) return content.Failure();
  if (last.picture && content.Value().bytes == *last.bytes) return last;
  return ReadScoringContent(std::move(content.Value().bytes), content.Value().modified, last);
}

std::vector<ScoringFile> ListScoringFiles(const std::string& folder) {
  std::vector<ScoringFile> files;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    struct stat state {};
    const fs::path& path = entry->path();
    if (!SameName(path.extension().string(), ".bws")) continue;
    if (stat(path.c_str(), &state) != 0 || !S_ISREG(state.st_mode)) continue;
    files.push_back({path.filename().string(), LocalTime(state.st_mtim.tv_sec)});
  }
  std::sort(files.begin(), files.end(),
            [](const ScoringFile& a, const ScoringFile& b) { return a.name < b.name; });
  return files;
}

std::string FindFolder(const std::string& folder) {
  std::error_code error;
  if (fs::is_directory(folder, error)) return folder;
  fs::path real;
  for (const fs::path& part : fs::path(folder)) {
    fs::path next = real / part;
    if (!part.empty() && !fs::exists(next, error)) {
      fs::directory_iterator entry(real.empty() ? fs::path(".") : real, error);
      for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (SameName(entry->path().filename().string(), part.string())) next = entry->path();
      }
    }
    real = next;
  }
  return fs::is_directory(real, error) ? real.string() : folder;
}

}  // namespace corvanel
