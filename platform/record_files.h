#pragma once

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "recovery/session_recorder.h"

namespace corvanel {

/// Records of the session in files beside the settings file: the latest two before the newest are
/// kept too. A thread of their own writes them, since a disk can take its time and the clock
/// cannot.
class RecordFiles : public RecordKeeper {
 public:
  /// For the settings file `store`: "settings.json.session" and so on.
  explicit RecordFiles(const std::filesystem::path& store);
  /// Waits until what was handed over is written.
  ~RecordFiles() override;
  RecordFiles(const RecordFiles&) = delete;
  RecordFiles& operator=(const RecordFiles&) = delete;

  void Keep(const std::string& text) override;
  void KeepAlive(const Moment& moment) override;
  std::string Failure() const override;
  std::vector<std::string> Kept() const override;
  std::optional<Moment> LastAlive() const override;
  void Forget() override;

 private:
  static constexpr int kKept = 3;

  std::filesystem::path FileOf(int age) const;
  void Work();
  void Write(const std::string& text);
  void WriteAlive(const Moment& moment);
  void Remove();

  std::filesystem::path file_;
  std::filesystem::path alive_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable done_;
  // Under the mutex:
  std::optional<std::string> text_;  // to be written next
  std::optional<Moment> moment_;
  bool forget_ = false;
  bool ends_ = false;
  std::string failure_;

  std::thread thread_;
};

}  // namespace corvanel
