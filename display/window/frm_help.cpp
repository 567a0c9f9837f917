#include "display/window/frm_help.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/colours.h"

namespace corvanel {
namespace {

// Shares of the text's colour in a key's edge and field.
constexpr double kCapEdge = 0.45;
constexpr double kCapField = 0.06;

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

/// Draws a key as the keyboard has it.
class KeyCap : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const QString key = index.data().toString();
    const QFontMetricsF metrics(option.font);
    const double height = metrics.height() + 4;
    const double width = std::max(height, metrics.horizontalAdvance(key) + 12);
    const QRectF cap(option.rect.left() + 6, option.rect.center().y() + 0.5 - height / 2, width,
                     height);
    const QColor ink = option.palette.color(QPalette::Text);
    const QColor ground = option.palette.color(QPalette::Base);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Mixed(ink, ground, kCapEdge));
    painter->setBrush(Mixed(ink, ground, kCapField));
    painter->drawRoundedRect(cap, 4, 4);
    painter->setPen(ink);
    painter->drawText(cap, Qt::AlignCenter, key);
    painter->restore();
  }
};

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
  list->setAccessibleName(ofTwin ? tr("Keys with a second monitor") : tr("Keys"));
  list->setRootIsDecorated(false);
  list->setItemDelegateForColumn(0, new KeyCap(list));
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
