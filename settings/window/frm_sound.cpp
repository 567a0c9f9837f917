#include "settings/window/frm_sound.h"

#include "ui_frm_sound.h"

namespace corvanel {
namespace {

constexpr int kWidestFile = 240;  // pixels

}  // namespace

FrmSound::FrmSound(SoundOptions& logic, QWidget* parent)
    : QDialog(parent), logic_(logic), ui_(std::make_unique<Ui::FrmSound>()) {
  ui_->setupUi(this);
  ui_->lblSettings->setText(QString::fromStdString(logic_.SettingsText()).remove('\r'));
  for (size_t cue = 0; cue < kCues; ++cue) ConnectSlot(cue);
  ui_->lblStatus->setMinimumHeight(2 * ui_->lblStatus->fontMetrics().lineSpacing());
  connect(ui_->cmdTestAll, &QPushButton::clicked, this, [this] {
    logic_.cmdTestAll_Click();
    ShowSounds();
  });
  connect(ui_->cmdRestore, &QPushButton::clicked, this, [this] {
    logic_.cmdRestore_Click();
    for (size_t cue = 0; cue < kCues; ++cue) {
      PlayBox(cue)->setChecked(logic_.Choices().play[cue]);
      ShowFile(cue);
    }
  });
  connect(ui_->cmdHelp, &QPushButton::clicked, this, [this] { logic_.cmdHelp_Click(); });
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->cmdOK, &QPushButton::clicked, this, [this] {
    if (logic_.cmdOK_Click()) accept();
  });
}

FrmSound::~FrmSound() = default;

QCheckBox* FrmSound::PlayBox(size_t cue) const {
  return findChild<QCheckBox*>(QString("chkPlay_%1").arg(cue));
}

QCheckBox* FrmSound::FinalBox(size_t warning) const {
  return findChild<QCheckBox*>(QString("chkPlayFinal_%1").arg(warning));
}

void FrmSound::ConnectSlot(size_t cue) {
  const SoundChoices& choices = logic_.Choices();
  PlayBox(cue)->setChecked(choices.play[cue]);
  connect(PlayBox(cue), &QCheckBox::toggled, this,
          [this, cue](bool on) { logic_.chkPlay_Click(cue, on); });
  if (cue < kWarnings) {
    FinalBox(cue)->setChecked(choices.playFinalRound[cue]);
    FinalBox(cue)->setEnabled(choices.play[cue]);
    connect(PlayBox(cue), &QCheckBox::toggled, FinalBox(cue), &QCheckBox::setEnabled);
    connect(FinalBox(cue), &QCheckBox::toggled, this,
            [this, cue](bool on) { logic_.chkPlayFinal_Click(cue, on); });
  }
  ShowFile(cue);
  connect(findChild<QPushButton*>(QString("cmdSound_%1").arg(cue)), &QPushButton::clicked, this,
          [this, cue] {
            logic_.cmdSound_Click(cue);
            ShowFile(cue);
          });
  connect(findChild<QPushButton*>(QString("cmdTest_%1").arg(cue)), &QPushButton::clicked, this,
          [this, cue] { logic_.cmdTest_Click(cue); });
}

void FrmSound::ShowFile(size_t cue) {
  auto* label = findChild<QLabel*>(QString("lblSound_%1").arg(cue));
  const QString file = QString::fromStdString(logic_.FileText(cue));
  label->setText(label->fontMetrics().elidedText(file, Qt::ElideMiddle, kWidestFile));
  label->setToolTip(file);
  label->setStyleSheet(logic_.CanBePlayed(cue) ? QString() : "color: #B00020; font-weight: 600;");
}

void FrmSound::ShowSounds() {
  for (size_t cue = 0; cue < kCues; ++cue) ShowFile(cue);
  ui_->lblStatus->setText(QString::fromStdString(logic_.StatusText()));
  ui_->cmdTestAll->setText(logic_.TestsAll() ? tr("S&top") : tr("Test &all"));
}

void FrmSound::Tested(const SoundTest& test) {
  logic_.Tested(test);
  ShowSounds();
}

}  // namespace corvanel
