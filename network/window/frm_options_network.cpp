#include "network/window/frm_options_network.h"

#include <QIntValidator>

#include "network/window/dlg_let_in.h"
#include "ui_frm_options_network.h"

namespace corvanel {
namespace {

constexpr int kStateInterval = 1000;  // milliseconds

}  // namespace

FrmOptionsNetwork::FrmOptionsNetwork(const Parts& parts, QWidget* parent)
    : QDialog(parent), parts_(parts), ui_(std::make_unique<Ui::FrmOptionsNetwork>()) {
  ui_->setupUi(this);
  ui_->txtPort->setValidator(new QIntValidator(kLeastPort, kGreatestPort, this));
  for (const std::string& address : parts.addresses) {
    ui_->cboAddress->addItem(QString::fromStdString(address));
  }
  rows_ = std::make_unique<OptionRows>(*this);
  rows_->Show([this](const std::string& key) { return OptionText(parts_.options, key); });
  ui_->cboAddress->setVisible(parts.addresses.size() > 1);
  ui_->lblAddresses->setVisible(parts.addresses.size() > 1);
  connect(ui_->chkNetwork, &QCheckBox::toggled, this, &FrmOptionsNetwork::ShowAddress);
  connect(ui_->txtPort, &QLineEdit::textChanged, this, &FrmOptionsNetwork::ShowAddress);
  connect(ui_->cboAddress, &QComboBox::currentIndexChanged, this, &FrmOptionsNetwork::ShowAddress);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &FrmOptionsNetwork::cmdOK_Click);
  connect(ui_->cmdLetIn, &QPushButton::clicked, this, &FrmOptionsNetwork::cmdLetIn_Click);
  connect(ui_->cmdSendAway, &QPushButton::clicked, this, &FrmOptionsNetwork::cmdSendAway_Click);
  connect(ui_->lstDevices, &QListWidget::currentRowChanged, this,
          [this](int row) { ui_->cmdSendAway->setEnabled(row >= 0); });
  connect(&timState_, &QTimer::timeout, this, &FrmOptionsNetwork::ShowState);
  timState_.start(kStateInterval);
  ShowAddress();
  ShowDevices();
}

FrmOptionsNetwork::~FrmOptionsNetwork() = default;

/// Where the session will be found when the dialog is left with OK.
void FrmOptionsNetwork::ShowAddress() {
  const bool good = ui_->txtPort->hasAcceptableInput();
  const bool on = ui_->chkNetwork->isChecked();
  QString address;
  if (on && good && !parts_.addresses.empty()) {
    address = QString::fromStdString(
        PageAddress(ui_->cboAddress->currentText().toStdString(), ui_->txtPort->text().toInt()));
  }
  ui_->lblAddress->setText(address);
  ui_->lblRooms->setText(
      address.isEmpty()
          ? tr("Rooms that name the same broker hear of each other.")
          : tr("Rooms that name the same broker stand on one page: %1rooms").arg(address));
  ui_->qrAddress->Show(address);
  ui_->cmdOK->setEnabled(good);
  ui_->cmdLetIn->setEnabled(good && !parts_.addresses.empty());
  ShowState();
}

void FrmOptionsNetwork::ShowState() {
  QString state;
  if (!ui_->txtPort->hasAcceptableInput()) {
    state = tr("The port is a number from %1 to %2.").arg(kLeastPort).arg(kGreatestPort);
  } else if (!ui_->chkNetwork->isChecked()) {
    state = tr("Nothing is sent to anybody.");
  } else if (parts_.addresses.empty()) {
    state = tr("This computer is in no network now.");
  } else if (!parts_.desk.Serves()) {
    state = tr("Served from OK on: type the address into a browser, or point a phone at the code.");
  } else {
    const auto screens = static_cast<int>(parts_.desk.Screens());
    state = screens == 0   ? tr("No screen shows the session yet. If none finds it, a firewall on "
                                  "this computer may be in the way.")
            : screens == 1 ? tr("1 screen shows the session.")
                           : tr("%1 screens show the session.").arg(screens);
  }
  ui_->lblState->setText(state);
}

void FrmOptionsNetwork::ShowDevices() {
  ui_->lstDevices->clear();
  for (const RemoteDevice& device : parts_.desk.Remotes().Devices()) {
    ui_->lstDevices->addItem(QString::fromStdString(device.name));
  }
  ui_->cmdSendAway->setEnabled(false);
}

/// A device can only come in where the pages are served: from now on they are.
void FrmOptionsNetwork::cmdLetIn_Click() {
  ui_->chkNetwork->setChecked(true);
  Apply();
  ShowState();
  if (!parts_.desk.Serves()) return;
  Guarded(parts_.errors, "frmOptionsNetwork.cmdLetIn_Click", [&] {
    DlgLetIn(parts_.desk.Remotes(), ui_->lblAddress->text().toStdString(), this).exec();
  });
  ShowDevices();
}

void FrmOptionsNetwork::cmdSendAway_Click() {
  const auto& devices = parts_.desk.Remotes().Devices();
  const auto row = static_cast<size_t>(ui_->lstDevices->currentRow());
  if (row >= devices.size()) return;
  const RemoteDevice device = devices[row];
  parts_.desk.Remotes().SendAway(device);
  ShowDevices();
}

void FrmOptionsNetwork::Apply() {
  HandlerSteps step(parts_.errors, "frmOptionsNetwork.cmdOK_Click");
  step([&] { parts_.table.TakeOptions(rows_->Texts()); });
  step([&] { parts_.desk.Apply(); });
}

void FrmOptionsNetwork::cmdOK_Click() {
  Apply();
  accept();
}

}  // namespace corvanel
