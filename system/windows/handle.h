#pragma once

#include "system/windows/system_call.h"

namespace corvanel {

/// A handle of the system; closed when it goes.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() {
    if (*this) CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE && handle_ != nullptr; }
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

}  // namespace corvanel
