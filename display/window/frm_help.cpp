#include "display/window/frm_help.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvanel {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QLabel* Labelled(QLabel* label, const char* name) {
  label->setObjectName(name);
  label->setWordWrap(true);
  return label;
}

/// As high as its lines, so that nothing has to be scrolled.
void FitHeight(QTreeWidget& list) {
  const int lines = list.topLevelItemCount();
  const int line = list.sizeHintForRow(0);
  list.setFixedHeight(list.header()->sizeHint().height() + lines * line + 2 * list.frameWidth() +
                      4);
}

}  // namespace

FrmHelp::FrmHelp(QWidget* parent) : QDialog(parent) {
  setObjectName("frmHelp");
  setWindowTitle(tr("Keyboard shortcuts"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(24, 20, 24, 16);
  column->setSpacing(10);
  column->addWidget(
      Labelled(new QLabel(tr("While the clock is shown these keys act on it:")), "Label1"));
  column->addWidget(Labelled(new QLabel(tr("<b>Room display</b>")), "lblScores"));
  column->addWidget(AddList("lvwScores", false));
  column->addWidget(Labelled(new QLabel(tr("<b>With a second monitor, on the director's screen also"
                                           "</b>")),
                             "lblMonitor"));
  column->addWidget(AddList("lvwCont", true));
  column->addWidget(Labelled(new QLabel(tr("Move the mouse over a display for buttons that do the "
                                           "same.")),
                             "Label2"));
  column->addWidget(
      Labelled(new QLabel(tr("In the control window Ctrl+Enter starts the clock.")), "Label3"));
  auto* cmdSounds = new QPushButton(tr("&Sounds..."));
  cmdSounds->setObjectName("cmdSounds");
  auto* cmdOK = new QPushButton(tr("OK"));
  cmdOK->setObjectName("cmdOK");
  cmdOK->setDefault(true);
  auto* row = new QHBoxLayout;
  row->addWidget(cmdSounds);
  row->addStretch();
  row->addWidget(cmdOK);
  column->addLayout(row);
  connect(cmdSounds, &QPushButton::clicked, this, &FrmHelp::SoundsWanted);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  cmdOK->setFocus();
}

QTreeWidget* FrmHelp::AddList(const char* name, bool ofTwin) {
  auto* list = new QTreeWidget;
  list->setObjectName(name);
  list->setHeaderLabels({tr("Key"), tr("Action")});
  list->setRootIsDecorated(false);
  list->setFocusPolicy(Qt::NoFocus);
  list->setSelectionMode(QAbstractItemView::NoSelection);
  for (const Shortcut& shortcut : kShortcuts) {
    if (!shortcut.listed.empty() && shortcut.withTwin == ofTwin) {
      AddLine(*list, shortcut.listed, shortcut.action);
    }
  }
  list->setColumnWidth(0, list->fontMetrics().horizontalAdvance("AAAAAAA"));
  list->setMinimumWidth(420);
  FitHeight(*list);
  return list;
}

void FrmHelp::AddLine(QTreeWidget& list, std::string_view key, std::string_view action) {
  list.addTopLevelItem(new QTreeWidgetItem({Text(key), Text(action)}));
}

}  // namespace corvanel
