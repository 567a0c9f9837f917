#include "system/file_content.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvanel {
namespace {

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

}  // namespace

Result<FileContent> Fetch(const std::string& path) {
  const OpenFile file(path);
  struct stat before {};
  struct stat after {};
  if (!file.State(before) || !S_ISREG(before.st_mode)) return Error{53, "File not found"};
  if (before.st_size > kLargest) return Error{7, "The file is too large"};
  FileContent content{std::string(static_cast<size_t>(before.st_size), '\0'),
                      before.st_mtim.tv_sec};
  if (!file.Read(content.bytes) || !file.State(after)) return Error{57, "Device I/O error", true};
  if (!SameMoment(before, after)) return Error{70, "The file is being written", true};
  return content;
}

std::optional<int64_t> ModifiedAt(const std::filesystem::path& path) {
  struct stat state {};
  if (stat(path.c_str(), &state) != 0 || !S_ISREG(state.st_mode)) return std::nullopt;
  return state.st_mtim.tv_sec;
}

}  // namespace corvanel
