#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "settings/settings_table.h"
#include "widgets/option_rows.h"

namespace Ui {
class FrmOptions;
}

namespace corvanel {

/// The dialog of the general options, from which the other option dialogs open.
class FrmOptions : public QDialog {
  Q_OBJECT

 public:
  struct Parts {
    const Options& options;
    SettingsTable& table;
    ErrorTrap& errors;
    std::function<void()> applyOnTop;  // brings the windows to or from the top, as the options are
  };
  FrmOptions(const Parts& parts, QWidget* parent);
  ~FrmOptions() override;

 signals:
  void DisplayOptionsWanted();
  void SoundOptionsWanted();
  void UnitOptionsWanted();

 private:
  void cmdOK_Click();

  Parts parts_;
  std::unique_ptr<Ui::FrmOptions> ui_;
  std::unique_ptr<OptionRows> rows_;
};

}  // namespace corvanel
