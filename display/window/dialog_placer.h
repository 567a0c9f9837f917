#pragma once

#include <QObject>
#include <vector>

class QDialog;

namespace corvanel {

class DisplayWindow;

/// Lets every dialog and question of the program open beside the countdowns of the displays that
/// are shown. A display that leaves no free place, such as a full-screen one, makes room for a
/// dialog while that is open. To be installed as an event filter of the application.
class DialogPlacer : public QObject {
  Q_OBJECT

 public:
  explicit DialogPlacer(std::vector<DisplayWindow*> displays);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void PlaceBeside(QDialog& dialog);
  void GiveBack(const QObject* dialog);

  std::vector<DisplayWindow*> displays_;
  /// A display that is narrower by `width` pixels while a dialog is open.
  struct Room {
    const QObject* dialog;
    DisplayWindow* display;
    int width;
  };
  std::vector<Room> rooms_;  // the last one of a display holds; a dialog may open another
};

}  // namespace corvanel
