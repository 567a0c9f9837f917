#include "system/disk_writer.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <future>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace corvanel {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kStuckAfter(3);
constexpr std::chrono::seconds kPatience(10);

std::optional<RuntimeError> Try(const DiskWriter::Job& job) {
  try {
    job();
    return std::nullopt;
  } catch (const RuntimeError& error) {
    return error;
  } catch (const std::exception& error) {
    return RuntimeError(51, error.what());
  }
}

}  // namespace

class DiskWriter::Queue {
 public:
  explicit Queue(std::function<void()> failed) : failed_(std::move(failed)) {}

  void Add(const std::string& name, Job job, const std::shared_ptr<Queue>& self) {
    const std::lock_guard lock(mutex_);
    Remove(name);
    jobs_.emplace_back(name, std::move(job));
    if (!started_) std::thread([self] { self->Work(); }).detach();
    started_ = true;
    wake_.notify_one();
  }
  void Drop(const std::string& name) {
    const std::lock_guard lock(mutex_);
    Remove(name);
  }
  bool Wait(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    return idle_.wait_for(lock, patience, [this] { return jobs_.empty() && !working_; });
  }
  /// Nothing comes any more.
  void End() {
    const std::lock_guard lock(mutex_);
    ends_ = true;
    failed_ = [] {};
    wake_.notify_one();
  }
  std::optional<RuntimeError> Failure(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    const auto found = failures_.find(name);
    return found == failures_.end() ? std::nullopt : std::optional(found->second);
  }
  bool Stuck() const {
    const std::lock_guard lock(mutex_);
    return working_ && Clock::now() - since_ > kStuckAfter;
  }

 private:
  void Remove(const std::string& name) {
    if (name.empty()) return;
    std::erase_if(jobs_, [&](const auto& job) { return job.first == name; });
  }

  void Work() {
    std::unique_lock lock(mutex_);
    for (;;) {
      wake_.wait(lock, [this] { return !jobs_.empty() || ends_; });
      if (jobs_.empty()) return;
      const auto [name, job] = std::exchange(jobs_.front(), {});
      jobs_.pop_front();
      working_ = true;
      since_ = Clock::now();
      lock.unlock();
      const auto failure = Try(job);
      lock.lock();
      working_ = false;
      failures_.erase(name);
      if (failure) {
        failures_.emplace(name, *failure);
        failed_();
      }
      idle_.notify_all();
    }
  }

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable idle_;
  // Under the mutex:
  std::function<void()> failed_;
  std::deque<std::pair<std::string, Job>> jobs_;
  std::map<std::string, RuntimeError> failures_;
  bool started_ = false;
  bool ends_ = false;
  bool working_ = false;
  Clock::time_point since_;  // when the present job was begun
};

DiskWriter::DiskWriter(std::function<void()> failed)
    : queue_(std::make_shared<Queue>(std::move(failed))) {}

DiskWriter::~DiskWriter() {
  queue_->Wait(kPatience);
  queue_->End();
}

void DiskWriter::Do(const std::string& name, Job job) {
  queue_->Add(name, std::move(job), queue_);
}

void DiskWriter::Drop(const std::string& name) {
  queue_->Drop(name);
}

void DiskWriter::DoNow(Job job) {
  const auto done = std::make_shared<std::promise<std::optional<RuntimeError>>>();
  auto outcome = done->get_future();
  Do("", [done, job = std::move(job)] { done->set_value(Try(job)); });
  if (outcome.wait_for(kPatience) != std::future_status::ready) {
    throw RuntimeError(57, "the disk is not responding");
  }
  if (const auto failure = outcome.get()) throw RuntimeError(*failure);
}

bool DiskWriter::Wait(std::chrono::milliseconds patience) {
  return queue_->Wait(patience);
}

std::optional<RuntimeError> DiskWriter::Failure(const std::string& name) const {
  return queue_->Failure(name);
}

bool DiskWriter::Stuck() const {
  return queue_->Stuck();
}

}  // namespace corvanel
