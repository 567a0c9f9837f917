#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "scoring/unit_options.h"
#include "widgets/option_rows.h"

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

  /// The sound that is tested has begun, or is over.
  void Tested(const SoundTest& test);
  /// Shows anew what the sound is and how the test fares.
  void ShowSounds();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  UnitChoice Unit() const;
  void ShowCaptions();
  void cmdOK_Click();
  bool Leave(QLineEdit* box) const;

  UnitOptions& logic_;
  std::unique_ptr<Ui::FrmOptionsBridgemate> ui_;
  std::unique_ptr<OptionRows> rows_;
  std::vector<QLineEdit*> numbers_;  // the number boxes, in their order
};

}  // namespace corvanel
