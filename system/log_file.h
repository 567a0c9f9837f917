#pragma once

#include <filesystem>
#include <fstream>
#include <vector>

#include "scoring/activity_log.h"

namespace corvanel {

/// The activity log's files, in the first folder of several that can be written.
class LogFile : public LogStorage {
 public:
  explicit LogFile(std::vector<std::filesystem::path> folders) : folders_(std::move(folders)) {}
  void OpenLog(const std::string& name) override;
  void WriteLine(const std::string& line) override;

 private:
  std::vector<std::filesystem::path> folders_;
  std::ofstream file_;
};

}  // namespace corvanel
