#include "display/window/frm_display.h"

#include "display/window/text_row.h"

namespace corvanel {

FrmDisplay::FrmDisplay(const Session& session, DisplayCommands& commands, LetterOfKey letterOfKey)
    : DisplayWindow(session, commands, letterOfKey) {
  setObjectName("frmDisplay");
  SetMoveLine(new TextRow("lblMess", this));
}

}  // namespace corvanel
