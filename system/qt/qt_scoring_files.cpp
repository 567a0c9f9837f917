#include "system/qt/qt_scoring_files.h"

#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace corvanel {
namespace {

constexpr int kManyStuck = 20;
constexpr std::chrono::milliseconds kPatience(200);
constexpr std::chrono::milliseconds kFolderPatience(500);

Error NoAnswer() {
  return {57, "The file cannot be reached", true};
}

}  // namespace

/// Outlives its receiver, since a thread that is stuck on a dead share cannot be ended.
class QtScoringFiles::Way {
 public:
  explicit Way(QObject& receiver) : receiver_(&receiver) {}
  void Close() {
    const std::lock_guard lock(mutex_);
    receiver_ = nullptr;
  }
  /// Has `work` done on the receiver's thread, if there still is one.
  template <class Work>
  void Post(Work work) {
    const std::lock_guard lock(mutex_);
    if (receiver_ != nullptr) {
      QMetaObject::invokeMethod(receiver_, std::move(work), Qt::QueuedConnection);
    }
  }

 private:
  std::mutex mutex_;
  QObject* receiver_;
};

namespace {

/// Lets the windows live, and nobody press anything, until `done` or for a while.
void WaitFor(const std::function<bool()>& done, std::chrono::milliseconds patience) {
  QEventLoop loop;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &loop, [&] {
    if (done()) loop.quit();
  });
  look.start(5);
  QTimer::singleShot(patience, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace

QtScoringFiles::QtScoringFiles(std::chrono::milliseconds patience)
    : way_(std::make_shared<Way>(*this)), patience_(patience) {}

QtScoringFiles::~QtScoringFiles() {
  way_->Close();
}

/// Whether the read under way may still be answered.
bool QtScoringFiles::Waiting() const {
  const auto patience = patience_ * (stuck_ == 0 ? 1 : stuck_ < kManyStuck ? 2 : 10);
  return std::chrono::steady_clock::now() - begun_ < patience;
}

void QtScoringFiles::GiveUp() {
  ++number_;
  if (!reading_.empty()) ++stuck_;
  reading_.clear();
}

void QtScoringFiles::Read(const std::string& path, Answer answer) {
  if (reading_ == path && Waiting()) {
    answer(NoAnswer());
    return;
  }
  GiveUp();
  const ScoringContent last = path == path_ ? last_ : ScoringContent{};
  std::thread([this, number = number_, path, last, way = way_] {
    Result<ScoringContent> content = Error{7, "Out of memory"};
    try {
      content = ReadScoringFile(path, last);
    } catch (const std::exception&) {
      // Whatever it was, the reader gets his answer.
    }
    way->Post([=, this] { Arrived(number, path, content); });
  }).detach();
  reading_ = path;
  begun_ = std::chrono::steady_clock::now();
  answer_ = std::move(answer);
}

void QtScoringFiles::Arrived(int number, const std::string& path,
                             const Result<ScoringContent>& content) {
  // What was asked for meanwhile has the later word.
  if (number != number_) {
    --stuck_;
    return;
  }
  reading_.clear();
  if (content) {
    path_ = path;
    last_ = content.Value();
    std::exchange(answer_, {})(last_.picture);
  } else {
    std::exchange(answer_, {})(content.Failure());
  }
}

Result<PicturePointer> QtScoringFiles::ReadNow(const std::string& path) {
  std::optional<Result<PicturePointer>> result;
  const Answer keep = [&result](const Result<PicturePointer>& read) { result = read; };
  if (reading_ == path && Waiting()) {
    answer_ = keep;
  } else {
    Read(path, keep);
  }
  WaitFor([&] { return result.has_value(); }, kPatience);
  if (result) return *result;
  // What still comes is for the next one who asks.
  answer_ = [](const Result<PicturePointer>&) {};
  return NoAnswer();
}

/// What `work` finds on a thread of its own; `otherwise` when that takes too long.
template <class Found, class Work>
Found QtScoringFiles::InTime(Work work, Found otherwise) {
  const auto found = std::make_shared<std::optional<Found>>();
  std::thread([found, work, otherwise, way = way_] {
    Found result = otherwise;
    try {
      result = work();
    } catch (const std::exception&) {
      // Then it is as if there were nothing.
    }
    way->Post([found, result] { *found = result; });
  }).detach();
  WaitFor([&] { return found->has_value(); }, kFolderPatience);
  return found->value_or(otherwise);
}

std::vector<ScoringFile> QtScoringFiles::Files(const std::string& folder) {
  return InTime([folder] { return ListScoringFiles(folder); }, std::vector<ScoringFile>());
}

std::string QtScoringFiles::RealSpelling(const std::string& folder) {
  return InTime([folder] { return FindFolder(folder); }, folder);
}

}  // namespace corvanel
