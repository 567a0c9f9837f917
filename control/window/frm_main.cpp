#include "control/window/frm_main.h"

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QRegularExpression>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QTimer>
#include <algorithm>

#include "control/window/entry_box.h"
#include "control/window/live_countdown.h"
#include "control/window/page_style.h"
#include "control/window/timetable_bar.h"
#include "ui_frm_main.h"
#include "widgets/letters.h"

namespace corvanel {
namespace {

constexpr int kWidestName = 180;  // pixels
constexpr size_t kMostLines = 2;  // for the director; the rest wait
constexpr int kBetweenCards = 8;  // pixels
constexpr int kAroundLine = 12;   // pixels, of a line for the director

/// A property that the page's style knows.
void SetLook(QWidget* widget, const char* property, bool on) {
  if (widget->property(property) == QVariant(on)) return;
  widget->setProperty(property, on);
  widget->style()->unpolish(widget);
  widget->style()->polish(widget);
}

}  // namespace

FrmMain::FrmMain(const Session& session, QWidget* parent)
    : QMainWindow(parent), session_(session), ui_(std::make_unique<Ui::FrmMain>()) {
  ui_->setupUi(this);
  for (size_t i = 0; i < boxes_.size(); ++i) {
    const auto box = static_cast<Box>(i);
    boxes_[i] = findChild<EntryBox*>(QString::fromUtf8(
        RuleOf(box).name.data(), static_cast<qsizetype>(RuleOf(box).name.size())));
    boxes_[i]->SetBox(box);
  }
  ui_->txtHeader->setAccessibleName(tr("Title"));
  ui_->menubar->setCornerWidget(ui_->fraVersion);
  ui_->cmdResume->hide();
  ui_->layoutLoad->insertWidget(2, ui_->lblFavChanged);
  QSizePolicy kept = ui_->lblFavChanged->sizePolicy();
  kept.setRetainSizeWhenHidden(true);
  ui_->lblFavChanged->setSizePolicy(kept);
  ui_->fraNotices->SetMost(kMostLines);
  // Of the page alone: dialogs over this window keep their own colours.
  DressPage(*centralWidget());
  connect(ui_->fraNotices, &NoticeList::ActionWanted, this, &FrmMain::NoticeActionWanted);
  connect(ui_->fraNotices, &NoticeList::Dismissed, this, &FrmMain::NoticeDismissed);
}

void FrmMain::ShowNotices(const std::vector<Notice>& notices) {
  ui_->fraNotices->ShowNotices(notices);
}

FrmMain::~FrmMain() = default;

QCheckBox* FrmMain::CheckOf(Tick tick) const {
  switch (tick) {
    case Tick::chkBreak:
      return ui_->chkBreak;
    case Tick::chkMoveAfterBreak:
      return ui_->chkMoveAfterBreak;
    case Tick::chkMonitor:
      return ui_->chkMonitor;
    case Tick::chkHeader:
      return ui_->chkHeader;
  }
  return nullptr;
}

void FrmMain::SetLogic(ControlWindow& logic) {
  logic_ = &logic;
  for (EntryBox* box : boxes_) {
    connect(box, &EntryBox::Edited, this, [this, box](const QString& text) {
      logic_->Change(box->WhichBox(), text.toStdString());
    });
    connect(box, &EntryBox::EnterPressed, this,
            [this, box] { Focus(logic_->EnterLeadsTo(box->WhichBox())); });
    connect(box, &EntryBox::Leaving, this, [this, box] { Leave(box); });
  }
  // clicked comes from the director alone, toggled would come from SetTick too.
  connect(ui_->chkBreak, &QCheckBox::clicked, this,
          [this](bool on) { logic_->chkBreak_Click(on); });
  for (QCheckBox* box : {ui_->chkBreak, ui_->chkHeader}) {
    connect(box, &QCheckBox::toggled, this, &FrmMain::ShowWhatIsOff);
  }
  ShowWhatIsOff();
  connect(ui_->chkMoveAfterBreak, &QCheckBox::clicked, this,
          [this](bool on) { logic_->chkMoveAfterBreak_Click(on); });
  connect(ui_->chkMonitor, &QCheckBox::clicked, this,
          [this](bool on) { logic_->chkMonitor_Click(on); });
  connect(ui_->chkHeader, &QCheckBox::clicked, this,
          [this](bool on) { logic_->chkHeader_Click(on); });
  connect(ui_->optCalc_0, &QPushButton::clicked, this, [this] { logic_->optCalc_Click(0); });
  connect(ui_->optCalc_1, &QPushButton::clicked, this, [this] { logic_->optCalc_Click(1); });
  connect(ui_->cmdStart, &QPushButton::clicked, this, [this] { logic_->cmdStart_Click(); });
  connect(ui_->cmdResume, &QPushButton::clicked, this, [this] { logic_->cmdResume_Click(); });
  connect(ui_->cmdStop, &QPushButton::clicked, this, [this] { logic_->cmdStop_Click(); });
  const auto listed = [this] { return ui_->cboFavs->currentText().toStdString(); };
  connect(ui_->cmdSaveDefault, &QPushButton::clicked, this,
          [this] { emit SaveAsNew(ui_->txtDefault->text().trimmed().toStdString()); });
  connect(ui_->txtDefault, &QLineEdit::returnPressed, ui_->cmdSaveDefault, &QPushButton::click);
  ui_->cboFavs->installEventFilter(this);
  ui_->cboFavs->view()->setAccessibleName(tr("Favourites"));
  connect(ui_->cboFavs, &QComboBox::activated, this,
          [this, listed] { emit FavouriteChosen(listed()); });
  connect(ui_->cmdFavSave, &QPushButton::clicked, this,
          [this, listed] { emit FavouriteSaveWanted(listed()); });
  connect(ui_->cboFavs, &QComboBox::currentIndexChanged, this,
          [this](int index) { ui_->cmdFavDelete->setEnabled(index >= 0); });
  connect(ui_->cmdFavDelete, &QPushButton::clicked, this,
          [this, listed] { emit FavouriteDeleteWanted(listed()); });
  ConnectLive();
}

QList<QAction*> FrmMain::MenuEntries() const {
  return findChildren<QAction*>(QRegularExpression("^mnu"));
}

void FrmMain::Leave(EntryBox* box) {
  if (logic_->Leave(box->WhichBox(), box->text().toStdString())) return;
  // The focus is on its way to another control; it comes back once it has arrived there.
  QTimer::singleShot(0, box, [box] { box->setFocus(Qt::OtherFocusReason); });
}

void FrmMain::ShowTakenOver(const std::vector<Box>& boxes) {
  for (size_t i = 0; i < boxes_.size(); ++i) {
    const auto found = std::find(boxes.begin(), boxes.end(), static_cast<Box>(i));
    SetLook(boxes_[i], "taken", found != boxes.end());
  }
}

void FrmMain::SetText(Box box, const std::string& text) {
  BoxOf(box)->Show(QString::fromStdString(text));
}

void FrmMain::SetLabel(Label label, const std::string& text) {
  const QString shown = QString::fromStdString(text);
  switch (label) {
    case Label::lblFinish:
      ui_->lblFinish->setText(shown);
      break;
    case Label::lblFinishTime:
      ui_->lblFinishTime->setText(shown);
      break;
    case Label::lblBreakTime:
      ui_->lblBreakTime->setText(shown);
      ui_->lblBreakTimeCaption->setVisible(!shown.isEmpty());
      break;
    case Label::lblMinPerRound:
      ui_->lblMinPerRound->setText(shown);
      break;
    case Label::cmdStart:
      ui_->cmdStart->setText(shown);
      break;
  }
}

void FrmMain::SetTick(Tick tick, bool on) {
  CheckOf(tick)->setChecked(on);
}

/// What belongs to a break that is not taken, or to a title that is not shown, looks off; it can be
/// set all the same, and Enter leads through it.
void FrmMain::ShowWhatIsOff() {
  for (QWidget* widget : std::initializer_list<QWidget*>{ui_->lblBreakRound, ui_->txtBreakRound,
                                                         ui_->lblBreakLength, ui_->txtBreakLength,
                                                         ui_->unitBreak, ui_->chkMoveAfterBreak}) {
    SetLook(widget, "off", !ui_->chkBreak->isChecked());
  }
  SetLook(ui_->txtHeader, "off", !ui_->chkHeader->isChecked());
}

/// Rows of one height, so that those of both cards share their base lines; as far apart as the
/// window allows beside two lines for the director, which then move nothing when they come.
void FrmMain::AlignRows() {
  const int height =
      std::max(ui_->txtnRounds->sizeHint().height(), ui_->optCalc_0->sizeHint().height());
  constexpr int kRows = 10;
  constexpr int kRowOfFinish = 4;
  constexpr int kMostSpacing = 10;  // pixels
  for (int row = 0; row < kRows; ++row) {
    const bool shown = row != kRowOfFinish || !ui_->txtFinishTime->isHidden();
    ui_->layoutRounds->setRowMinimumHeight(row, shown ? height : 0);
    ui_->layoutBreak->setRowMinimumHeight(row, height);
  }
  ui_->layoutPage->setSpacing(kBetweenCards);
  ui_->layoutPage->invalidate();
  const int lines = 2 * (fontMetrics().height() + kAroundLine);
  const int without =
      ui_->layoutPage->minimumSize().height() - (kRows - 1) * ui_->layoutBreak->verticalSpacing();
  const int spacing =
      std::clamp((centralWidget()->height() - lines - without) / (kRows - 1), 1, kMostSpacing);
  if (spacing == 1) ui_->layoutPage->setSpacing(kBetweenCards / 2);
  for (QGridLayout* rows : {ui_->layoutRounds, ui_->layoutBreak}) rows->setVerticalSpacing(spacing);
}

void FrmMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  AlignRows();
}

void FrmMain::SetMode(int calculate) {
  const bool finishWanted = calculate == 1;
  (finishWanted ? ui_->optCalc_1 : ui_->optCalc_0)->setChecked(true);
  ui_->txtMinPerRound->setVisible(!finishWanted);
  ui_->lblMinPerRound->setVisible(finishWanted);
  ui_->txtFinishTime->setVisible(finishWanted);
  ui_->lblFinishCaption->setVisible(finishWanted);
  AlignRows();
}

void FrmMain::Focus(Box box) {
  BoxOf(box)->setFocus(Qt::OtherFocusReason);
}

bool FrmMain::CommitEditing() {
  const auto* box = qobject_cast<EntryBox*>(focusWidget());
  return box == nullptr || logic_->Commit(box->WhichBox(), box->text().toStdString());
}

void FrmMain::OfferFavouriteSave(bool offered) {
  ui_->cmdFavSave->setEnabled(offered);
  ui_->lblFavChanged->setVisible(offered && !ui_->fraLoad->isHidden());
}

void FrmMain::OfferResume() {
  ui_->cmdResume->setEnabled(true);
  ui_->cmdResume->show();
}

void FrmMain::ShowEvening(const Evening& evening) {
  ui_->barTimetable->Show(evening, session_);
}

void FrmMain::ShowLive(const std::optional<LiveStrip>& live) {
  if (live_ != live.has_value()) {
    live_ = live.has_value();
    ArrangeStart();
    AlignRows();
  }
  if (!live) return;
  ui_->lblLive->setText(QString::fromStdString(live->caption));
  SetLook(ui_->lblLive, "held", live->can.resume);
  ui_->lblLiveTime->Show(live->countdown, live->style);
  ui_->cmdLivePause->setVisible(!live->can.resume);
  ui_->cmdLivePause->setEnabled(live->can.pause);
  ui_->cmdLiveResume->setVisible(live->can.resume);
  ui_->cmdLiveMinus->setEnabled(live->can.minutes);
  ui_->cmdLivePlus->setEnabled(live->can.minutes);
  ui_->cmdLiveNext->setEnabled(live->can.nextRound);
  // When the command was given is for who asks.
  const QString undo = QString::fromStdString(live->undo);
  ui_->cmdLiveUndo->setText(undo.isEmpty() ? tr("Undo") : undo.section(',', 0, 0));
  ui_->cmdLiveUndo->setToolTip(undo + tr(" (Ctrl+Z)"));
  ui_->cmdLiveUndo->setEnabled(!live->undo.empty());
}

/// One strong button: Start while the director plans, the way back to the clock while it runs.
void FrmMain::ArrangeStart() {
  for (QWidget* widget :
       {static_cast<QWidget*>(ui_->lblLive), static_cast<QWidget*>(ui_->lblLiveTime), liveRoom_,
        static_cast<QWidget*>(ui_->fraLive)}) {
    widget->setVisible(live_);
  }
  QHBoxLayout* row = live_ ? ui_->layoutLiveRow : ui_->layoutStartRow;
  row->addWidget(ui_->cmdStop);
  row->addWidget(ui_->cmdStart);
  for (const auto& [button, strong] :
       {std::pair(ui_->cmdStart, !live_), std::pair(ui_->cmdResume, live_)}) {
    SetLook(button, "primary", strong);
    button->setToolTip(strong ? tr("Ctrl+Enter") : QString());
  }
}

void FrmMain::ConnectLive() {
  const std::pair<QPushButton*, SessionCommand> buttons[] = {
      {ui_->cmdLivePause, SessionCommand::Pause},
      {ui_->cmdLiveResume, SessionCommand::Resume},
      {ui_->cmdLiveMinus, SessionCommand::SubtractMinute},
      {ui_->cmdLivePlus, SessionCommand::AddMinute},
      {ui_->cmdLiveNext, SessionCommand::NextRound},
      {ui_->cmdLiveUndo, SessionCommand::Undo}};
  for (const auto& [button, command] : buttons) {
    connect(button, &QPushButton::clicked, this,
            [this, command = command] { logic_->cmdLive_Click(command); });
  }
  // The two of the pair take one place.
  const int wide =
      std::max(ui_->cmdLivePause->sizeHint().width(), ui_->cmdLiveResume->sizeHint().width());
  ui_->cmdLivePause->setMinimumWidth(wide);
  ui_->cmdLiveResume->setMinimumWidth(wide);
  // Enter presses the one that has the focus, as in a dialog.
  ui_->cmdResume->setAutoDefault(true);
  ui_->cmdStart->setAutoDefault(true);
  // Beside the state nothing moves when that says more or less.
  ui_->layoutLive->setAlignment(ui_->lblLive, Qt::AlignLeft);
  QFont bold = ui_->lblLive->font();
  bold.setBold(true);
  liveRoom_ = new QWidget(this);
  liveRoom_->setFixedSize(
      QFontMetrics(bold).horizontalAdvance(tr("Paused · Round 88 of 88 · early warning")) + 12, 0);
  ui_->layoutLive->addWidget(liveRoom_);
  const auto strong = [this] { live_ ? logic_->cmdResume_Click() : logic_->cmdStart_Click(); };
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this), &QShortcut::activated, this,
          strong);
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, [this] {
    if (live_) logic_->cmdResume_Click();
  });
  connect(new QShortcut(QKeySequence(Qt::Key_F10), this), &QShortcut::activated, this, [this] {
    ui_->menubar->setFocus(Qt::MenuBarFocusReason);
    ui_->menubar->setActiveAction(ui_->mnuSettings->menuAction());
  });
  ArrangeStart();
}

void FrmMain::ShowVersion(const QString& version) {
  setWindowTitle(QStringLiteral("Corvanel v") + version);
  ui_->lblVersion->setText(tr("Version ") + version);
}

void FrmMain::ShowScoring(const std::string& unit, const std::string& file) {
  // A unit's own name may hold the character that marks a menu's key.
  const QString caption = QString::fromStdString(unit).replace('&', "&&");
  // B is the letter of the menu; another unit's first one may belong to something else.
  ui_->mnuBridgemate->setTitle(caption.startsWith('B', Qt::CaseInsensitive) ? "&" + caption
                                                                            : caption);
  ui_->mnuOptionsBridgemate->setText(CaptionOf(QString::fromStdString(unit), "gdsn") + "...");
  const QString path = QString::fromStdString(file);
  const QString name = path.section('/', -1);
  ui_->mnuCloseFile->setEnabled(!name.isEmpty());
  ui_->lblScoringFile->setText(name.isEmpty() ? QString() : tr("Scoring file: ") + name);
  ui_->lblScoringFile->setToolTip(path);
  // Put there once more: only then does the menu bar give it the room that it needs now.
  ui_->menubar->setCornerWidget(ui_->fraVersion);
}

void FrmMain::ShowFavourites(const std::vector<std::string>& names, const std::string& text) {
  ui_->cboFavs->clear();
  for (const std::string& name : names) ui_->cboFavs->addItem(QString::fromStdString(name));
  // -1 where none is in use: the list must not show one that is not.
  ui_->cboFavs->setCurrentIndex(ui_->cboFavs->findText(QString::fromStdString(text)));
  ui_->cmdFavDelete->setEnabled(ui_->cboFavs->currentIndex() >= 0);
  ui_->fraLoad->setVisible(!names.empty());
}

void FrmMain::ShowInUse(const std::string& name) {
  const QString text = QString::fromStdString(name);
  ui_->lblFavInUse->setText(
      ui_->lblFavInUse->fontMetrics().elidedText(text, Qt::ElideRight, kWidestName));
  ui_->lblFavInUse->setToolTip(text);
  // The list says it already, unless it shows another one.
  ui_->lblFavInUse->setVisible(text != ui_->cboFavs->currentText());
}

void FrmMain::ClearNewName() {
  ui_->txtDefault->clear();
}

/// A turn of the wheel over the closed list scrolls the page, and loads no favourite.
bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
  if (watched != ui_->cboFavs || event->type() != QEvent::Wheel) {
    return QMainWindow::eventFilter(watched, event);
  }
  event->ignore();
  return true;
}

void FrmMain::closeEvent(QCloseEvent* event) {
  // The program ends by its own way out, which may ask; the window itself is never closed.
  event->ignore();
  logic_->cmdStop_Click();
}

void FrmMain::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  AlignRows();
  if (live_) {
    ui_->cmdResume->setFocus();
  } else if (focusWidget() == nullptr) {
    ui_->txtnRounds->setFocus();
  }
  // All is in sight, in a large font too; on a small or strongly scaled screen the page scrolls
  // rather than reach beyond the edge.
  const QSize whole =
      size() - ui_->scroll->viewport()->size() + ui_->scroll->widget()->minimumSizeHint();
  const QSize room = screen()->availableSize() - QSize(8, 40);  // less the window's frame
  if (!isMaximized() && !isFullScreen()) resize(size().expandedTo(whole).boundedTo(room));
}

}  // namespace corvanel
