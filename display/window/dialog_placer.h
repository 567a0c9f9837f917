#pragma once

#include <QObject>
#include <vector>

namespace corvanel {

class DisplayWindow;

/// Lets every dialog and question of the program open beside the countdowns of the displays that
/// are shown. To be installed as an event filter of the application.
class DialogPlacer : public QObject {
  Q_OBJECT

 public:
  explicit DialogPlacer(std::vector<const DisplayWindow*> displays);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::vector<const DisplayWindow*> displays_;
};

}  // namespace corvanel
