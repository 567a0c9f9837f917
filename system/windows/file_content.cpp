#include "system/file_content.h"

#include "system/path_text.h"
#include "system/windows/handle.h"

namespace corvanel {
namespace {

constexpr int64_t kLargest = 256 << 20;  // bytes; a database of this kind cannot be so large
constexpr int64_t kTicksPerSecond = 10'000'000;
constexpr int64_t kFrom1601To1970 = 11'644'473'600;  // seconds

int64_t Number(DWORD high, DWORD low) {
  return static_cast<int64_t>(uint64_t{high} << 32U | low);
}

int64_t SecondsOf(const FILETIME& time) {
  return Number(time.dwHighDateTime, time.dwLowDateTime) / kTicksPerSecond - kFrom1601To1970;
}

bool Read(HANDLE file, std::string& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    DWORD read = 0;
    const auto wanted = static_cast<DWORD>(bytes.size() - done);
    if (ReadFile(file, bytes.data() + done, wanted, &read, nullptr) == 0 || read == 0) return false;
    done += read;
  }
  return true;
}

bool SameMoment(const BY_HANDLE_FILE_INFORMATION& a, const BY_HANDLE_FILE_INFORMATION& b) {
  return a.nFileSizeHigh == b.nFileSizeHigh && a.nFileSizeLow == b.nFileSizeLow &&
         CompareFileTime(&a.ftLastWriteTime, &b.ftLastWriteTime) == 0;
}

}  // namespace

Result<FileContent> Fetch(const std::string& path) {
  const Handle file(CreateFileW(SystemPath(PathOf(path)).c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) {
    // Who writes it may keep it for himself meanwhile.
    const bool held = GetLastError() == ERROR_SHARING_VIOLATION;
    return held ? Error{70, "The file is being written", true} : Error{53, "File not found"};
  }
  BY_HANDLE_FILE_INFORMATION before{};
  BY_HANDLE_FILE_INFORMATION after{};
  if (GetFileInformationByHandle(file.Get(), &before) == 0) return Error{53, "File not found"};
  const int64_t size = Number(before.nFileSizeHigh, before.nFileSizeLow);
  if (size > kLargest) return Error{7, "The file is too large"};
  FileContent content{std::string(static_cast<size_t>(size), '\0'),
                      SecondsOf(before.ftLastWriteTime)};
  if (!Read(file.Get(), content.bytes) || GetFileInformationByHandle(file.Get(), &after) == 0) {
    return Error{57, "Device I/O error", true};
  }
  if (!SameMoment(before, after)) return Error{70, "The file is being written", true};
  return content;
}

std::optional<int64_t> ModifiedAt(const std::filesystem::path& path) {
  WIN32_FILE_ATTRIBUTE_DATA state{};
  if (GetFileAttributesExW(SystemPath(path).c_str(), GetFileExInfoStandard, &state) == 0 ||
      (state.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return std::nullopt;
  }
  return SecondsOf(state.ftLastWriteTime);
}

}  // namespace corvanel
