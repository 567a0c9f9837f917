#include "system/durable_file.h"

#include <algorithm>

#include "system/windows/handle.h"

namespace corvanel {
namespace {

/// Writes all of it; what went wrong, if anything did.
std::error_code WriteAll(HANDLE file, std::string_view text) {
  constexpr size_t kAtOnce = 1U << 30U;
  while (!text.empty()) {
    DWORD written = 0;
    const auto wanted = static_cast<DWORD>(std::min(text.size(), kAtOnce));
    if (WriteFile(file, text.data(), wanted, &written, nullptr) == 0) return LastError();
    text.remove_prefix(written);
  }
  return {};
}

}  // namespace

/// What lies in the user's own folders is his alone here already.
void KeepFilesPrivate() {}

void WriteDurably(const std::filesystem::path& file, std::string_view text) {
  const std::wstring path = SystemPath(file);
  // Made afresh: what somebody else has put in its place, a link among them, is not written to.
  DeleteFileW(path.c_str());
  std::error_code failure;
  {
    const Handle handle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle) throw WriteError(file, LastError());
    failure = WriteAll(handle.Get(), text);
    if (!failure && FlushFileBuffers(handle.Get()) == 0) failure = LastError();
  }
  if (!failure) return;
  DeleteFileW(path.c_str());
  throw WriteError(file, failure);
}

void WriteInPlace(const std::filesystem::path& file, std::string_view text) {
  const Handle handle(CreateFileW(SystemPath(file).c_str(), GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  if (handle) WriteAll(handle.Get(), text);
}

void RenameDurably(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(),
                  MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) {
    return;
  }
  const std::error_code failure = LastError();
  DeleteFileW(SystemPath(from).c_str());
  throw WriteError(to, failure);
}

}  // namespace corvanel
