#pragma once

#include <QDialog>

namespace corvanel {

/// The list of keyboard shortcuts, from the same table as the key handler.
class FrmHelp : public QDialog {
  Q_OBJECT

 public:
  explicit FrmHelp(QWidget* parent);
};

}  // namespace corvanel
