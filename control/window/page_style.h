#pragma once

#include <QPalette>
#include <QString>

namespace corvanel {

/// The style sheet of the control window's page, for a palette of the desktop.
QString PageStyle(const QPalette& palette);

}  // namespace corvanel
