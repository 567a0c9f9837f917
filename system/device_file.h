#pragma once

#include <filesystem>
#include <string>

#include "network/remote_desk.h"
#include "system/disk_writer.h"
#include "system/store_lock.h"

namespace corvanel {

/// The devices that may lead the session, with their keys: in a file of the user's alone, beside
/// the settings file.
class DeviceFile : public DeviceKeeper {
 public:
  /// For the settings file `store`: "settings.json.devices".
  DeviceFile(const std::filesystem::path& store, DiskWriter& writer);

  bool Take() override { return lock_.Take(); }
  void Keep(const std::string& text) override;
  std::string Kept() const override;
  std::string Failure() const override;
  /// Under its name with ".damaged".
  void PutAside() override;

 private:
  const std::filesystem::path file_;
  StoreLock lock_;
  DiskWriter& writer_;
};

}  // namespace corvanel
