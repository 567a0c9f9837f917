#include "system/store_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace corvanel {

StoreLock::StoreLock(const std::filesystem::path& store) : file_(store) {
  file_ += ".lock";
}

StoreLock::~StoreLock() {
  if (handle_ != kNone) ::close(static_cast<int>(handle_));
}

bool StoreLock::Take() {
  if (handle_ == kNone) {
    handle_ = ::open(file_.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
  }
  if (handle_ == kNone) handle_ = ::open(file_.c_str(), O_RDONLY | O_CLOEXEC);
  if (handle_ == kNone) return true;
  return ::flock(static_cast<int>(handle_), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace corvanel
