#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

namespace Ui {
class FrmSettings;
}

namespace corvanel {

/// The dialog in which the director chooses the sections to follow. All are ticked at first.
class FrmSettings : public QDialog {
  Q_OBJECT

 public:
  FrmSettings(const std::string& sessionName, const std::vector<std::string>& lines,
              QWidget* parent);
  ~FrmSettings() override;

  /// Which lines are ticked.
  std::vector<bool> Ticked() const;

 private:
  std::unique_ptr<Ui::FrmSettings> ui_;
};

}  // namespace corvanel
