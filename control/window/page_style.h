#pragma once

#include <QWidget>

namespace corvanel {

/// Gives the control window's page its looks, on the desktop's own palette.
void DressPage(QWidget& page);

}  // namespace corvanel
