#pragma once

#include "display/window/display_window.h"

namespace corvanel {

/// The room display: what the players read.
class FrmDisplay : public DisplayWindow {
  Q_OBJECT

 public:
  FrmDisplay(const Session& session, DisplayCommands& commands, LetterOfKey letterOfKey);
};

}  // namespace corvanel
