// The desktop program's displays: where they stand, and the screens they
// stand on.

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>
#include <cmath>

#include "app/desktop.h"
#include "display/screen_plan.h"
#include "display/window/frm_help.h"
#include "display/window/text_row.h"
#include "system/desktop_session.h"

namespace corvanel {
namespace {

constexpr int kWindowsSettle = 300;  // milliseconds that the window system moves windows about

}  // namespace

void Desktop::ConnectDisplays() {
  for (DisplayWindow* display :
       {static_cast<DisplayWindow*>(&frmDisplay_), static_cast<DisplayWindow*>(&frmDisplay2_)}) {
    const bool twin = display == static_cast<DisplayWindow*>(&frmDisplay2_);
    display->setWindowTitle(frmMain_.windowTitle() +
                            (twin ? tr(" - director's display") : tr(" - room display")));
    On(display, &DisplayWindow::Landed, "frmDisplay.Landed", [this, display](bool there) {
      watch_.DisplayLanded(display->windowTitle().toStdString(), there);
      LeaveTheKeysWithTheTwin();
    });
    On(display, &DisplayWindow::StateChanged, "frmDisplay.StateChanged", [this, display] {
      ShowFullScreenPair(!display->Place().normal);
      ShowMonitorPairs();
      LeaveTheKeysWithTheTwin();
    });
  }
  const auto later = [this](const QScreen*) {
    // The window system is still moving windows about.
    QTimer::singleShot(kWindowsSettle, this, [this] { ScreensChanged(); });
  };
  On(qApp, &QGuiApplication::screenAdded, "modTimer.ScreenAdded", later);
  On(qApp, &QGuiApplication::screenRemoved, "modTimer.ScreenRemoved", later);
}

/// A room display that comes to the front must not take the director's keys with it.
void Desktop::LeaveTheKeysWithTheTwin() {
  QTimer::singleShot(kWindowsSettle, &frmDisplay2_, [this] {
    const QWidget* active = QApplication::activeWindow();
    if (frmDisplay2_.isVisible() && (active == nullptr || active == &frmDisplay_)) {
      frmDisplay2_.activateWindow();
    }
  });
}

/// What the checks before a start see; nothing while the director does not plan.
std::optional<Surroundings> Desktop::LookAround() {
  if (!frmMain_.isVisible()) return std::nullopt;
  scoring_.CheckFile();
  return Surroundings{sounds_, sounds_.OutputProblem(), scoring_.Link().IsOpen(),
                      scoring_.Problem(), QGuiApplication::screens().size() > 1};
}

/// The one that the director works with. The twin is his also while it makes way for a question.
const QWidget* Desktop::DirectorsWindow() const {
  if (frmMain_.isVisible()) return &frmMain_;
  return UsesTwin() ? static_cast<const QWidget*>(&frmDisplay2_) : &frmDisplay_;
}

void Desktop::ComeToFront(const QString& token) {
  if (!loaded_ && !(splash_ && splash_->isVisible())) return;  // the control window is on its way
  QWidget* front = &frmMain_;
  if (splash_ && splash_->isVisible()) front = splash_.get();
  if (frmDisplay_.isVisible() && !frmMain_.isVisible()) front = &frmDisplay_;
  if (frmDisplay2_.isVisible() && !frmMain_.isVisible()) front = &frmDisplay2_;
  for (QWidget* window : {static_cast<QWidget*>(&frmDisplay_), front}) {
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
  }
  front->show();
  front->raise();
  UseStartToken(token.toStdString(), QGuiApplication::platformName() == "xcb" ? front->winId() : 0);
  front->activateWindow();
}

void Desktop::OpenScoringFile(const QString& file) {
  if (loaded_) {
    scoring_.Open(file.toStdString());
  } else {
    openFirst_ = file.toStdString();
  }
}

double Desktop::ScreenWidth() const {
  return QGuiApplication::primaryScreen()->geometry().width() * kTwipsPerPixel;
}

void Desktop::ShowFullScreenPair(bool fullScreen) {
  frmDisplay_.ShowFullScreenPair(fullScreen);
  frmDisplay2_.ShowFullScreenPair(fullScreen);
}

void Desktop::ShowMonitorPairs() {
  frmDisplay2_.ShowRoomDisplay(frmDisplay_.isVisible(), !frmDisplay_.Place().normal);
  // Where both displays share one screen neither is full screen; that is not remembered.
  if (QGuiApplication::screens().size() > 1) roomFullScreen_ = frmDisplay_.FullScreen();
}

void Desktop::RearrangeDisplays() {
  frmDisplay_.Rearrange();
  if (UsesTwin()) frmDisplay2_.Rearrange();
  control_.ShowTitleTick();
}

void Desktop::ApplyOnTop() {
  for (QWidget* window : {static_cast<QWidget*>(&frmMain_), static_cast<QWidget*>(&frmDisplay_),
                          static_cast<QWidget*>(&frmDisplay2_)}) {
    if (window->windowFlags().testFlag(Qt::WindowStaysOnTopHint) == session_.options.OnTop)
      continue;
    const bool visible = window->isVisible();
    // Changing the flag takes the window off the screen.
    window->setWindowFlag(Qt::WindowStaysOnTopHint, session_.options.OnTop);
    window->setVisible(visible);
  }
}

bool Desktop::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1)
    return false;
  // Each key comes to the window itself first, and then to its widgets.
  const auto* window = qobject_cast<QWindow*>(watched);
  const QWidget* active = QApplication::activeWindow();
  if (window == nullptr || qobject_cast<const QDialog*>(active) == nullptr ||
      qobject_cast<const FrmHelp*>(active) != nullptr)
    return false;
  Guarded(errors_, "frmMain.mnuShortcuts_Click", [this] { ShowHelp(); });
  return true;
}

DisplayWindow& Desktop::DirectorsDisplay() {
  if (UsesTwin()) return frmDisplay2_;
  return frmDisplay_;
}

void Desktop::ShowHint() {
  DirectorsDisplay().ShowHint();
}

void Desktop::ShowDisplays() {
  ShowCodeOnRoomDisplay();
  if (UsesTwin()) {
    if (placedFor_ != Placed::Both) PlaceBothDisplays();
  } else {
    frmDisplay2_.hide();
    if (placedFor_ != Placed::Room) PlaceRoomDisplay();
  }
  frmDisplay_.setAttribute(Qt::WA_ShowWithoutActivating, UsesTwin());
  frmDisplay_.show();
  // Last, so that it has the keys.
  if (UsesTwin()) frmDisplay2_.show();
  ShowMonitorPairs();
  // The director's keys go to the director's window.
  DisplayWindow& directors = DirectorsDisplay();
  directors.activateWindow();
  directors.setFocus();
  ArmTimeOfDay();
  if (frmMain_.isVisible()) mainPlace_ = frmMain_.geometry();
  frmMain_.hide();
  // Some window managers give the keys to nobody when the window that had them goes.
  QTimer::singleShot(kWindowsSettle, &directors, [&directors] {
    if (directors.isVisible() && QApplication::activeWindow() == nullptr) {
      directors.activateWindow();
    }
  });
}

/// Where the room display stood when the program was last used.
void Desktop::PlaceRoomDisplay() {
  placedFor_ = Placed::Room;
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
  const bool fullScreen = !options.DisplayState;
  frmDisplay_.PlaceAt(place, fullScreen);
  ShowFullScreenPair(fullScreen);
}

void Desktop::PlaceBothDisplays() {
  placedFor_ = Placed::Both;
  std::vector<corvanel::Place> areas;
  size_t control = 0;
  const QList<QScreen*> screens = QGuiApplication::screens();
  for (const QScreen* screen : screens) {
    if (screen == frmMain_.screen()) control = areas.size();
    areas.push_back(PlaceOf(screen->availableGeometry()));
  }
  const ScreenPlan plan = PlanScreens(areas, control);
  const bool wanted = roomFullScreen_.value_or(!session_.options.DisplayState);
  // Where only a full-screen window can say which screen it wants, it is full screen.
  const bool fullScreen =
      !plan.sideBySide && (wanted || QGuiApplication::platformName() == "wayland");
  frmDisplay_.PlaceAt(Pixels(plan.room), fullScreen);
  frmDisplay2_.PlaceAt(Pixels(plan.twin), false);
  ShowFullScreenPair(fullScreen);
  ShowMonitorPairs();
}

/// A screen went or came: no window is lost, and the room display comes back to its screen.
void Desktop::ScreensChanged() {
  if (UsesTwin() && (frmDisplay_.isVisible() || frmDisplay2_.isVisible())) {
    PlaceBothDisplays();
    frmDisplay2_.activateWindow();
  } else if (frmDisplay_.isVisible() && frmDisplay_.FullScreen()) {
    PlaceRoomDisplay();
  }
}

void Desktop::SaveDisplayGeometry() {
  // The program ends all the same when the store cannot be written.
  HandlerSteps step(errors_, "modTimer.SaveDisplayGeometry");
  step([&] { commands_.CaptureGeometry(frmDisplay_); });
  step([&] {
    settings_.SaveOptions({"DisplayState", "FormX", "FormY", "FormSizeX", "FormSizeY"});
  });
}

}  // namespace corvanel
