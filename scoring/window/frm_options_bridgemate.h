#pragma once

#include <QDialog>
#include <array>
#include <memory>

#include "scoring/unit_options.h"

class QLineEdit;

namespace Ui {
class FrmOptionsBridgemate;
}

namespace corvanel {

/// The dialog of the table-top unit options.
class FrmOptionsBridgemate : public QDialog {
  Q_OBJECT

 public:
  FrmOptionsBridgemate(UnitOptions& logic, QWidget* parent);
  ~FrmOptionsBridgemate() override;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Fill();
  UnitValues Values() const;
  void ShowCaptions();
  void ShowSound();
  void cmdOK_Click();
  int BoxOf(const QObject* widget) const;

  UnitOptions& logic_;
  std::unique_ptr<Ui::FrmOptionsBridgemate> ui_;
  std::array<QLineEdit*, kUnitBoxes> boxes_{};
};

}  // namespace corvanel
