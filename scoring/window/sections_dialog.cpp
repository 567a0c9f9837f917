#include "scoring/window/sections_dialog.h"

#include "ui_sections_dialog.h"

namespace corvanel {

SectionsDialog::SectionsDialog(const std::string& sessionName,
                               const std::vector<std::string>& lines, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::SectionsDialog>()) {
  ui_->setupUi(this);
  ui_->lblSessionName->setText(QString::fromStdString(sessionName));
  ui_->lblSessionName->setVisible(!sessionName.empty());
  for (const std::string& line : lines) {
    auto* entry = new QListWidgetItem(QString::fromStdString(line), ui_->lstSett);
    entry->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    entry->setCheckState(Qt::Checked);
  }
  ui_->lstSett->setCurrentRow(0);
  ui_->lstSett->setFocus();
  connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

SectionsDialog::~SectionsDialog() = default;

std::vector<bool> SectionsDialog::Ticked() const {
  std::vector<bool> ticked;
  ticked.reserve(static_cast<size_t>(ui_->lstSett->count()));
  for (int row = 0; row < ui_->lstSett->count(); ++row) {
    ticked.push_back(ui_->lstSett->item(row)->checkState() == Qt::Checked);
  }
  return ticked;
}

}  // namespace corvanel
