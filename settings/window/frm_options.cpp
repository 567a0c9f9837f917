#include "settings/window/frm_options.h"

#include "ui_frm_options.h"

namespace corvanel {

FrmOptions::FrmOptions(GeneralOptions& logic, QWidget* parent)
    : QDialog(parent), logic_(logic), ui_(std::make_unique<Ui::FrmOptions>()) {
  ui_->setupUi(this);
  const GeneralBoxes boxes = logic_.Boxes();
  ui_->chkAutoStart->setChecked(boxes.chkAutoStart != 0);
  ui_->chkAutoShutdown->setChecked(boxes.chkAutoShutdown != 0);
  ui_->chkAutoUpdate->setChecked(boxes.chkAutoUpdate != 0);
  ui_->chkOnTop->setChecked(boxes.chkOnTop != 0);
  ui_->cmdBridgemate->setText(QString::fromStdString(logic_.UnitCaption()));
  connect(ui_->cmdDisplay, &QPushButton::clicked, this, &FrmOptions::DisplayOptionsWanted);
  connect(ui_->cmdSound, &QPushButton::clicked, this, &FrmOptions::SoundOptionsWanted);
  connect(ui_->cmdBridgemate, &QPushButton::clicked, this, &FrmOptions::UnitOptionsWanted);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->cmdOK, &QPushButton::clicked, this, [this] {
    logic_.cmdOK_Click(Boxes());
    accept();
  });
}

FrmOptions::~FrmOptions() = default;

GeneralBoxes FrmOptions::Boxes() const {
  return {ui_->chkAutoStart->isChecked() ? 1 : 0, ui_->chkAutoShutdown->isChecked() ? 1 : 0,
          ui_->chkAutoUpdate->isChecked() ? 1 : 0, ui_->chkOnTop->isChecked() ? 1 : 0};
}

}  // namespace corvanel
