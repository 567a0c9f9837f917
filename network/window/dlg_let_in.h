#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "network/remote_desk.h"

namespace Ui {
class DlgLetIn;
}

namespace corvanel {

/// Shows the code with which a device can come in to lead the session, as long as it stands open.
class DlgLetIn : public QDialog {
  Q_OBJECT

 public:
  /// `page`: the address of the display page, with a slash at its end.
  DlgLetIn(RemoteDesk& remotes, std::string page, QWidget* parent);
  ~DlgLetIn() override;

 private:
  void Look();

  RemoteDesk& remotes_;
  const std::string page_;
  std::unique_ptr<Ui::DlgLetIn> ui_;
  std::string shown_;  // the code
  QTimer timLook_;
};

}  // namespace corvanel
