#include "display/window/frm_display.h"

namespace corvanel {

FrmDisplay::FrmDisplay(const Session& session, DisplayCommands& commands, LetterOfKey letterOfKey)
    : DisplayWindow(session, DisplayKind::Room, commands, letterOfKey) {
  setObjectName("frmDisplay");
}

}  // namespace corvanel
