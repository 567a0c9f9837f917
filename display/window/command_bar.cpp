#include "display/window/command_bar.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <cmath>
#include <utility>

#include "display/window/minute_adjuster.h"
#include "widgets/notice_list.h"

namespace corvanel {
namespace {

constexpr double kText = 0.016;  // of the window's height
constexpr int kLeastText = 13;   // pixels
constexpr int kLeastTarget = 44;
constexpr double kTarget = 3.4;  // height of a button for that of its text
constexpr double kIcon = 1.6;    // of an icon, for the same

constexpr int kAroundBar = 8;  // pixels that stay free around the bar
constexpr int kAboveRow = 6;   // within it, above and below its row
constexpr int kFrame = 1;

constexpr size_t kMostLinesInBar = 2;  // for the director
constexpr int kUndoPadding = 8;
constexpr const char* kUsualUndo = "Undo next round,";
constexpr const char* kWidestUndo = "Undo automatic resume,";

int TargetFor(int text) {
  return std::max(kLeastTarget, static_cast<int>(std::lround(kTarget * text)));
}

constexpr QColor kInk(0x10, 0x20, 0x3C);
constexpr QColor kOff(0x8A, 0x94, 0xA6);

/// `%1`: the size of the text, pixels.
constexpr const char* kBarStyle = R"(
  QFrame#fraCommand { background: #EEF2F9; border: 1px solid #9FB0CC; border-radius: 10px; }
  QToolButton { color: #10203C; background: transparent; border: none; border-radius: 6px;
                padding: 2px 8px; font-size: %1px; }
  QLabel { font-size: %1px; }
  QToolButton:hover { background: #D3DDEE; }
  QToolButton:pressed { background: #B4C4E0; }
  QToolButton:disabled { color: #8A94A6; }
  QToolButton#cmdUndo { background: #DCE5F4; border: 1px solid #9FB0CC; padding: 2px 6px; }
  QToolButton#cmdUndo:disabled { background: transparent; border-color: transparent; }
  QToolButton#cmdUndo:hover { background: #C6D4EB; }
)";

}  // namespace

CommandBar::CommandBar(QWidget* parent)
    : QFrame(parent), notices_(new NoticeList(this)), undo_(new QToolButton(this)) {
  setObjectName("fraCommand");
  setCursor(Qt::ArrowCursor);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(10, kAboveRow, 10, kAboveRow);
  rows->setSpacing(4);
  undo_->setObjectName("cmdUndo");
  undo_->setToolTip(tr("Take the last command back, as if it had never been given (U)"));
  undo_->setFocusPolicy(Qt::NoFocus);
  notices_->SetMost(kMostLinesInBar);
  rows->addWidget(notices_);
  auto* buttons = new QWidget(this);
  row_ = new QHBoxLayout(buttons);
  row_->setContentsMargins(0, 0, 0, 0);
  row_->setSpacing(2);
  row_->addWidget(undo_);
  rows->addWidget(buttons);

  using Command = DisplayCommand;
  pause_ = Add("cmdPause", tr("Pause"), tr("Pause the clock (P)"), LineIcon::Pause, Command::Pause);
  resume_ = Add("cmdResume", tr("Resume"), tr("Let the clock go on (P)"), LineIcon::Resume,
                Command::Resume);
  next_ = Add("cmdNextRound", tr("Next round"), tr("End this round and start the next (N)"),
              LineIcon::NextRound, Command::NextRound);
  restart_ =
      Add("cmdRestart", tr("Restart round"), tr("Start this round again from its full length (R)"),
          LineIcon::Restart, Command::Restart);
  Add("cmdChange", tr("Minutes"), tr("Add or take off a minute (+ and -)"), std::nullopt,
      Command::ExplainMinutes);
  minutes_ = new MinuteAdjuster(this);
  for (const auto& [button, icon] :
       {std::pair(minutes_->Less(), LineIcon::Less), std::pair(minutes_->More(), LineIcon::More)}) {
    buttons_.emplace_back(button, icon);
  }
  row_->addWidget(minutes_);
  full_ = Add("cmdFullScreen_0", tr("Full screen"), tr("Full screen (F)"), LineIcon::FullScreen,
              Command::ToggleFullScreen);
  normal_ = Add("cmdFullScreen_1", tr("Window"), tr("Back to a normal window (F)"),
                LineIcon::Window, Command::ToggleFullScreen);
  Add("cmdSound", tr("Sounds"), tr("Choose the sounds"), LineIcon::Sounds, Command::Sounds);
  Add("cmdOptions", tr("Display"), tr("Choose fonts and colours"), LineIcon::Display,
      Command::Options);
  Add("cmdClose", tr("Main menu"), tr("Return to the control window (Esc)"), LineIcon::Back,
      Command::Close);
  connect(minutes_, &MinuteAdjuster::Moved, this, &CommandBar::MinutesMoved);
  connect(undo_, &QToolButton::clicked, this, [this] { emit Wanted(DisplayCommand::Undo); });
  connect(notices_, &NoticeList::ActionWanted, this, &CommandBar::NoticeActionWanted);
  connect(notices_, &NoticeList::Dismissed, this, &CommandBar::NoticeDismissed);
  resume_->hide();
  ShowFullScreen(false);
}

QToolButton* CommandBar::Add(const char* name, const QString& text, const QString& hint,
                             std::optional<LineIcon> icon, DisplayCommand command) {
  auto* button = new QToolButton(this);
  button->setObjectName(name);
  button->setText(text);
  button->setToolTip(hint);
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QToolButton::clicked, this, [this, command] { emit Wanted(command); });
  row_->addWidget(button);
  buttons_.emplace_back(button, icon);
  return button;
}

/// Text, icons and targets grow with the window.
void CommandBar::ScaleTo(int windowHeight) {
  const int text = TextIn(windowHeight);
  if (text == text_) return;
  text_ = text;
  setStyleSheet(QString(kBarStyle).arg(text));
  const int icon = static_cast<int>(std::lround(kIcon * text));
  const int target = TargetFor(text);
  for (const auto& [button, sign] : buttons_) {
    if (sign) button->setIcon(IconOf(*sign, kInk, kOff, icon));
    button->setIconSize(QSize(icon, icon));
    button->setMinimumSize(target, target);
  }
  undo_->ensurePolished();
  undo_->setFixedHeight(target);
}

void CommandBar::ShowPossible(const PossibleCommands& can) {
  pause_->setEnabled(can.pause);
  next_->setEnabled(can.nextRound);
  restart_->setEnabled(can.restart);
  minutes_->setEnabled(can.minutes);
}

void CommandBar::ShowPaused(bool paused) {
  // Every second says so again; only a change is worth fitting the bar anew.
  if (resume_->isHidden() != paused) return;
  pause_->setVisible(!paused);
  resume_->setVisible(paused);
  Fit();
}

void CommandBar::ShowFullScreen(bool fullScreen) {
  full_->setVisible(!fullScreen);
  normal_->setVisible(fullScreen);
  Fit();
}

/// Around the rows: the layout's, and the frame's line.
QSize CommandBar::Margins() const {
  const QMargins margins = layout()->contentsMargins() + contentsMargins();
  return {margins.left() + margins.right(), margins.top() + margins.bottom()};
}

void CommandBar::ShowUndo(const QString& undo) {
  if (undo == whole_) return;
  whole_ = undo;
  ElideUndo();
}

/// The room that its text takes in the button of the last command.
int CommandBar::WidthOf(const char* text) const {
  return undo_->fontMetrics().horizontalAdvance(text) + 2 * kUndoPadding;
}

void CommandBar::ElideUndo() {
  // Never gone: no other button moves when there is something to take back.
  undo_->setEnabled(!whole_.isEmpty());
  QStringList lines = (whole_.isEmpty() ? tr("Undo") : whole_).split('\n');
  for (QString& line : lines) {
    line = undo_->fontMetrics().elidedText(line, Qt::ElideRight, undo_->width() - kUndoPadding);
  }
  undo_->setText(lines.join('\n'));
}

void CommandBar::ShowNotices(const std::vector<Notice>& notices) {
  notices_->ShowNotices(notices);
  Fit();
}

int CommandBar::TextIn(int windowHeight) {
  return std::max(kLeastText, static_cast<int>(std::lround(kText * windowHeight)));
}

int CommandBar::RowIn(int windowHeight) {
  return TargetFor(TextIn(windowHeight)) + 2 * (kAboveRow + kFrame + kAroundBar);
}

void CommandBar::FitInto(const QRect& room, int windowHeight) {
  room_ = room;
  windowHeight_ = windowHeight;
  ScaleTo(windowHeight);
  const int most = room.width() - 2 * kAroundBar;
  for (const auto style : {Qt::ToolButtonTextUnderIcon, Qt::ToolButtonIconOnly}) {
    for (const auto& [button, icon] : buttons_) {
      // The one without an icon keeps its text.
      button->setToolButtonStyle(icon ? style : Qt::ToolButtonTextOnly);
    }
    for (const auto& [one, other] : {std::pair(pause_, resume_), std::pair(full_, normal_)}) {
      const int width = std::max(one->sizeHint().width(), other->sizeHint().width());
      one->setFixedWidth(width);
      other->setFixedWidth(width);
    }
    undo_->setFixedWidth(WidthOf(kUsualUndo));
    row_->invalidate();
    layout()->invalidate();
    if (row_->sizeHint().width() + Margins().width() <= most) break;
  }
  const int spare = most - row_->sizeHint().width() - Margins().width();
  undo_->setFixedWidth(std::clamp(undo_->width() + spare, 1, WidthOf(kWidestUndo)));
  row_->invalidate();
  ElideUndo();
  const int width = std::min(row_->sizeHint().width() + Margins().width(), most);
  const int row = row_->sizeHint().height();
  row_->parentWidget()->setFixedHeight(row);
  int height = row + Margins().height();
  if (!notices_->isHidden()) {
    // The lines may wrap in this width.
    const int wrapped = notices_->heightForWidth(width - Margins().width());
    height += std::max(wrapped, notices_->sizeHint().height()) + layout()->spacing();
  }
  const QSize size(width, height);
  setGeometry(room.left() + (room.width() - size.width()) / 2,
              room.bottom() + 1 - size.height() - kAroundBar, size.width(), size.height());
  layout()->activate();
  row_->activate();
}

}  // namespace corvanel
