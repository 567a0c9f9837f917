#include "display/window/frm_display.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <cmath>

#include "display/window/command_bar.h"
#include "display/window/countdown_panel.h"
#include "display/window/text_measure.h"
#include "display/window/text_row.h"

namespace corvanel {
namespace {

constexpr int kResizeSettles = 60;  // milliseconds

/// The virtual-key code of a key event; letters and the escape key have the same in both worlds.
int VirtualKey(const QKeyEvent& event) {
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
      return event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z ? event.key() : 0;
  }
}

}  // namespace

FrmDisplay::FrmDisplay(const Session& session, DisplayCommands& commands)
    : session_(session),
      commands_(commands),
      lblHeader_(new TextRow("lblHeader", this)),
      lblNow_(new TextRow("lblNow", this)),
      lblMin_(new CountdownPanel("lblMin", this)),
      lblInfo_(new TextRow("lblInfo", this)),
      lblMess_(new TextRow("lblMess", this)),
      lblEnd_(new TextRow("lblEnd", this)),
      lblBridgemate_(new TextRow("lblBridgemate", this)),
      fraCommand_(new CommandBar(this)) {
  setObjectName("frmDisplay");
  setMouseTracking(true);
  setAutoFillBackground(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(static_cast<int>(std::ceil(kLeastWindow)),
                 static_cast<int>(std::ceil(kLeastWindow)));
  timResize_.setSingleShot(true);
  timResize_.setInterval(kResizeSettles);
  connect(&timResize_, &QTimer::timeout, this, &FrmDisplay::Rearrange);
  timCommand_.setSingleShot(true);
  timCommand_.setInterval(kCommandBarMilliseconds);
  connect(&timCommand_, &QTimer::timeout, this, &FrmDisplay::HideCommandBar);
  connect(fraCommand_, &CommandBar::PauseClicked, this, [this] { commands_.cmdPause_Click(); });
  connect(fraCommand_, &CommandBar::ResumeClicked, this, [this] { commands_.cmdResume_Click(); });
  connect(fraCommand_, &CommandBar::NextRoundClicked, this,
          [this] { commands_.cmdNextRound_Click(); });
  connect(fraCommand_, &CommandBar::RestartClicked, this, [this] { commands_.cmdRestart_Click(); });
  connect(fraCommand_, &CommandBar::FullScreenClicked, this,
          [this](int index) { commands_.cmdFullScreen_Click(index, *this); });
  connect(fraCommand_, &CommandBar::CloseClicked, this,
          [this] { commands_.cmdClose_Click(*this); });
  connect(fraCommand_, &CommandBar::ChangeClicked, this, [this] { commands_.cmdChange_Click(); });
  connect(fraCommand_, &CommandBar::MinutesMoved, this,
          [this](int value) { commands_.vsbChange_Change(value); });
  HideCommandBar();
}

int32_t FrmDisplay::Background() const {
  return session_.elements[static_cast<size_t>(Element::ScreenBackground)].Backcolour;
}

LayoutInput FrmDisplay::Input() const {
  LayoutInput input;
  input.width = width();
  input.height = height();
  input.moving = face_.phase == Phase::Move;
  input.texts = WidestTextsOf(session_, static_cast<double>(face_.secondsLeft));
  input.show = session_.options.Show;
  return input;
}

void FrmDisplay::ShowFace(const ClockFace& face) {
  face_ = face;
  fraCommand_->ShowPaused(face.paused);
  if (!isVisible()) return;
  if (!timResize_.isActive() && Input() != placed_) PlaceElements();
  ShowTexts();
}

void FrmDisplay::ShowTimeOfDay(const std::string& time) {
  lblNow_->SetText(time);
}

void FrmDisplay::ShowFullScreenPair(bool fullScreen) {
  fraCommand_->ShowFullScreen(fullScreen);
}

void FrmDisplay::Rearrange() {
  timResize_.stop();
  PlaceElements();
  ShowTexts();
}

void FrmDisplay::PlaceElements() {
  placed_ = Input();
  const ElementStyles& styles = session_.elements;
  const Layout layout = LayOut(placed_, styles, QtTextMeasure());
  const auto style = [&](Element element) { return styles[static_cast<size_t>(element)]; };
  QPalette colours = palette();
  colours.setColor(QPalette::Window, ColourOf(Background()));
  setPalette(colours);
  lblHeader_->SetPlace(layout.header, style(Element::Title), Background());
  lblNow_->SetPlace(layout.now, style(Element::CurrentTime), Background());
  lblMin_->SetPlace(layout);
  lblMin_->setVisible(placed_.show[3] != 0);
  const TextPlace none;
  lblInfo_->SetPlace(placed_.moving ? none : layout.caption, style(Element::RoundInformation),
                     Background());
  lblMess_->SetPlace(placed_.moving ? layout.caption : none, style(Element::RoundInformation),
                     Background());
  lblEnd_->SetPlace(layout.finish, style(Element::FinishTime), Background());
  lblBridgemate_->SetPlace(layout.unit, style(Element::UnitInfo), Background());
  fraCommand_->FitInto(size());
  fraCommand_->raise();
}

void FrmDisplay::ShowTexts() {
  lblHeader_->SetText(session_.settings.Header);
  lblMin_->SetStyle(session_.elements[static_cast<size_t>(face_.countdownStyle)], Background());
  lblMin_->SetTexts(face_.countdown, StateWord(face_.phase, face_.paused, face_.countdownStyle));
  lblInfo_->SetText(face_.caption);
  lblMess_->SetText(face_.message);
  lblEnd_->SetText(FinishAndBreak(face_.finish, face_.breakLine));
}

QRect FrmDisplay::NormalPlace() const {
  const Options& options = session_.options;
  const auto pixels = [](int32_t twips) {
    return static_cast<int>(std::lround(twips / kTwipsPerPixel));
  };
  QRect place(pixels(options.FormX), pixels(options.FormY), pixels(options.FormSizeX),
              pixels(options.FormSizeY));
  // A window that would stand on a screen that is no longer there comes to the first one.
  if (QGuiApplication::screenAt(place.center()) == nullptr) {
    place.moveTopLeft(QGuiApplication::primaryScreen()->availableGeometry().topLeft());
  }
  return place;
}

void FrmDisplay::Restore() {
  setGeometry(NormalPlace());
  const bool fullScreen = session_.options.DisplayState == 0;
  SetFullScreen(fullScreen);
  ShowFullScreenPair(fullScreen);
}

WindowPlace FrmDisplay::Place() const {
  const QRect place = geometry();
  return {place.x() * kTwipsPerPixel, place.y() * kTwipsPerPixel, place.width() * kTwipsPerPixel,
          place.height() * kTwipsPerPixel, !isFullScreen() && !isMinimized()};
}

void FrmDisplay::SetFullScreen(bool fullScreen) {
  const Qt::WindowStates others = windowState() & ~(Qt::WindowFullScreen | Qt::WindowMinimized);
  // Without a window manager nobody else would fit the window to the screen, or take it back.
  if (fullScreen) {
    setGeometry(screen()->geometry());
    setWindowState(others | Qt::WindowFullScreen);
  } else {
    setWindowState(others);
    setGeometry(NormalPlace());
  }
}

void FrmDisplay::closeEvent(QCloseEvent* event) {
  event->ignore();
}

void FrmDisplay::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!isMinimized()) timResize_.start();
}

void FrmDisplay::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  Rearrange();
}

void FrmDisplay::mouseMoveEvent(QMouseEvent* event) {
  const QPoint place = event->globalPosition().toPoint();
  if (pointer_.Moved(place.x(), place.y())) ShowCommandBar();
}

void FrmDisplay::ShowCommandBar() {
  timCommand_.start();
  if (fraCommand_->isVisible()) return;
  fraCommand_->show();
  setCursor(Qt::ArrowCursor);
}

void FrmDisplay::HideCommandBar() {
  fraCommand_->hide();
  // A thin sign, far less visible in the room than the arrow.
  setCursor(Qt::IBeamCursor);
}

void FrmDisplay::keyPressEvent(QKeyEvent* event) {
  commands_.Form_KeyDown(VirtualKey(*event), *this);
}

}  // namespace corvanel
