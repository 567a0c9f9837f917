#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

namespace Ui {
class SectionsDialog;
}

namespace corvanel {

/// The dialog in which the director chooses the sections to follow. All are ticked at first.
class SectionsDialog : public QDialog {
  Q_OBJECT

 public:
  SectionsDialog(const std::string& sessionName, const std::vector<std::string>& lines,
                 QWidget* parent);
  ~SectionsDialog() override;

  /// Which lines are ticked.
  std::vector<bool> Ticked() const;

 private:
  std::unique_ptr<Ui::SectionsDialog> ui_;
};

}  // namespace corvanel
