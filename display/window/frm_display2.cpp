#include "display/window/frm_display2.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>
#include <QToolTip>

#include "display/window/command_bar.h"
#include "display/window/text_measure.h"
#include "widgets/notice_list.h"

namespace corvanel {

namespace {

constexpr size_t kMostLinesInFoot = 3;  // for the director
constexpr int kAroundButtons = 8;       // pixels that stay free around the buttons

/// The command bar's look; `%1`: the size of the text, pixels.
constexpr const char* kFootStyle = R"(
  QFrame#fraMonitor { background: #EEF2F9; border: 1px solid #9FB0CC; border-radius: 10px; }
  QLabel { color: #10203C; border: none; font-size: %1px; }
  QPushButton { color: #10203C; background: transparent; border: none; border-radius: 6px;
                padding: 6px 12px; font-size: %1px; }
  QPushButton:hover { background: #D3DDEE; }
  QPushButton:pressed { background: #B4C4E0; }
)";

}  // namespace

FrmDisplay2::FrmDisplay2(const Session& session, DisplayCommands& commands, LetterOfKey letterOfKey)
    : DisplayWindow(session, DisplayKind::Twin, commands, letterOfKey),
      fraMonitor_(new QFrame(this)),
      fraNotices_(new NoticeList(this)) {
  fraNotices_->SetMost(kMostLinesInFoot);
  setObjectName("frmDisplay2");
  fraMonitor_->setObjectName("fraMonitor");
  fraMonitor_->setAutoFillBackground(true);
  fraMonitor_->setCursor(Qt::ArrowCursor);
  auto* row = new QHBoxLayout(fraMonitor_);
  row->setContentsMargins(16, 6, 16, 6);
  row->addWidget(new QLabel(tr("Room display"), fraMonitor_));
  cmdHide_ = AddPair("cmdHide", tr("Hide"), tr("Show"));
  cmdMonitorFullScreen_ = AddPair("cmdMonitorFullScreen", tr("Maximise"), tr("Restore"));
  connect(fraNotices_, &NoticeList::ActionWanted, this, &FrmDisplay2::NoticeActionWanted);
  connect(fraNotices_, &NoticeList::Dismissed, this, &FrmDisplay2::NoticeDismissed);
  for (int index : {0, 1}) {
    const auto i = static_cast<size_t>(index);
    connect(cmdHide_[i], &QPushButton::clicked, this,
            [this, index] { Commands().cmdHide_Click(index); });
    connect(cmdMonitorFullScreen_[i], &QPushButton::clicked, this,
            [this, index] { Commands().cmdMonitorFullScreen_Click(index); });
  }
}

void FrmDisplay2::ShowNotices(const std::vector<Notice>& notices) {
  fraNotices_->ShowNotices(notices);
  Rearrange();
}

bool FrmDisplay2::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return DisplayWindow::event(event);
  const auto* help = static_cast<const QHelpEvent*>(event);
  QToolTip::showText(help->globalPos(), TableTipAt(help->pos()), this);
  return true;
}

FrmDisplay2::Pair FrmDisplay2::AddPair(const char* name, const QString& first,
                                       const QString& second) {
  Pair pair = {new QPushButton(first, fraMonitor_), new QPushButton(second, fraMonitor_)};
  for (size_t i = 0; i < pair.size(); ++i) {
    pair[i]->setObjectName(QString("%1_%2").arg(name).arg(i));
    // The keys are the window's.
    pair[i]->setFocusPolicy(Qt::NoFocus);
    fraMonitor_->layout()->addWidget(pair[i]);
  }
  return pair;
}

void FrmDisplay2::ShowOne(const Pair& pair, size_t index) {
  pair[index]->show();
  pair[1 - index]->hide();
}

void FrmDisplay2::ShowRoomDisplay(bool visible, bool fullScreen) {
  ShowOne(cmdHide_, visible ? 0 : 1);
  ShowOne(cmdMonitorFullScreen_, fullScreen ? 1 : 0);
  // The other words are of another width.
  if (isVisible()) Rearrange();
}

int FrmDisplay2::NoticesHeight() const {
  if (fraNotices_->isHidden()) return 0;
  // First, since everything else is placed above what they need.
  fraNotices_->SetTextSize(CommandBar::TextIn(height()));
  const int wrapped = fraNotices_->heightForWidth(width());
  return std::max(wrapped, fraNotices_->sizeHint().height());
}

/// A row that is kept for the command bar, which on the director's own screen hides nothing, with
/// the room display's buttons at its end; below it the lines for him.
int FrmDisplay2::FootHeight() const {
  return CommandBar::RowIn(height()) + NoticesHeight();
}

QRect FrmDisplay2::BarRoom() const {
  return {0, 0, width() - MonitorWidth(), height() - NoticesHeight()};
}

int FrmDisplay2::MonitorWidth() const {
  const QString style = QString(kFootStyle).arg(CommandBar::TextIn(height()));
  if (fraMonitor_->styleSheet() != style) fraMonitor_->setStyleSheet(style);
  fraMonitor_->ensurePolished();
  fraMonitor_->layout()->activate();
  return std::min(fraMonitor_->sizeHint().width() + kAroundButtons, width() / 2);
}

void FrmDisplay2::PlaceEdges() {
  const int row = CommandBar::RowIn(height());
  const int wide = MonitorWidth() - kAroundButtons;
  fraMonitor_->setGeometry(width() - MonitorWidth(), height() - FootHeight() + kAroundButtons, wide,
                           row - 2 * kAroundButtons);
  fraNotices_->setGeometry(0, height() - NoticesHeight(), width(), NoticesHeight());
}

}  // namespace corvanel
