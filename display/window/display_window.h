#pragma once

#include <QTimer>
#include <QWidget>

#include "display/display_commands.h"
#include "display/pointer_watch.h"
#include "session/session_listener.h"

class QLabel;

namespace corvanel {

class CommandBar;
class DisplayPicture;

/// What both displays have in common: they show the clock's face as large as the window allows,
/// have a command bar and keys, and are never closed, only shown and hidden.
class DisplayWindow : public QWidget, public DisplayForm, public SessionListener {
  Q_OBJECT

 public:
  /// Says which letter stands on a key of a usual keyboard, by the key's scan code; 0 for none.
  using LetterOfKey = char (*)(uint32_t scanCode);

  DisplayWindow(const Session& session, DisplayKind kind, DisplayCommands& commands,
                LetterOfKey letterOfKey);
  DisplayKind Kind() const override { return kind_; }

  void ShowFace(const ClockFace& face) override;
  void ShowTimeOfDay(const std::string& time) override;
  /// Shows how far the tables are, as much of it as the options want.
  void ShowTables(const ProgressFace& tables) override;
  /// Says for eight seconds how to find buttons and keys.
  void ShowHint();
  void ShowFullScreenPair(bool fullScreen);
  /// Shows the lines for the director where he alone sees them.
  void ShowNotices(const std::vector<Notice>& notices) override;
  /// Takes over fonts, colours and shown elements from the session and places everything anew.
  void Rearrange();
  /// Gives the window its normal place, and has it stand there or full screen on the screen of that
  /// place.
  void PlaceAt(const QRect& place, bool fullScreen);
  /// Whether it is to be full screen. Ours, and never asked of the window system: that forgets it
  /// when a window is hidden.
  bool FullScreen() const { return fullScreen_; }
  /// A window that is shown comes as it was wanted last.
  void setVisible(bool visible) override;

  /// Where the countdown stands on the desktop, in pixels.
  QRect CountdownOnScreen() const;

  /// Keeps `pixels` free at the right edge, for a dialog that stands there; 0 takes them back.
  void MakeRoom(int pixels);

  WindowPlace Place() const override;
  void SetFullScreen(bool fullScreen) override;
  bool Visible() const override { return isVisible(); }
  void SetVisible(bool visible) override { setVisible(visible); }

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 signals:
  /// The window became full screen, maximised or normal, by whatever hand.
  void StateChanged();
  /// It stands where the window system put it, on the screen that it was meant for or not.
  void Landed(bool there);
  /// Of a line for the director.
  void NoticeActionWanted(const Notice& notice);
  void NoticeDismissed(const Notice& notice);

 protected:
  /// Height in pixels that a window of this kind keeps for itself at the lower edge.
  virtual int FootHeight() const { return 0; }
  /// Width in pixels that it keeps for itself at the right edge.
  virtual int SideWidth() const { return 0; }
  /// Where the command bar may stand: above the foot, unless that keeps a row for it.
  virtual QRect BarRoom() const { return {0, 0, width(), height() - FootHeight()}; }
  /// Places and colours what stands at those edges; part of every new arrangement.
  virtual void PlaceEdges() {}
  Colour Background() const;
  const Options& TheOptions() const { return session_.options; }
  /// Who is at the table whose cell is at a point of the window; empty where there is none.
  QString TableTipAt(const QPoint& point) const;
  DisplayCommands& Commands() { return commands_; }

 private:
  int VirtualKey(const QKeyEvent& event) const;
  void Settle();
  bool IsDirectors() const;
  void ShowChip();
  void PlaceCommandBar();
  void ShowCommandBar();
  void HideCommandBar();

  const Session& session_;
  DisplayKind kind_;
  DisplayCommands& commands_;
  LetterOfKey letterOfKey_;
  DisplayPicture* picture_;
  QSize barIn_;   // of the window when the command bar was placed
  int room_ = 0;  // pixels kept free at the right edge
  CommandBar* fraCommand_;
  QLabel* lblChip_;
  QTimer timHint_;
  std::string done_;  // a moment ago, by the director
  QTimer timCommand_;
  QTimer timResize_;
  PointerWatch pointer_;
  bool fullScreen_ = false;
  QRect normalPlace_;  // where it stands while it is not full screen
  QTimer timSettle_;   // the window system is still moving the window about
};

}  // namespace corvanel
