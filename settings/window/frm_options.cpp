#include "settings/window/frm_options.h"

#include "ui_frm_options.h"
#include "widgets/letters.h"

namespace corvanel {

FrmOptions::FrmOptions(const Parts& parts, QWidget* parent)
    : QDialog(parent), parts_(parts), ui_(std::make_unique<Ui::FrmOptions>()) {
  ui_->setupUi(this);
  rows_ = std::make_unique<OptionRows>(*this);
  rows_->Show([this](const std::string& key) { return OptionText(parts_.options, key); });
  const QString unit = QString::fromStdString(parts.options.TableTopUnit);
  ui_->cmdBridgemate->setText(CaptionOf(unit, "deofsu") + tr(" Options"));
  connect(ui_->cmdDisplay, &QPushButton::clicked, this, &FrmOptions::DisplayOptionsWanted);
  connect(ui_->cmdSound, &QPushButton::clicked, this, &FrmOptions::SoundOptionsWanted);
  connect(ui_->cmdBridgemate, &QPushButton::clicked, this, &FrmOptions::UnitOptionsWanted);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &FrmOptions::cmdOK_Click);
}

FrmOptions::~FrmOptions() = default;

void FrmOptions::cmdOK_Click() {
  HandlerSteps step(parts_.errors, "frmOptions.cmdOK_Click");
  step([&] { parts_.table.TakeOptions(rows_->Texts()); });
  step(parts_.applyOnTop);
  accept();
}

}  // namespace corvanel
