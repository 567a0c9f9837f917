#pragma once

#include "display/window/display_window.h"

namespace corvanel {

class QrView;

/// The room display: what the players read.
class FrmDisplay : public DisplayWindow {
  Q_OBJECT

 public:
  FrmDisplay(const Session& session, DisplayCommands& commands, LetterOfKey letterOfKey);
  void ShowFace(const ClockFace& face) override;
  /// Shows where players find the session on their phones, large when they have the time for it;
  /// empty: nowhere.
  void ShowAddress(const QString& address);

 protected:
  int SideWidth() const override;
  void PlaceEdges() override;

 private:
  QString address_;
  QrView* qrAddress_;
  QLabel* lblAddress_;
  bool atLeisure_ = false;  // in a break, and after the end
};

}  // namespace corvanel
