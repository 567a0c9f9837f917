#pragma once

#include <cstdint>
#include <filesystem>

namespace corvanel {

/// The lock of a settings file: whoever holds it works with the file. It goes with the process that
/// holds it, however that ends, and needs no room on the disk once its file is there.
class StoreLock {
 public:
  /// Of the file `store`: the lock is on a file of its own beside it, which stays.
  explicit StoreLock(const std::filesystem::path& store);
  ~StoreLock();
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;

  /// False when another process holds it. True also where it cannot be held at all, as in a folder
  /// that cannot be written.
  bool Take();

 private:
  std::filesystem::path file_;
  static constexpr intptr_t kNone = -1;
  intptr_t handle_ = kNone;  // the system's own
};

}  // namespace corvanel
