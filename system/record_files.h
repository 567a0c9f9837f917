#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "recovery/session_recorder.h"
#include "system/disk_writer.h"

namespace corvanel {

/// Records of the session in files beside the settings file: the latest two before the newest are
/// kept too.
class RecordFiles : public RecordKeeper {
 public:
  /// For the settings file `store`: "settings.json.session" and so on.
  RecordFiles(const std::filesystem::path& store, DiskWriter& writer);

  void Keep(const std::string& text) override;
  void KeepAlive(const Moment& moment) override;
  std::string Failure() const override;
  std::vector<std::string> Kept() const override;
  std::optional<Moment> LastAlive() const override;
  void Forget() override;

 private:
  const std::filesystem::path file_;
  const std::filesystem::path alive_;
  DiskWriter& writer_;
};

}  // namespace corvanel
