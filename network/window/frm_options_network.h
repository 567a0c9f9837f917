#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "network/network_desk.h"
#include "settings/settings_table.h"
#include "widgets/option_rows.h"

namespace Ui {
class FrmOptionsNetwork;
}

namespace corvanel {

/// The dialog in which other screens are let in, and which tells where they find the session.
class FrmOptionsNetwork : public QDialog {
  Q_OBJECT

 public:
  struct Parts {
    const Options& options;
    SettingsTable& table;
    NetworkDesk& desk;
    std::vector<std::string> addresses;  // of this computer
    ErrorTrap& errors;
  };
  FrmOptionsNetwork(const Parts& parts, QWidget* parent);
  ~FrmOptionsNetwork() override;

 private:
  void ShowAddress();
  void ShowState();
  void ShowDevices();
  void cmdLetIn_Click();
  void cmdSendAway_Click();
  void Apply();
  void cmdOK_Click();

  Parts parts_;
  std::unique_ptr<Ui::FrmOptionsNetwork> ui_;
  std::unique_ptr<OptionRows> rows_;
  QTimer timState_;
};

}  // namespace corvanel
