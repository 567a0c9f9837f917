#include "system/device_file.h"

#include "system/disk.h"
#include "system/durable_file.h"
#include "system/path_text.h"

namespace corvanel {
namespace {

constexpr const char* kDevices = "devices";

}  // namespace

DeviceFile::DeviceFile(const std::filesystem::path& store, DiskWriter& writer)
    : file_(WithSuffix(store, ".devices")), lock_(file_), writer_(writer) {}

void DeviceFile::Keep(const std::string& text) {
  writer_.Do(kDevices, [file = file_, text] {
    const auto temporary = WithSuffix(file, ".new");
    WriteDurably(temporary, text);
    RenameDurably(temporary, file);
  });
}

std::string DeviceFile::Kept() const {
  std::error_code none;
  if (!std::filesystem::exists(file_, none)) return "";
  const auto text = Disk().ReadFile(PathText(file_));
  // There is one, though it cannot be read.
  return text ? text.Value() : "?";
}

std::string DeviceFile::Failure() const {
  const auto failure = writer_.Failure(kDevices);
  return failure ? failure->what() : "";
}

void DeviceFile::PutAside() {
  std::error_code none;
  std::filesystem::rename(file_, WithSuffix(file_, ".damaged"), none);
}

}  // namespace corvanel
