#include "system/store_lock.h"

#include "system/windows/system_call.h"

namespace corvanel {

StoreLock::StoreLock(const std::filesystem::path& store) : file_(store) {
  file_ += ".lock";
}

StoreLock::~StoreLock() {
  if (handle_ != kNone) CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

/// Who has the file open shares it with nobody.
bool StoreLock::Take() {
  if (handle_ != kNone) return true;
  handle_ = reinterpret_cast<intptr_t>(CreateFileW(SystemPath(file_).c_str(),
                                                   GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                                   OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  return handle_ != kNone || GetLastError() != ERROR_SHARING_VIOLATION;
}

}  // namespace corvanel
