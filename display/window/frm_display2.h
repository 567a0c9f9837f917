#pragma once

#include <array>

#include "display/window/display_window.h"

class QFrame;
class QPushButton;

namespace corvanel {

class NoticeList;

/// The twin on the director's screen: the same clock, and at its foot the buttons for the room
/// display.
class FrmDisplay2 : public DisplayWindow {
  Q_OBJECT

 public:
  FrmDisplay2(const Session& session, DisplayCommands& commands, LetterOfKey letterOfKey);
  /// Of each pair the button that makes sense for the room display's state is visible.
  void ShowRoomDisplay(bool visible, bool fullScreen);
  /// They stand at the foot all the time.
  void ShowNotices(const std::vector<Notice>& notices) override;

 protected:
  /// A table's cell tells the director who is there.
  bool event(QEvent* event) override;
  int FootHeight() const override;
  QRect BarRoom() const override;
  void PlaceEdges() override;

 private:
  using Pair = std::array<QPushButton*, 2>;
  Pair AddPair(const char* name, const QString& first, const QString& second);
  int NoticesHeight() const;
  int MonitorWidth() const;
  static void ShowOne(const Pair& pair, size_t index);

  QFrame* fraMonitor_;
  NoticeList* fraNotices_;
  Pair cmdHide_;
  Pair cmdMonitorFullScreen_;
};

}  // namespace corvanel
