#pragma once

#include <QFrame>
#include <optional>
#include <utility>
#include <vector>

#include "display/shortcuts.h"
#include "display/window/line_icons.h"
#include "session/clock_face.h"
#include "session/notices.h"

class QHBoxLayout;
class QToolButton;

namespace corvanel {

class MinuteAdjuster;
class NoticeList;

/// The bar of buttons on a display: shown while the director moves the mouse. Its buttons never
/// take the keyboard focus, so that the window's keys work all the time.
///
/// The two of a pair are of one width and what comes and goes stands above the row, so that no
/// button ever moves to where another one was a moment ago.
class CommandBar : public QFrame {
  Q_OBJECT

 public:
  explicit CommandBar(QWidget* parent);
  /// Of each pair of buttons exactly one is visible.
  void ShowPaused(bool paused);
  void ShowFullScreen(bool fullScreen);
  /// What means nothing now looks so.
  void ShowPossible(const PossibleCommands& can);
  /// Names what can be taken back; an empty text when nothing can.
  void ShowUndo(const QString& undo);
  /// Shows the lines for the director.
  void ShowNotices(const std::vector<Notice>& notices);
  /// Sets itself along the lower edge of a room in a window of this height, with as much text as
  /// fits.
  void FitInto(const QRect& room, int windowHeight);
  /// What it wants in a window of this height, pixels: the size of its text, and the height of its
  /// row with what is free around it.
  static int TextIn(int windowHeight);
  static int RowIn(int windowHeight);

 signals:
  void Wanted(DisplayCommand command);
  void MinutesMoved(int value);
  /// Of a line for the director.
  void NoticeActionWanted(const Notice& notice);
  void NoticeDismissed(const Notice& notice);

 private:
  QToolButton* Add(const char* name, const QString& text, const QString& hint,
                   std::optional<LineIcon> icon, DisplayCommand command);
  void ScaleTo(int windowHeight);
  void Fit() { FitInto(room_, windowHeight_); }
  QSize Margins() const;
  int WidthOf(const char* text) const;
  void ElideUndo();

  NoticeList* notices_;
  QToolButton* undo_;
  QString whole_;  // what it says, where it has room
  QHBoxLayout* row_;
  QToolButton* pause_;
  QToolButton* resume_;
  QToolButton* next_;
  QToolButton* restart_;
  QToolButton* full_;
  QToolButton* normal_;
  MinuteAdjuster* minutes_;
  std::vector<std::pair<QToolButton*, std::optional<LineIcon>>> buttons_;
  int text_ = 0;  // height of the text, pixels
  QRect room_;    // that the bar was last fitted into
  int windowHeight_ = 0;
};

}  // namespace corvanel
