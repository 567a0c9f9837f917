#pragma once

#include <QTimer>
#include <QWidget>

#include "clock/clock_view.h"
#include "display/display_commands.h"
#include "display/layout.h"
#include "display/pointer_watch.h"

namespace corvanel {

class CommandBar;
class CountdownPanel;
class TextRow;

/// The room display: shows the clock's face as large as the window allows. Never closed, only
/// shown and hidden.
class FrmDisplay : public QWidget, public DisplayForm {
  Q_OBJECT

 public:
  FrmDisplay(const Session& session, DisplayCommands& commands);

  void ShowFace(const ClockFace& face);
  void ShowTimeOfDay(const std::string& time);
  void ShowFullScreenPair(bool fullScreen);
  /// Takes over fonts, colours and shown elements from the session and places everything anew.
  void Rearrange();
  /// Takes position, size and state from the options.
  void Restore();

  WindowPlace Place() const override;
  void SetFullScreen(bool fullScreen) override;
  void Hide() override { hide(); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  LayoutInput Input() const;
  void PlaceElements();
  void ShowTexts();
  void ShowCommandBar();
  void HideCommandBar();
  int32_t Background() const;
  /// Where the window stands when it is not full screen, as the options remember it.
  QRect NormalPlace() const;

  const Session& session_;
  DisplayCommands& commands_;
  ClockFace face_;
  LayoutInput placed_;  // what the present layout was made for
  TextRow* lblHeader_;
  TextRow* lblNow_;
  CountdownPanel* lblMin_;
  TextRow* lblInfo_;
  TextRow* lblMess_;
  TextRow* lblEnd_;
  TextRow* lblBridgemate_;
  CommandBar* fraCommand_;
  QTimer timCommand_;
  QTimer timResize_;
  PointerWatch pointer_;
};

}  // namespace corvanel
