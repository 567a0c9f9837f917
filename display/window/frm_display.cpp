#include "display/window/frm_display.h"

#include "display/window/text_row.h"

namespace corvanel {

FrmDisplay::FrmDisplay(const Session& session, DisplayCommands& commands)
    : DisplayWindow(session, commands) {
  setObjectName("frmDisplay");
  SetMoveLine(new TextRow("lblMess", this));
}

}  // namespace corvanel
