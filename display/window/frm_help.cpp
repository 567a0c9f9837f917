#include "display/window/frm_help.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>

#include "display/shortcuts.h"

namespace corvanel {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QLabel* Heading(const QString& text) {
  auto* label = new QLabel(text);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

}  // namespace

FrmHelp::FrmHelp(QWidget* parent) : QDialog(parent) {
  setObjectName("frmHelp");
  setWindowTitle(tr("Keyboard shortcuts"));
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(24, 20, 24, 16);
  grid->setHorizontalSpacing(28);
  grid->addWidget(Heading(tr("Key")), 0, 0);
  grid->addWidget(Heading(tr("Action")), 0, 1);
  int row = 1;
  for (const Shortcut& shortcut : kShortcuts) {
    if (shortcut.listed.empty()) continue;
    grid->addWidget(Heading(Text(shortcut.listed)), row, 0);
    grid->addWidget(new QLabel(Text(shortcut.action)), row, 1);
    ++row;
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  grid->addWidget(buttons, row, 0, 1, 2);
}

}  // namespace corvanel
