#pragma once

#include <fmt/format.h>

#include <filesystem>
#include <random>

namespace corvanel {

/// A folder of its own for a test; gone with it.
class TemporaryFolder {
 public:
  TemporaryFolder()
      : path_(std::filesystem::temp_directory_path() /
              fmt::format("corvanel-test-{:08x}", std::random_device()())) {
    std::filesystem::create_directory(path_);
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace corvanel
