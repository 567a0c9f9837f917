#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "scoring/activity_log.h"
#include "system/disk_writer.h"

namespace corvanel {

/// The activity log's files, in the first folder of several that can be written.
class LogFile : public LogStorage {
 public:
  LogFile(std::vector<std::filesystem::path> folders, DiskWriter& writer)
      : folders_(std::move(folders)), writer_(writer) {}
  void OpenLog(const std::string& name) override;
  void WriteLine(const std::string& line) override;

 private:
  const std::vector<std::filesystem::path> folders_;
  DiskWriter& writer_;
  std::shared_ptr<std::ofstream> file_;  // used by the writer alone
};

}  // namespace corvanel
