#include "system/shut_down.h"

#include <QProcess>

namespace corvanel {

void ShutDownComputer() {
#ifdef _WIN32
  QProcess::startDetached("shutdown.exe", {"-f", "-s", "-t", "01"});
#else
  QProcess::startDetached("systemctl", {"poweroff"});
#endif
}

}  // namespace corvanel
