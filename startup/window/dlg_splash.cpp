#include "startup/window/dlg_splash.h"

#include <QApplication>
#include <QScreen>

#include "ui_dlg_splash.h"

namespace corvanel {
namespace {

constexpr int kAboveCentre = 500 / 15;  // pixels; 15 twips each

}  // namespace

DlgSplash::DlgSplash(const QString& version)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint),
      ui_(std::make_unique<Ui::DlgSplash>()) {
  ui_->setupUi(this);
  ui_->lblVer->setText(tr("Version %1").arg(version));
  ui_->lblIcon->setPixmap(QApplication::windowIcon().pixmap(72));
  ui_->fraDownload->hide();
  ui_->cmdLaunch->hide();
  ui_->lblReady->hide();
  // The last line is selected so that it can be seen; it is not what matters here.
  QPalette calm = ui_->lstLog->palette();
  calm.setColor(QPalette::Highlight, calm.color(QPalette::Base));
  calm.setColor(QPalette::HighlightedText, calm.color(QPalette::Text));
  ui_->lstLog->setPalette(calm);
  connect(ui_->cmdLaunch, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdStop, &QPushButton::clicked, this, [this] { stop_ = true; });
  connect(ui_->chkAutoLaunch, &QCheckBox::clicked, this, &DlgSplash::AutoLaunchTicked);
  // A splash that is closed goes on to the control window, and stops its own work.
  connect(this, &QDialog::finished, this, [this] { stop_ = true; });
}

DlgSplash::~DlgSplash() = default;

void DlgSplash::SetAutoLaunch(bool ticked) {
  ui_->chkAutoLaunch->setChecked(ticked);
}

void DlgSplash::ShowLaunch() {
  ui_->lblReady->show();
  ui_->cmdLaunch->show();
  ui_->cmdLaunch->setFocus();
}

void DlgSplash::Log(const std::string& line) {
  ui_->lstLog->addItem(QString::fromStdString(line));
  ui_->lstLog->setCurrentRow(ui_->lstLog->count() - 1);
  ui_->lstLog->repaint();
}

void DlgSplash::ShowDownload(bool shown) {
  stop_ = false;
  ui_->fraDownload->setVisible(shown);
}

void DlgSplash::ShowDownloadProgress(const std::string& sizes, const std::string& remaining,
                                     int percent) {
  ui_->lblSizes->setText(QString::fromStdString(sizes));
  ui_->LblTimeRemaining->setText(QString::fromStdString(remaining));
  ui_->ProgressBar1->setValue(percent);
}

void DlgSplash::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  const QRect room = screen()->availableGeometry();
  move(room.center() - QPoint(width() / 2, height() / 2 + kAboveCentre));
}

}  // namespace corvanel
