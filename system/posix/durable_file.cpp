#include "system/durable_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace corvanel {
namespace {

constexpr mode_t kForUs = S_IRUSR | S_IWUSR;

RuntimeError Failed(const std::filesystem::path& file, int number) {
  return WriteError(file, {number, std::generic_category()});
}

/// Makes a rename in `folder` last over a power cut; not every file system can.
void SyncFolder(const std::filesystem::path& folder) {
  const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
}

}  // namespace

void KeepFilesPrivate() {
  ::umask(S_IRWXG | S_IRWXO);
}

void WriteDurably(const std::filesystem::path& file, std::string_view text) {
  // Made afresh: what somebody else has put in its place, a link or a pipe, is not written to.
  ::unlink(file.c_str());
  const int handle =
      ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kForUs);
  if (handle < 0) throw Failed(file, errno);
  int failure = 0;
  while (!text.empty() && failure == 0) {
    const ssize_t written = ::write(handle, text.data(), text.size());
    if (written < 0) {
      if (errno != EINTR) failure = errno;
    } else {
      text.remove_prefix(static_cast<size_t>(written));
    }
  }
  if (failure == 0 && ::fsync(handle) != 0) failure = errno;
  if (::close(handle) != 0 && failure == 0) failure = errno;
  if (failure != 0) {
    ::unlink(file.c_str());
    throw Failed(file, failure);
  }
}

void WriteInPlace(const std::filesystem::path& file, std::string_view text) {
  const int handle =
      ::open(file.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, kForUs);
  if (handle < 0) return;
  [[maybe_unused]] const ssize_t written = ::pwrite(handle, text.data(), text.size(), 0);
  ::close(handle);
}

void RenameDurably(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) {
    const int failure = errno;
    ::unlink(from.c_str());
    throw Failed(to, failure);
  }
  std::error_code error;
  SyncFolder(std::filesystem::absolute(to, error).parent_path());
}

}  // namespace corvanel
