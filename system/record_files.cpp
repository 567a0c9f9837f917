#include "system/record_files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <sstream>
#include <system_error>
#include <thread>
#include <utility>

#include "system/disk.h"
#include "system/durable_file.h"

namespace corvanel {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kKept = 3;
constexpr int kFileNotFound = 53;
constexpr std::chrono::seconds kPatience(3);

std::filesystem::path WithSuffix(std::filesystem::path file, const std::string& suffix) {
  file += suffix;
  return file;
}

}  // namespace

/// The files, and the thread's work on them.
class RecordFiles::Writer {
 public:
  explicit Writer(const std::filesystem::path& store)
      : file_(WithSuffix(store, ".session")), alive_(WithSuffix(file_, ".alive")) {}

  void Keep(const std::string& text) {
    const std::lock_guard lock(mutex_);
    text_ = text;
    wake_.notify_one();
  }
  void KeepAlive(const Moment& moment) {
    const std::lock_guard lock(mutex_);
    moment_ = moment;
    wake_.notify_one();
  }
  std::string Failure() const {
    const std::lock_guard lock(mutex_);
    if (working_ && Clock::now() - since_ > kPatience) return "the disk does not answer";
    return failure_;
  }
  void Forget() {
    std::unique_lock lock(mutex_);
    text_.reset();
    moment_.reset();
    forget_ = true;
    wake_.notify_one();
    done_.wait_for(lock, kPatience, [this] { return !forget_; });
  }
  void End() {
    std::unique_lock lock(mutex_);
    ends_ = true;
    wake_.notify_one();
    done_.wait_for(lock, kPatience, [this] { return ended_; });
  }

  void Work();
  std::vector<std::string> Kept() const;
  std::optional<Moment> LastAlive() const;

 private:
  std::filesystem::path FileOf(int age) const {
    return age == 0 ? file_ : WithSuffix(file_, fmt::format(".{}", age));
  }
  std::string TryToWrite(const std::string& text) const;
  void Write(const std::string& text) const;
  void WriteAlive(const Moment& moment) const;
  void Remove() const;

  const std::filesystem::path file_;
  const std::filesystem::path alive_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable done_;
  // Under the mutex:
  std::optional<std::string> text_;  // to be written next
  std::optional<Moment> moment_;
  bool forget_ = false;
  bool ends_ = false;
  bool ended_ = false;
  bool working_ = false;
  Clock::time_point since_;  // when the present work was begun
  std::string failure_;
};

void RecordFiles::Writer::Work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    wake_.wait(lock, [this] { return text_ || moment_ || forget_ || ends_; });
    const auto text = std::exchange(text_, std::nullopt);
    const auto moment = std::exchange(moment_, std::nullopt);
    const bool forget = forget_;
    if (!text && !moment && !forget) break;
    working_ = true;
    since_ = Clock::now();
    lock.unlock();
    const std::string failure = text ? TryToWrite(*text) : "";
    if (moment) WriteAlive(*moment);
    if (forget) Remove();
    lock.lock();
    working_ = false;
    if (text) failure_ = failure;
    if (forget) forget_ = false;
    done_.notify_all();
  }
  ended_ = true;
  done_.notify_all();
}

std::string RecordFiles::Writer::TryToWrite(const std::string& text) const {
  try {
    Write(text);
    return {};
  } catch (const RuntimeError& error) {
    return error.what();
  }
}

/// A power cut at any moment leaves the new record or the one before it, under one of its names.
void RecordFiles::Writer::Write(const std::string& text) const {
  const std::filesystem::path temporary = WithSuffix(file_, ".new");
  WriteDurably(temporary, text);
  std::error_code none;
  for (int age = kKept - 1; age > 0; --age) {
    std::filesystem::rename(FileOf(age - 1), FileOf(age), none);
  }
  RenameDurably(temporary, file_);
}

/// In place and in one piece, without waiting for the disk.
void RecordFiles::Writer::WriteAlive(const Moment& moment) const {
  const int handle = ::open(alive_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
  if (handle < 0) return;
  const std::string text =
      fmt::format("{:40} {:20.3f} {:20.3f}\n", moment.boot, moment.uptime, moment.utc);
  // What cannot be written now is written a second later.
  [[maybe_unused]] const ssize_t written = ::pwrite(handle, text.data(), text.size(), 0);
  ::close(handle);
}

void RecordFiles::Writer::Remove() const {
  std::error_code none;
  for (int age = 0; age < kKept; ++age) std::filesystem::remove(FileOf(age), none);
  std::filesystem::remove(alive_, none);
}

std::vector<std::string> RecordFiles::Writer::Kept() const {
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

std::optional<Moment> RecordFiles::Writer::LastAlive() const {
  const auto text = Disk().ReadFile(alive_.string());
  if (!text) return std::nullopt;
  std::istringstream words(text.Value());
  Moment moment;
  if (words >> moment.boot >> moment.uptime >> moment.utc) return moment;
  return std::nullopt;
}

RecordFiles::RecordFiles(const std::filesystem::path& store)
    : writer_(std::make_shared<Writer>(store)) {
  std::thread([writer = writer_] { writer->Work(); }).detach();
}

RecordFiles::~RecordFiles() {
  writer_->End();
}

void RecordFiles::Keep(const std::string& text) {
  writer_->Keep(text);
}

void RecordFiles::KeepAlive(const Moment& moment) {
  writer_->KeepAlive(moment);
}

std::string RecordFiles::Failure() const {
  return writer_->Failure();
}

std::vector<std::string> RecordFiles::Kept() const {
  return writer_->Kept();
}

std::optional<Moment> RecordFiles::LastAlive() const {
  return writer_->LastAlive();
}

void RecordFiles::Forget() {
  writer_->Forget();
}

}  // namespace corvanel
