#include "system/disk.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "system/folders.h"

namespace corvanel {
namespace {

constexpr std::uintmax_t kLargestFile = 64U << 20U;

Error LastError(const std::string& path) {
  return {errno == ENOENT ? 53 : 75, path + ": " + std::strerror(errno)};
}

}  // namespace

Result<std::string> Disk::ReadFile(const std::string& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    return Error{75, path + ": not a file"};
  }
  const auto size = std::filesystem::file_size(path, error);
  if (size > kLargestFile && !error) return Error{7, path + ": the file is far too large"};
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  if (!file.is_open()) return LastError(path);
  try {
    // Throws where the disk cannot read its own sectors.
    return std::string{std::istreambuf_iterator<char>(file), {}};
  } catch (const std::ios_base::failure& failure) {
    return Error{75, path + ": " + failure.what()};
  }
}

Status Disk::WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream file(std::filesystem::path(path), std::ios::binary | std::ios::trunc);
  file << bytes;
  file.close();
  if (!file) return LastError(path);
  return {};
}

Status Disk::Rename(const std::string& from, const std::string& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  if (error) return Error{75, from + ": " + error.message()};
  return {};
}

Status Disk::Remove(const std::string& path) {
  std::error_code error;
  std::filesystem::remove(path, error);
  if (error) return Error{75, path + ": " + error.message()};
  return {};
}

std::string WriteOutput(FileAccess& files, const std::string& name, const std::string& bytes) {
  for (const std::filesystem::path& folder : OutputFolders()) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    std::string path = (folder / name).string();
    if (files.WriteFile(path, bytes)) return path;
  }
  return {};
}

}  // namespace corvanel
