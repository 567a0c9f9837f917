#include "system/desktop_session.h"

#include "system/windows/system_call.h"

namespace corvanel {

/// There is one.
void ChooseWindowSystem() {}

/// The right to come to the front is passed on at once; there is nothing to hand over.
std::string StartToken() {
  AllowSetForegroundWindow(ASFW_ANY);
  return {};
}

void UseStartToken(const std::string& /*token*/, uint64_t /*window*/) {}

}  // namespace corvanel
