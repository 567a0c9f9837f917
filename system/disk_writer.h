#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "basics/runtime_error.h"

namespace corvanel {

/// Does what is to be done on a disk on a thread of its own, one job after the other in the order
/// in which they were asked for: a disk can take its time and the clock cannot.
class DiskWriter {
 public:
  using Job = std::function<void()>;

  /// `failed`: called on that thread after each job that failed; must not ask this writer anything.
  explicit DiskWriter(std::function<void()> failed = [] {});
  /// Waits until everything is done; not for ever, where the disk does not respond.
  ~DiskWriter();
  DiskWriter(const DiskWriter&) = delete;
  DiskWriter& operator=(const DiskWriter&) = delete;

  /// Has a job done, which throws RuntimeError when it cannot be. One of the same name that still
  /// waits is left out: the new one has the later word. Jobs without a name are all done.
  void Do(const std::string& name, Job job);
  /// Leaves out a job that still waits.
  void Drop(const std::string& name);
  /// Has a job done and waits for it. Throws the RuntimeError of the job, or one that says that
  /// the disk does not respond.
  void DoNow(Job job);
  /// Waits until everything asked for is done; false when that takes too long.
  bool Wait(std::chrono::milliseconds patience);

  /// Why the last job of that name failed; nothing when it did not, or is still on its way.
  std::optional<RuntimeError> Failure(const std::string& name) const;
  /// Whether a job has been under way for several seconds.
  bool Stuck() const;

 private:
  class Queue;

  std::shared_ptr<Queue> queue_;  // shared with the thread, which outlives this on a stuck disk
};

}  // namespace corvanel
