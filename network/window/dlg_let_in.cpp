#include "network/window/dlg_let_in.h"

#include <utility>

#include "ui_dlg_let_in.h"

namespace corvanel {
namespace {

constexpr int kLook = 300;  // milliseconds
constexpr const char* kRemote = "remote";

}  // namespace

DlgLetIn::DlgLetIn(RemoteDesk& remotes, std::string page, QWidget* parent)
    : QDialog(parent),
      remotes_(remotes),
      page_(std::move(page)),
      ui_(std::make_unique<Ui::DlgLetIn>()) {
  ui_->setupUi(this);
  ui_->lblOr->setText(tr("or open %1 on it and type").arg(QString::fromStdString(page_ + kRemote)));
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  connect(&timLook_, &QTimer::timeout, this, &DlgLetIn::Look);
  timLook_.start(kLook);
  remotes_.Invite();
  Look();
}

DlgLetIn::~DlgLetIn() {
  remotes_.EndInvitation();
}

/// A device that came in has used the code: the next one needs another.
void DlgLetIn::Look() {
  if (remotes_.Code() == shown_) return;
  const bool first = shown_.empty();
  shown_ = remotes_.Code();
  const QString code = QString::fromStdString(shown_);
  ui_->qrCode->Show(QString::fromStdString(page_ + kRemote + "#") + code);
  ui_->lblCode->setText(code.left(code.size() / 2) + ' ' + code.mid(code.size() / 2));
  ui_->lblState->setText(first ? tr("The code lets one device in, while this window is open.")
                               : tr("%1 was let in. The next device needs this new code.")
                                     .arg(QString::fromStdString(remotes_.Devices().back().name)));
}

}  // namespace corvanel
