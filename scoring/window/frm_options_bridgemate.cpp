#include "scoring/window/frm_options_bridgemate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <QTimer>
#include <algorithm>

#include "ui_frm_options_bridgemate.h"

namespace corvanel {
namespace {

/// What may stand in a box, so that nothing else can be pasted either.
QString PatternOf(UnitBox box) {
  return UnitOptions::Takes(box, '.') ? "[0-9]*\\.?[0-9]*" : "[0-9]*";
}

}  // namespace

FrmOptionsBridgemate::FrmOptionsBridgemate(UnitOptions& logic, QWidget* parent)
    : QDialog(parent), logic_(logic), ui_(std::make_unique<Ui::FrmOptionsBridgemate>()) {
  ui_->setupUi(this);
  boxes_ = {ui_->txtMinPerBoard, ui_->txtBreak, ui_->txtPause, ui_->txtPauseMinutes};
  for (size_t i = 0; i < boxes_.size(); ++i) {
    const QRegularExpression pattern(PatternOf(static_cast<UnitBox>(i)));
    boxes_[i]->setValidator(new QRegularExpressionValidator(pattern, boxes_[i]));
    boxes_[i]->installEventFilter(this);
    connect(boxes_[i], &QLineEdit::inputRejected, this, [] { QApplication::beep(); });
  }
  Fill();
  for (QRadioButton* unit : {ui_->optDesktop_0, ui_->optDesktop_1, ui_->optDesktop_2}) {
    connect(unit, &QRadioButton::clicked, this, &FrmOptionsBridgemate::ShowCaptions);
  }
  connect(ui_->txtOther, &QLineEdit::textChanged, this, &FrmOptionsBridgemate::ShowCaptions);
  connect(ui_->cmdSound, &QPushButton::clicked, this, [this] {
    logic_.cmdSound_Click();
    ShowSound();
  });
  connect(ui_->cmdTest, &QPushButton::clicked, this, [this] { logic_.cmdTest_Click(); });
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &FrmOptionsBridgemate::cmdOK_Click);
}

FrmOptionsBridgemate::~FrmOptionsBridgemate() = default;

void FrmOptionsBridgemate::Fill() {
  const UnitValues values = logic_.Values();
  ui_->chkSuggest->setChecked(values.chkSuggest);
  ui_->chkUpdateSettings->setChecked(values.chkUpdateSettings);
  ui_->chkOmitWarning1->setChecked(values.chkOmitWarning1);
  ui_->chkOmitWarning2->setChecked(values.chkOmitWarning2);
  ui_->chkSlowTables->setChecked(values.chkSlowTables);
  ui_->chkAutoMove->setChecked(values.chkAutoMove);
  ui_->chkPause->setChecked(values.chkPause);
  ui_->chkPlay->setChecked(values.chkPlay);
  ui_->chkLogFile->setChecked(values.chkLogFile);
  for (size_t i = 0; i < boxes_.size(); ++i) {
    boxes_[i]->setText(QString::fromStdString(values.numbers[i]));
  }
  const std::array<QRadioButton*, 3> units = {ui_->optDesktop_0, ui_->optDesktop_1,
                                              ui_->optDesktop_2};
  units[static_cast<size_t>(values.optDesktop)]->setChecked(true);
  ui_->txtOther->setText(QString::fromStdString(values.txtOther));
  ShowCaptions();
  ShowSound();
}

UnitValues FrmOptionsBridgemate::Values() const {
  UnitValues values;
  values.chkSuggest = ui_->chkSuggest->isChecked();
  values.chkUpdateSettings = ui_->chkUpdateSettings->isChecked();
  values.chkOmitWarning1 = ui_->chkOmitWarning1->isChecked();
  values.chkOmitWarning2 = ui_->chkOmitWarning2->isChecked();
  values.chkSlowTables = ui_->chkSlowTables->isChecked();
  values.chkAutoMove = ui_->chkAutoMove->isChecked();
  values.chkPause = ui_->chkPause->isChecked();
  values.chkPlay = ui_->chkPlay->isChecked();
  values.chkLogFile = ui_->chkLogFile->isChecked();
  for (size_t i = 0; i < boxes_.size(); ++i) values.numbers[i] = boxes_[i]->text().toStdString();
  if (ui_->optDesktop_1->isChecked()) values.optDesktop = 1;
  if (ui_->optDesktop_2->isChecked()) values.optDesktop = 2;
  values.txtOther = ui_->txtOther->text().trimmed().toStdString();
  return values;
}

void FrmOptionsBridgemate::ShowCaptions() {
  const UnitValues values = Values();
  setWindowTitle(QString::fromStdString(UnitOptions::Caption(values)));
  ui_->chkSuggest->setText(QString::fromStdString(UnitOptions::SuggestCaption(values)));
}

void FrmOptionsBridgemate::ShowSound() {
  constexpr int kWidest = 220;  // pixels
  const QString text = QString::fromStdString(logic_.SoundText());
  ui_->lblSound->setText(ui_->lblSound->fontMetrics().elidedText(text, Qt::ElideMiddle, kWidest));
  ui_->lblSound->setToolTip(text);
}

int FrmOptionsBridgemate::BoxOf(const QObject* widget) const {
  const auto found = std::find(boxes_.begin(), boxes_.end(), widget);
  return found == boxes_.end() ? -1 : static_cast<int>(found - boxes_.begin());
}

/// Enter leads to the next number box; a wrong number keeps the focus.
bool FrmOptionsBridgemate::eventFilter(QObject* watched, QEvent* event) {
  const int box = BoxOf(watched);
  if (box < 0) return QDialog::eventFilter(watched, event);
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      boxes_[static_cast<size_t>(box + 1) % boxes_.size()]->setFocus(Qt::TabFocusReason);
      return true;
    }
  }
  if (event->type() == QEvent::FocusOut && isVisible() && focusWidget() != ui_->cmdCancel) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    auto* left = boxes_[static_cast<size_t>(box)];
    // OK checks every box itself; other windows and the escape key are no leaving.
    const bool moved = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                       reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
    if (moved && focusWidget() != ui_->cmdOK &&
        !logic_.Leave(static_cast<UnitBox>(box), left->text().toStdString())) {
      QTimer::singleShot(0, left, [left] { left->setFocus(Qt::OtherFocusReason); });
    }
  }
  return QDialog::eventFilter(watched, event);
}

void FrmOptionsBridgemate::cmdOK_Click() {
  const auto [box, close] = logic_.cmdOK_Click(Values());
  if (close) {
    accept();
  } else {
    boxes_[static_cast<size_t>(box)]->setFocus(Qt::OtherFocusReason);
  }
}

}  // namespace corvanel
