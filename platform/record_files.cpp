#include "platform/record_files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "platform/disk.h"
#include "platform/durable_file.h"

namespace corvanel {
namespace {

constexpr int kFileNotFound = 53;
constexpr std::chrono::seconds kPatience(3);

std::filesystem::path WithSuffix(std::filesystem::path file, const std::string& suffix) {
  file += suffix;
  return file;
}

}  // namespace

RecordFiles::RecordFiles(const std::filesystem::path& store)
    : file_(WithSuffix(store, ".session")),
      alive_(WithSuffix(file_, ".alive")),
      thread_([this] { Work(); }) {}

RecordFiles::~RecordFiles() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void RecordFiles::Keep(const std::string& text) {
  {
    const std::lock_guard lock(mutex_);
    text_ = text;
  }
  wake_.notify_one();
}

void RecordFiles::KeepAlive(const Moment& moment) {
  {
    const std::lock_guard lock(mutex_);
    moment_ = moment;
  }
  wake_.notify_one();
}

std::string RecordFiles::Failure() const {
  const std::lock_guard lock(mutex_);
  return failure_;
}

void RecordFiles::Forget() {
  std::unique_lock lock(mutex_);
  text_.reset();
  moment_.reset();
  forget_ = true;
  wake_.notify_one();
  // A disk that does not answer must not keep the program from ending.
  done_.wait_for(lock, kPatience, [this] { return !forget_; });
}

void RecordFiles::Work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    wake_.wait(lock, [this] { return text_ || moment_ || forget_ || ends_; });
    const auto text = std::exchange(text_, std::nullopt);
    const auto moment = std::exchange(moment_, std::nullopt);
    const bool forget = forget_;
    if (!text && !moment && !forget) return;
    lock.unlock();
    std::string failure;
    try {
      if (text) Write(*text);
    } catch (const RuntimeError& error) {
      failure = error.what();
    }
    if (moment) WriteAlive(*moment);
    if (forget) Remove();
    lock.lock();
    if (text) failure_ = failure;
    if (forget) {
      forget_ = false;
      done_.notify_all();
    }
  }
}

std::filesystem::path RecordFiles::FileOf(int age) const {
  return age == 0 ? file_ : WithSuffix(file_, fmt::format(".{}", age));
}

/// A power cut at any moment leaves the new record or the one before it, under one of its names.
void RecordFiles::Write(const std::string& text) {
  const std::filesystem::path temporary = WithSuffix(file_, ".new");
  WriteDurably(temporary, text);
  std::error_code none;
  for (int age = kKept - 1; age > 0; --age) {
    std::filesystem::rename(FileOf(age - 1), FileOf(age), none);
  }
  RenameDurably(temporary, file_);
}

/// In place and in one piece, without waiting for the disk.
void RecordFiles::WriteAlive(const Moment& moment) {
  const int handle = ::open(alive_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
  if (handle < 0) return;
  const std::string text =
      fmt::format("{:40} {:20.3f} {:20.3f}\n", moment.boot, moment.uptime, moment.utc);
  // What cannot be written now is written a second later.
  [[maybe_unused]] const ssize_t written = ::pwrite(handle, text.data(), text.size(), 0);
  ::close(handle);
}

void RecordFiles::Remove() {
  std::error_code none;
  for (int age = 0; age < kKept; ++age) std::filesystem::remove(FileOf(age), none);
  std::filesystem::remove(alive_, none);
}

std::vector<std::string> RecordFiles::Kept() const {
  std::vector<std::string> texts;
  for (int age = 0; age < kKept; ++age) {
    auto text = Disk().ReadFile(FileOf(age).string());
    if (text) {
      texts.push_back(text.Value());
    } else if (text.Failure().number != kFileNotFound) {
      texts.emplace_back();  // there is one, though it cannot be read
    }
  }
  return texts;
}

std::optional<Moment> RecordFiles::LastAlive() const {
  std::ifstream file(alive_);
  Moment moment;
  if (file >> moment.boot >> moment.uptime >> moment.utc) return moment;
  return std::nullopt;
}

}  // namespace corvanel
