#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "recovery/session_recorder.h"

namespace corvanel {

/// Records of the session in files beside the settings file: the latest two before the newest are
/// kept too. A thread of their own writes them, since a disk can take its time and the clock
/// cannot.
class RecordFiles : public RecordKeeper {
 public:
  /// For the settings file `store`: "settings.json.session" and so on.
  explicit RecordFiles(const std::filesystem::path& store);
  /// Waits until what was handed over is written; not for ever, where the disk does not answer.
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
  class Writer;

  // Shared with the thread, which outlives this when the disk does not answer.
  std::shared_ptr<Writer> writer_;
};

}  // namespace corvanel
