#include "system/disk.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "system/folders.h"
#include "system/path_text.h"

namespace corvanel {
namespace {

constexpr std::uintmax_t kLargestFile = 64U << 20U;

Error LastError(const std::string& path) {
  return {errno == ENOENT ? 53 : 75, path + ": " + std::strerror(errno)};
}

}  // namespace

Result<std::string> Disk::ReadFile(const std::string& path) {
  std::error_code error;
  const auto status = std::filesystem::status(PathOf(path), error);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    return Error{75, path + ": not a file"};
  }
  const auto size = std::filesystem::file_size(PathOf(path), error);
  if (size > kLargestFile && !error) return Error{7, path + ": the file is far too large"};
  std::ifstream file(PathOf(path), std::ios::binary);
  if (!file.is_open()) return LastError(path);
  try {
    // Throws where the disk cannot read its own sectors.
    return std::string{std::istreambuf_iterator<char>(file), {}};
  } catch (const std::ios_base::failure& failure) {
    return Error{75, path + ": " + failure.what()};
  }
}

Status Disk::WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream file(PathOf(path), std::ios::binary | std::ios::trunc);
  file << bytes;
  file.close();
  if (!file) return LastError(path);
  return {};
}

Status Disk::Rename(const std::string& from, const std::string& to) {
  std::error_code error;
  std::filesystem::rename(PathOf(from), PathOf(to), error);
  if (error) return Error{75, from + ": " + error.message()};
  return {};
}

Status Disk::Remove(const std::string& path) {
  std::error_code error;
  std::filesystem::remove(PathOf(path), error);
  if (error) return Error{75, path + ": " + error.message()};
  return {};
}

std::string WriteOutput(FileAccess& files, const std::string& name, const std::string& bytes) {
  for (const std::filesystem::path& folder : OutputFolders()) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    std::string path = PathText(folder / PathOf(name));
    if (files.WriteFile(path, bytes)) return path;
  }
  return {};
}

}  // namespace corvanel
