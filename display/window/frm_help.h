#pragma once

#include <QDialog>

#include "display/shortcuts.h"

class QLabel;
class QTreeWidget;

namespace corvanel {

/// The lists of keyboard shortcuts, from the same table as the key handler.
class FrmHelp : public QDialog {
  Q_OBJECT

 public:
  explicit FrmHelp(QWidget* parent);

 signals:
  void SoundsWanted();

 private:
  QTreeWidget* AddList(const char* name, bool ofTwin);
  static void AddLine(QTreeWidget& list, std::string_view key, std::string_view action);
};

}  // namespace corvanel
