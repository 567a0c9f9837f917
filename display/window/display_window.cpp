#include "display/window/display_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <cmath>

#include "display/state_words.h"
#include "display/window/command_bar.h"
#include "display/window/countdown_panel.h"
#include "display/window/progress_frame.h"
#include "display/window/text_measure.h"
#include "display/window/text_row.h"
#include "session/captions.h"
#include "session/contrast.h"

namespace corvanel {
namespace {

constexpr int kWindowSettles = 300;  // milliseconds
constexpr int kResizeSettles = 60;   // milliseconds

}  // namespace

DisplayWindow::DisplayWindow(const Session& session, DisplayCommands& commands,
                             LetterOfKey letterOfKey)
    : session_(session),
      commands_(commands),
      letterOfKey_(letterOfKey),
      lblHeader_(new TextRow("lblHeader", this)),
      lblNow_(new TextRow("lblNow", this)),
      lblMin_(new CountdownPanel("lblMin", this)),
      lblInfo_(new TextRow("lblInfo", this)),
      moveLine_(lblInfo_),
      lblState_(new TextRow("lblState", this)),
      lblEnd_(new TextRow("lblEnd", this)),
      lblBridgemate_(new TextRow("lblBridgemate", this)),
      fraProgress_(new ProgressFrame(this)),
      fraCommand_(new CommandBar(this)) {
  setMouseTracking(true);
  setAutoFillBackground(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(static_cast<int>(std::ceil(kLeastWindow)),
                 static_cast<int>(std::ceil(kLeastWindow)));
  timResize_.setSingleShot(true);
  timResize_.setInterval(kResizeSettles);
  connect(&timResize_, &QTimer::timeout, this, &DisplayWindow::Rearrange);
  timSettle_.setSingleShot(true);
  timSettle_.setInterval(kWindowSettles);
  connect(&timSettle_, &QTimer::timeout, this, [this] {
    if (!isVisible()) return;
    const QScreen* wanted = QGuiApplication::screenAt(normalPlace_.center());
    emit Landed(wanted == nullptr || wanted == screen());
    if (!fullScreen_) {
      // A title bar above the screen could not be taken hold of.
      const int above = screen()->availableGeometry().top() - frameGeometry().top();
      if (above > 0) move(x(), frameGeometry().top() + above);
      return;
    }
    // Some window managers take the state back, and without one nobody fits a window to its screen.
    if (!isFullScreen()) setWindowState(windowState() | Qt::WindowFullScreen);
    const QRect room = (wanted == nullptr ? screen() : wanted)->geometry();
    if (geometry() != room) setGeometry(room);
  });
  timCommand_.setSingleShot(true);
  timCommand_.setInterval(kCommandBarMilliseconds);
  connect(&timCommand_, &QTimer::timeout, this, &DisplayWindow::HideCommandBar);
  connect(fraCommand_, &CommandBar::Wanted, this,
          [this](DisplayCommand command) { commands_.Run(command, *this); });
  connect(fraCommand_, &CommandBar::MinutesMoved, this,
          [this](int value) { commands_.vsbChange_Change(value); });
  connect(fraCommand_, &CommandBar::NoticeActionWanted, this, &DisplayWindow::NoticeActionWanted);
  connect(fraCommand_, &CommandBar::NoticeDismissed, this, &DisplayWindow::NoticeDismissed);
  HideCommandBar();
}

QString DisplayWindow::TableTipAt(const QPoint& point) const {
  return fraProgress_->isVisible() ? fraProgress_->TipAt(point - fraProgress_->pos()) : QString();
}

Colour DisplayWindow::Background() const {
  return session_.elements[static_cast<size_t>(Element::ScreenBackground)].Backcolour;
}

LayoutInput DisplayWindow::Input() const {
  const Options& options = session_.options;
  LayoutInput input;
  input.width = width() - room_;
  input.height = height() - FootHeight();
  const double tablesWidth = input.width - 2 * MarginOf(input.width, input.height);
  input.tables = fraProgress_->TablesHeightIn(tablesWidth, input.height);
  input.moving = face_.phase == Phase::Move;
  input.texts = WidestTextsOf(session_, face_.secondsLeft);
  input.texts.large = StateWordsOf(face_, Waiting(), options.Form()).large;
  if (face_.phase == Phase::Move) input.texts.caption = face_.message;
  if (face_.phase == Phase::Break) input.texts.caption = face_.caption;
  if (face_.phase == Phase::Ended) input.texts.caption.clear();
  input.show = options.Show;
  // In the widest form that they can take, so that nothing jumps while numbers change.
  if (!ProgressLine().empty()) {
    input.texts.unit =
        "Last board not started at tables 28 28 28 · Tables 28 28 28 28 still playing";
  } else if (!UnitLine().empty()) {
    input.texts.unit = options.TableTopUnit + ": 88 of 88 tables finished";
  }
  return input;
}

/// The units' information can be kept from the players: then only the twin shows it.
bool DisplayWindow::ShowsUnits() const {
  return !session_.options.BMControl || Kind() == DisplayKind::Twin;
}

/// Whom an automatic pause waits for, as far as this window tells it.
std::string DisplayWindow::Waiting() const {
  return ShowsUnits() && session_.options.BMShowProgress ? tables_.waiting : std::string();
}

/// Whether the state itself says who still plays: no line repeats it.
bool DisplayWindow::SaysWhoPlays() const {
  return face_.paused && !Waiting().empty();
}

/// Who still plays.
std::string DisplayWindow::ProgressLine() const {
  if (!ShowsUnits() || !session_.options.BMShowProgress || SaysWhoPlays()) return {};
  std::string line;
  for (const std::string& part : tables_.lines) line += (line.empty() ? "" : " · ") + part;
  return line;
}

/// What the units say, where the line above does not say it already.
std::string DisplayWindow::UnitLine() const {
  const bool wanted = ShowsUnits() && session_.options.BMShowInfo && !SaysWhoPlays();
  return wanted && ProgressLine().empty() ? tables_.info : std::string();
}

void DisplayWindow::FillProgress() {
  const bool grid = ShowsUnits() && session_.options.BMShowTables;
  fraProgress_->Show(ProgressLine(), grid ? tables_.sections : std::vector<SectionCells>());
  lblBridgemate_->SetText(UnitLine());
}

void DisplayWindow::ShowTables(const ProgressFace& tables) {
  tables_ = tables;
  if (!isVisible()) return;
  FillProgress();
  if (Input() != placed_) {
    Rearrange();
  } else {
    PlaceProgress();
  }
}

void DisplayWindow::ShowFace(const ClockFace& face) {
  const bool other = face.paused != face_.paused || face.phase != face_.phase;
  face_ = face;
  fraCommand_->ShowPaused(face.paused);
  fraCommand_->ShowPossible(face.can);
  fraCommand_->ShowUndo(QString::fromStdString(face.undo));
  if (!isVisible()) return;
  if (other) FillProgress();
  if (!timResize_.isActive() && Input() != placed_) PlaceElements();
  ShowTexts();
}

void DisplayWindow::ShowTimeOfDay(const std::string& time) {
  lblNow_->SetText(time);
}

QRect DisplayWindow::CountdownOnScreen() const {
  return lblMin_->DigitsPlace().translated(lblMin_->mapToGlobal(QPoint(0, 0)));
}

void DisplayWindow::MakeRoom(int pixels) {
  if (room_ == pixels) return;
  room_ = pixels;
  Rearrange();
}

void DisplayWindow::ShowNotices(const std::vector<Notice>& notices) {
  fraCommand_->ShowNotices(notices);
}

void DisplayWindow::ShowFullScreenPair(bool fullScreen) {
  fraCommand_->ShowFullScreen(fullScreen);
}

void DisplayWindow::Rearrange() {
  timResize_.stop();
  FillProgress();
  PlaceElements();
  ShowTexts();
}

void DisplayWindow::PlaceElements() {
  placed_ = Input();
  const ElementStyles& styles = session_.elements;
  layout_ = LayOut(placed_, styles, QtTextMeasure());
  const auto style = [&](Element element) { return styles[static_cast<size_t>(element)]; };
  QPalette colours = palette();
  colours.setColor(QPalette::Window, ColourOf(Background()));
  setPalette(colours);
  lblHeader_->SetPlace(layout_.header, style(Element::Title), Background());
  lblNow_->SetPlace(layout_.now, style(Element::CurrentTime), Background());
  lblMin_->SetPlace(layout_);
  lblMin_->setVisible(placed_.show[3]);
  lblState_->SetPlace(layout_.large, style(Element::RoundInformation), Background());
  TextRow* line = placed_.moving ? moveLine_ : lblInfo_;
  for (TextRow* row : {lblInfo_, moveLine_}) {
    row->SetPlace(row == line ? layout_.caption : TextPlace{}, style(Element::RoundInformation),
                  Background());
  }
  lblEnd_->SetPlace(layout_.finish, style(Element::FinishTime), Background());
  PlaceProgress();
  // While it is shown it moves with the window alone: a line that comes or goes at the foot must
  // not put another button under the director's pointer.
  if (fraCommand_->isHidden() || barIn_ != size()) PlaceCommandBar();
  fraCommand_->raise();
  PlaceFoot();
}

/// The one line about the tables, and their grid.
void DisplayWindow::PlaceProgress() {
  const ElementStyle& style = session_.elements[static_cast<size_t>(Element::UnitInfo)];
  lblBridgemate_->SetPlace(UnitLine().empty() ? TextPlace{} : layout_.unit, style, Background());
  fraProgress_->SetPlace(layout_, style, Background(), placed_.height);
}

void DisplayWindow::ShowTexts() {
  lblHeader_->SetText(ShownTitle(session_.settings.Header));
  const StateWords words = StateWordsOf(face_, Waiting(), session_.options.Form());
  ElementStyle countdown = session_.elements[static_cast<size_t>(face_.countdownStyle)];
  if (face_.paused) countdown.Forecolour = Receded(countdown);
  lblMin_->SetStyle(countdown, Background());
  lblMin_->SetTexts(face_.countdown, words.tag);
  std::string state = face_.phase == Phase::Move ? face_.message : face_.caption;
  for (const std::string& word : {words.tag, words.large}) {
    if (!word.empty()) state += ", " + word;
  }
  lblMin_->Announce(state);
  lblState_->SetText(words.large);
  lblInfo_->SetText(face_.caption);
  if (face_.phase == Phase::Move) moveLine_->SetText(face_.message);
  lblEnd_->SetText(FinishAndBreak(face_.finish, face_.breakLine));
}

void DisplayWindow::PlaceAt(const QRect& place, bool fullScreen) {
  normalPlace_ = place;
  fullScreen_ = fullScreen;
  if (isVisible()) Settle();
}

WindowPlace DisplayWindow::Place() const {
  const QRect place = isVisible() ? geometry() : normalPlace_;
  return {place.x() * kTwipsPerPixel, place.y() * kTwipsPerPixel, place.width() * kTwipsPerPixel,
          place.height() * kTwipsPerPixel, !fullScreen_ && !isMaximized() && !isMinimized()};
}

void DisplayWindow::SetFullScreen(bool fullScreen) {
  if (isVisible() && Place().normal) normalPlace_ = geometry();
  fullScreen_ = fullScreen;
  if (isVisible()) Settle();
}

void DisplayWindow::setVisible(bool visible) {
  if (visible == isVisible()) return QWidget::setVisible(visible);
  if (!visible && Place().normal) normalPlace_ = geometry();
  if (visible) Settle();
  QWidget::setVisible(visible);
  if (visible) emit StateChanged();
}

/// Brings the window to where it is wanted. From its normal place it goes full screen on the right
/// screen; what the window system makes of it is looked at when that has settled.
void DisplayWindow::Settle() {
  timSettle_.start();
  constexpr Qt::WindowStates kOurs =
      Qt::WindowFullScreen | Qt::WindowMaximized | Qt::WindowMinimized;
  setWindowState(windowState() & ~kOurs);
  if (normalPlace_.isValid()) setGeometry(normalPlace_);
  if (fullScreen_) setWindowState(windowState() | Qt::WindowFullScreen);
}

void DisplayWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange || !isVisible() || timSettle_.isActive()) return;
  fullScreen_ = isFullScreen();
  emit StateChanged();
}

void DisplayWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
}

void DisplayWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!isMinimized()) timResize_.start();
}

void DisplayWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  Rearrange();
}

void DisplayWindow::mouseMoveEvent(QMouseEvent* event) {
  const QPoint place = event->globalPosition().toPoint();
  if (pointer_.Moved(place.x(), place.y())) ShowCommandBar();
}

void DisplayWindow::PlaceCommandBar() {
  barIn_ = size();
  fraCommand_->FitInto(BarRoom(), height());
}

void DisplayWindow::ShowCommandBar() {
  timCommand_.start();
  if (fraCommand_->isVisible()) return;
  PlaceCommandBar();
  fraCommand_->show();
  setCursor(Qt::ArrowCursor);
}

void DisplayWindow::HideCommandBar() {
  fraCommand_->hide();
  // A thin sign, far less visible in the room than the arrow.
  setCursor(Qt::IBeamCursor);
}

/// The virtual-key code of a key event; letters and the escape key have the same in both worlds.
/// 0 for a key that means nothing here, and for a command of the desktop's.
int DisplayWindow::VirtualKey(const QKeyEvent& event) const {
  if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return 0;
  const bool pad = event.modifiers() & Qt::KeypadModifier;
  switch (event.key()) {
    case Qt::Key_Escape:
      return key::kEscape;
    case Qt::Key_F1:
      return key::kF1;
    case Qt::Key_Plus:
      return pad ? key::kAdd : key::kPlus;
    case Qt::Key_Equal:
      return key::kPlus;
    case Qt::Key_Minus:
      return pad ? key::kSubtract : key::kMinus;
    case Qt::Key_Underscore:
      return key::kMinus;
    default:
      break;
  }
  if (event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) return event.key();
  const bool otherLetter = !event.text().isEmpty() && event.text()[0].isLetter();
  return otherLetter ? letterOfKey_(event.nativeScanCode()) : 0;
}

void DisplayWindow::keyPressEvent(QKeyEvent* event) {
  const bool twin = Kind() == DisplayKind::Twin || session_.settings.ExtraMonitor;
  const auto command = CommandOfKey(VirtualKey(*event), twin);
  // A key that is held down, or that something lies on, must not throw round after round away:
  // only minutes are repeated.
  const bool repeats =
      command == DisplayCommand::AddMinute || command == DisplayCommand::SubtractMinute;
  if (command && (repeats || !event->isAutoRepeat())) commands_.Run(*command, *this);
}

}  // namespace corvanel
