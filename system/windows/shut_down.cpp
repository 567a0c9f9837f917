#include "system/shut_down.h"

#include "system/windows/system_call.h"
// After it.
#include <shellapi.h>

namespace corvanel {

void ShutDownComputer() {
  ShellExecuteW(nullptr, L"open", L"shutdown.exe", L"-f -s -t 01", nullptr, SW_SHOWMINIMIZED);
}

}  // namespace corvanel
