#pragma once

#include <QDialog>
#include <memory>

#include "settings/general_options.h"

namespace Ui {
class FrmOptions;
}

namespace corvanel {

/// The dialog of the general options, from which the other option dialogs open.
class FrmOptions : public QDialog {
  Q_OBJECT

 public:
  FrmOptions(GeneralOptions& logic, QWidget* parent);
  ~FrmOptions() override;

 signals:
  void DisplayOptionsWanted();
  void SoundOptionsWanted();
  void UnitOptionsWanted();

 private:
  GeneralBoxes Boxes() const;

  GeneralOptions& logic_;
  std::unique_ptr<Ui::FrmOptions> ui_;
};

}  // namespace corvanel
