#include "display/window/display_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <cmath>

#include "display/window/command_bar.h"
#include "display/window/display_picture.h"
#include "widgets/colours.h"

namespace corvanel {
namespace {

constexpr int kWindowSettles = 300;     // milliseconds
constexpr int kResizeSettles = 60;      // milliseconds
constexpr int kHint = 8000;             // milliseconds
constexpr double kLeastMargin = 0.012;  // of the height, below the chip
constexpr const char* kChipStyle =
    "background: #DCE5F4; color: #10203C; border: 1px solid #9FB0CC; border-radius: 8px;"
    "padding: 2px 14px; font-size: %1px;";

}  // namespace

DisplayWindow::DisplayWindow(const Session& session, DisplayKind kind, DisplayCommands& commands,
                             LetterOfKey letterOfKey)
    : session_(session),
      kind_(kind),
      commands_(commands),
      letterOfKey_(letterOfKey),
      picture_(new DisplayPicture(session, kind, this)),
      fraCommand_(new CommandBar(this)),
      lblChip_(new QLabel(this)) {
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
  lblChip_->setObjectName("lblChip");
  lblChip_->setTextFormat(Qt::PlainText);  // a device may be called anything
  lblChip_->setAttribute(Qt::WA_TransparentForMouseEvents);
  lblChip_->hide();
  timHint_.setSingleShot(true);
  timHint_.setInterval(kHint);
  connect(&timHint_, &QTimer::timeout, this, &DisplayWindow::ShowChip);
  timCommand_.setSingleShot(true);
  timCommand_.setInterval(kCommandBarMilliseconds);
  connect(&timCommand_, &QTimer::timeout, this, [this] {
    HideCommandBar();
    ShowChip();
  });
  // The window has the keys, and what has them is read aloud when its name changes.
  connect(picture_, &DisplayPicture::Announced, this, &QWidget::setAccessibleName);
  connect(fraCommand_, &CommandBar::Wanted, this,
          [this](DisplayCommand command) { commands_.Run(command, *this); });
  connect(fraCommand_, &CommandBar::MinutesMoved, this,
          [this](int value) { commands_.vsbChange_Change(value); });
  connect(fraCommand_, &CommandBar::NoticeActionWanted, this, &DisplayWindow::NoticeActionWanted);
  connect(fraCommand_, &CommandBar::NoticeDismissed, this, &DisplayWindow::NoticeDismissed);
  HideCommandBar();
}

void DisplayWindow::ShowFace(const ClockFace& face) {
  fraCommand_->ShowPaused(face.paused);
  fraCommand_->ShowPossible(face.can);
  // What in one line, and when in the next.
  fraCommand_->ShowUndo(QString::fromStdString(face.undo).replace(", ", ",\n"));
  picture_->ShowFace(face);
  if (done_ == face.done) return;
  done_ = face.done;
  ShowChip();
}

void DisplayWindow::ShowHint() {
  timHint_.start();
  ShowChip();
}

/// Whether the director works here: with a twin the room's display is the players' alone.
bool DisplayWindow::IsDirectors() const {
  return kind_ == DisplayKind::Twin || !session_.settings.ExtraMonitor;
}

/// A word in the margin at the foot, where it covers nothing: how to find the keys, or what one
/// just did. The command bar's own chip tells that when it is there.
void DisplayWindow::ShowChip() {
  QString text;
  if (timHint_.isActive()) {
    text = tr("Move the mouse for buttons · F1 keys · Esc back");
  } else if (!done_.empty() && IsDirectors()) {
    const QString done = QString::fromStdString(done_);
    text = tr("%1 · U undoes").arg(done[0].toUpper() + done.mid(1));
  }
  lblChip_->setVisible(!text.isEmpty() && fraCommand_->isHidden());
  if (lblChip_->isHidden()) return;
  lblChip_->setText(text);
  lblChip_->setStyleSheet(QString(kChipStyle).arg(CommandBar::TextIn(height())));
  lblChip_->adjustSize();
  const QRect room = BarRoom();
  const double strip =
      kind_ == DisplayKind::Twin ? CommandBar::RowIn(height()) : MarginOf(width(), height());
  const int least = static_cast<int>(kLeastMargin * height());
  const int above = std::max((static_cast<int>(strip) - lblChip_->height()) / 2, least);
  lblChip_->move(room.center().x() - lblChip_->width() / 2,
                 room.bottom() + 1 - lblChip_->height() - above);
  lblChip_->raise();
}

void DisplayWindow::ShowTimeOfDay(const std::string& time) {
  picture_->ShowTimeOfDay(time);
}

void DisplayWindow::ShowTables(const ProgressFace& tables) {
  picture_->ShowTables(tables);
}

Colour DisplayWindow::Background() const {
  return picture_->Background();
}

QString DisplayWindow::TableTipAt(const QPoint& point) const {
  return picture_->TableTipAt(point);
}

QRect DisplayWindow::CountdownOnScreen() const {
  return picture_->CountdownOnScreen();
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
  picture_->setGeometry(0, 0, width() - room_ - SideWidth(), height() - FootHeight());
  picture_->Rearrange();
  QPalette colours = palette();
  colours.setColor(QPalette::Window, ColourOf(Background()));
  setPalette(colours);
  // While it is shown it moves with the window alone: a line that comes or goes at the foot must
  // not put another button under the director's pointer.
  if (fraCommand_->isHidden() || barIn_ != size()) PlaceCommandBar();
  PlaceEdges();
  ShowChip();
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
  ShowChip();
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
