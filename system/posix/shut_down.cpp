#include "system/shut_down.h"

#include <QProcess>

namespace corvanel {

void ShutDownComputer() {
  QProcess::startDetached("systemctl", {"poweroff"});
}

}  // namespace corvanel
