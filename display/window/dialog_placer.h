#pragma once

#include <QObject>
#include <functional>
#include <vector>

class QDialog;

namespace corvanel {

class DisplayWindow;

/// Lets every dialog and question of the program open over the window that asked or, where that is
/// none of the director's, over the one he works with; on its screen, and beside the countdowns of
/// the displays that are shown there. A display that leaves no free place, such as a full-screen
/// one, makes room for a dialog while that is open. To be installed as an event filter of the
/// application.
class DialogPlacer : public QObject {
  Q_OBJECT

 public:
  /// `directors` tells the director's window among the displays, also while it makes way for a
  /// question.
  DialogPlacer(std::vector<DisplayWindow*> displays, std::function<const QWidget*()> directors);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void PlaceBeside(QDialog& dialog);
  void GiveBack(const QObject* dialog);

  std::vector<DisplayWindow*> displays_;
  std::function<const QWidget*()> directors_;
  /// A display that is narrower by `width` pixels while a dialog is open.
  struct Room {
    const QObject* dialog;
    DisplayWindow* display;
    int width;
  };
  std::vector<Room> rooms_;  // the last one of a display holds; a dialog may open another
};

}  // namespace corvanel
