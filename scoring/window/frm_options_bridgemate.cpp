#include "scoring/window/frm_options_bridgemate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <QTimer>
#include <algorithm>
#include <array>

#include "ui_frm_options_bridgemate.h"

namespace corvanel {
namespace {

constexpr int kWidestSound = 220;  // pixels

/// What may stand in a box, so that nothing else can be pasted either.
QString PatternOf(const std::string& key) {
  return UnitOptions::Takes(key, '.') ? "[0-9]*\\.?[0-9]*" : "[0-9]*";
}

/// A comma is taken as the point.
class NumberValidator : public QRegularExpressionValidator {
 public:
  using QRegularExpressionValidator::QRegularExpressionValidator;
  State validate(QString& text, int& place) const override {
    text.replace(',', '.');
    return QRegularExpressionValidator::validate(text, place);
  }
};

}  // namespace

FrmOptionsBridgemate::FrmOptionsBridgemate(UnitOptions& logic, QWidget* parent)
    : QDialog(parent), logic_(logic), ui_(std::make_unique<Ui::FrmOptionsBridgemate>()) {
  ui_->setupUi(this);
  rows_ = std::make_unique<OptionRows>(*this);
  rows_->Show([this](const std::string& key) { return logic_.Text(key); });
  for (const std::string& key : UnitOptions::NumberKeys()) {
    auto* box = qobject_cast<QLineEdit*>(rows_->Find(key));
    numbers_.push_back(box);
    box->setValidator(new NumberValidator(QRegularExpression(PatternOf(key)), box));
    box->installEventFilter(this);
    connect(box, &QLineEdit::inputRejected, this, [] { QApplication::beep(); });
  }
  const std::array units = {ui_->optDesktop_0, ui_->optDesktop_1, ui_->optDesktop_2};
  const UnitChoice unit = logic_.Unit();
  units[static_cast<size_t>(unit.optDesktop)]->setChecked(true);
  ui_->txtOther->setText(QString::fromStdString(unit.txtOther));
  ShowCaptions();
  ShowSounds();
  for (QRadioButton* choice : units) {
    connect(choice, &QRadioButton::clicked, this, &FrmOptionsBridgemate::ShowCaptions);
  }
  connect(ui_->txtOther, &QLineEdit::textChanged, this, &FrmOptionsBridgemate::ShowCaptions);
  connect(ui_->cmdSound, &QPushButton::clicked, this, [this] {
    logic_.cmdSound_Click();
    ShowSounds();
  });
  connect(ui_->cmdTest, &QPushButton::clicked, this, [this] { logic_.cmdTest_Click(); });
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &FrmOptionsBridgemate::cmdOK_Click);
}

FrmOptionsBridgemate::~FrmOptionsBridgemate() = default;

UnitChoice FrmOptionsBridgemate::Unit() const {
  const int chosen = ui_->optDesktop_1->isChecked() ? 1 : ui_->optDesktop_2->isChecked() ? 2 : 0;
  return {chosen, ui_->txtOther->text().trimmed().toStdString()};
}

void FrmOptionsBridgemate::ShowCaptions() {
  setWindowTitle(QString::fromStdString(UnitOptions::Caption(Unit())));
  rows_->NameUnit(Unit().Name());
}

void FrmOptionsBridgemate::Tested(const SoundTest& test) {
  logic_.Tested(test);
  ShowSounds();
}

void FrmOptionsBridgemate::ShowSounds() {
  const QString text = QString::fromStdString(logic_.SoundText());
  ui_->lblSound->setText(
      ui_->lblSound->fontMetrics().elidedText(text, Qt::ElideMiddle, kWidestSound));
  ui_->lblSound->setToolTip(text);
  ui_->lblStatus->setText(QString::fromStdString(logic_.StatusText()));
}

bool FrmOptionsBridgemate::Leave(QLineEdit* box) const {
  const auto number = std::find(numbers_.begin(), numbers_.end(), box) - numbers_.begin();
  return logic_.Leave(UnitOptions::NumberKeys()[static_cast<size_t>(number)],
                      box->text().toStdString());
}

/// Enter leads to the next number box; a wrong number keeps the focus.
bool FrmOptionsBridgemate::eventFilter(QObject* watched, QEvent* event) {
  const auto found = std::find(numbers_.begin(), numbers_.end(), watched);
  if (found == numbers_.end()) return QDialog::eventFilter(watched, event);
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      (found + 1 == numbers_.end() ? numbers_.front() : found[1])->setFocus(Qt::TabFocusReason);
      return true;
    }
  }
  if (event->type() == QEvent::FocusOut && isVisible() && focusWidget() != ui_->cmdCancel) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    // OK checks every box itself; other windows and the escape key are no leaving.
    const bool moved = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                       reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
    QLineEdit* left = *found;
    if (moved && focusWidget() != ui_->cmdOK && !Leave(left)) {
      QTimer::singleShot(0, left, [left] { left->setFocus(Qt::OtherFocusReason); });
    }
  }
  return QDialog::eventFilter(watched, event);
}

void FrmOptionsBridgemate::cmdOK_Click() {
  const auto wrong = logic_.cmdOK_Click(rows_->Texts(), Unit());
  if (wrong) {
    rows_->Find(*wrong)->setFocus(Qt::OtherFocusReason);
  } else {
    accept();
  }
}

}  // namespace corvanel
