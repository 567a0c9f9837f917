#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include "display/window/countdown_panel.h"
#include "display/window/frm_display.h"
#include "display/window/frm_display2.h"
#include "display/window/frm_help.h"
#include "display/window/text_measure.h"
#include "display/window/text_row.h"
#include "platform/qt_tick_timer.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

/// The real display on a clock in virtual time.
class FrmDisplayTest : public testing::Test,
                       public DisplayHost,
                       public ProgramEnding,
                       public ClockView {
 protected:
  FrmDisplayTest() {
    session.settings.nRounds = 3;
    session.settings.MinPerRound = 10;
    session.settings.Header = "Friday Pairs";
    window.resize(1024, 768);
    clock.Start();
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  void ShowFace(const ClockFace& face) override { window.ShowFace(face); }
  void ShowTimeOfDay(const std::string& time) override { window.ShowTimeOfDay(time); }
  void ShowControlWindow() override { done += "control "; }
  void ShowHelp() override { done += "help "; }
  double ScreenWidth() const override { return 1920 * kTwipsPerPixel; }
  void ShowFullScreenPair(bool fullScreen) override { window.ShowFullScreenPair(fullScreen); }
  void ShowMonitorPairs() override {
    twin.ShowRoomDisplay(window.isVisible(), window.isFullScreen());
  }
  DisplayForm& RoomDisplay() override { return window; }
  DisplayForm& Twin() override { return twin; }
  void SaveDisplayGeometry() override { done += "geometry "; }
  void ShutDownComputer() override {}
  void EndProgram() override { done += "end "; }

  template <class Widget>
  Widget* Find(const char* name) {
    auto* widget = window.findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  std::string Countdown() { return Find<CountdownPanel>("lblMin")->Countdown(); }
  void MoveMouse(const QPoint& place) {
    QMouseEvent move(QEvent::MouseMove, place, window.mapToGlobal(place), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &move);
  }
  void Pass(double seconds) {
    const double until = time.Elapsed() + seconds;
    while (time.Due() && *time.Due() <= until) {
      time.PassToWakeUp();
      clock.Tick();
    }
    time.PassTo(until);
  }

  std::string done;
  ClockBench quiet;  // plays and records nothing that matters here
  Session& session = quiet.session;
  VirtualTime time{ClockTime::At(19, 30)};
  FakePrompts prompts;
  FakeErrors errors;
  RoundClock clock{{session, time, time, *this, quiet, quiet, errors}};
  ProgramExit exit{session, prompts, *this};
  DisplayCommands commands{{clock, session, prompts, errors, *this, exit}};
  FrmDisplay window{session, commands};
  FrmDisplay2 twin{session, commands};
};

TEST_F(FrmDisplayTest, ShowsTheClock) {
  EXPECT_EQ(Countdown(), "10:00");
  EXPECT_EQ(Find<TextRow>("lblHeader")->Text(), "Friday Pairs");
  EXPECT_EQ(Find<TextRow>("lblInfo")->Text(), "Time remaining for Round 1 of 3");
  EXPECT_EQ(Find<TextRow>("lblEnd")->Text(), "Finish at 20:02");
  Pass(600);
  EXPECT_EQ(Countdown(), "1:00");
  EXPECT_FALSE(Find<TextRow>("lblInfo")->isVisible());
  EXPECT_TRUE(Find<TextRow>("lblMess")->isVisible());
  EXPECT_EQ(Find<TextRow>("lblMess")->Text(), "MOVE FOR ROUND 2");
  Pass(60);
  EXPECT_TRUE(Find<TextRow>("lblInfo")->isVisible());
  EXPECT_FALSE(Find<TextRow>("lblMess")->isVisible());
}

TEST_F(FrmDisplayTest, KeysWorkWithAndWithoutShift) {
  QTest::keyClick(&window, Qt::Key_P);
  EXPECT_TRUE(clock.State().paused);
  EXPECT_FALSE(Find<QToolButton>("cmdResume")->isHidden());
  EXPECT_TRUE(Find<QToolButton>("cmdPause")->isHidden());
  QTest::keyClick(&window, Qt::Key_P, Qt::ShiftModifier);
  EXPECT_FALSE(clock.State().paused);
  QTest::keyClick(&window, Qt::Key_Plus, Qt::KeypadModifier);
  QTest::keyClick(&window, Qt::Key_Equal);
  EXPECT_EQ(Countdown(), "12:00");
  QTest::keyClick(&window, Qt::Key_Minus, Qt::KeypadModifier);
  QTest::keyClick(&window, Qt::Key_Underscore, Qt::ShiftModifier);
  EXPECT_EQ(Countdown(), "10:00");
  QTest::keyClick(&window, Qt::Key_N);
  EXPECT_EQ(session.currentRound, 2);
  QTest::keyClick(&window, Qt::Key_F);
  EXPECT_TRUE(window.isFullScreen());
  EXPECT_FALSE(Find<QToolButton>("cmdFullScreen_1")->isHidden());
  QTest::keyClick(&window, Qt::Key_F);
  EXPECT_FALSE(window.isFullScreen());
  QTest::keyClick(&window, Qt::Key_F1);
  QTest::keyClick(&window, Qt::Key_X);
  prompts.answers = {Answer::No, Answer::Yes};
  QTest::keyClick(&window, Qt::Key_E);
  QTest::keyClick(&window, Qt::Key_E);
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_EQ(done, "help geometry end control ");
  EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmDisplayTest, TheCommandBarComesWithTheMouseAndNeverTakesTheKeys) {
  auto* bar = window.findChild<QWidget*>("fraCommand");
  EXPECT_FALSE(bar->isVisible());
  EXPECT_EQ(window.cursor().shape(), Qt::IBeamCursor);
  MoveMouse({100, 100});
  EXPECT_TRUE(bar->isVisible());
  EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
  bar->hide();
  MoveMouse({100, 100});  // no movement
  EXPECT_FALSE(bar->isVisible());
  MoveMouse({101, 100});
  for (const QToolButton* button : window.findChildren<QToolButton*>()) {
    EXPECT_EQ(button->focusPolicy(), Qt::NoFocus) << button->objectName().toStdString();
  }
  QTest::mouseClick(Find<QToolButton>("cmdPause"), Qt::LeftButton);
  EXPECT_TRUE(clock.State().paused);
  QTest::mouseClick(Find<QToolButton>("cmdResume"), Qt::LeftButton);
  EXPECT_FALSE(clock.State().paused);
  auto* minutes = Find<QScrollBar>("vsbChange");
  minutes->setValue(-1);
  EXPECT_EQ(minutes->value(), 0);
  EXPECT_EQ(Countdown(), "11:00");
  Pass(660);
  minutes->setValue(1);
  EXPECT_EQ(minutes->value(), 0);
  EXPECT_EQ(Countdown(), "1:00");
  QTest::mouseClick(Find<QToolButton>("cmdChange"), Qt::LeftButton);
  EXPECT_EQ(prompts.texts.size(), 1U);
}

TEST_F(FrmDisplayTest, TheCloseBoxLeavesTheDisplayOpen) {
  window.close();
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.minimumWidth(), 267);  // 4000 twips
}

// Real fonts: every text within its row, every row within the window, nothing over another.
TEST_F(FrmDisplayTest, NothingIsClippedAtAnySizeInAnyState) {
  session.settings.Header = "The Grand Autumn Congress of All Clubs, Second Session";
  session.settings.Skip = "2";
  session.settings.Arrow = "2";
  session.currentRound = 2;
  const std::pair<int, int> sizes[] = {{267, 267},   {640, 480},   {1024, 768}, {1280, 720},
                                       {1920, 1080}, {3840, 2160}, {1080, 1920}};
  for (const double seconds : {0.0, 600.0}) {
    clock.Start();
    Pass(seconds);
    for (const auto& [width, height] : sizes) {
      window.resize(width, height);
      window.Rearrange();
      std::vector<QRect> places = {Find<CountdownPanel>("lblMin")->geometry()};
      for (const TextRow* row : window.findChildren<TextRow*>()) {
        if (row->isVisible()) places.push_back(row->geometry().adjusted(0, 1, 0, -1));
      }
      for (size_t i = 0; i < places.size(); ++i) {
        EXPECT_TRUE(window.rect().contains(places[i])) << width << 'x' << height;
        for (size_t j = 0; j < i; ++j) {
          EXPECT_FALSE(places[i].intersects(places[j])) << width << 'x' << height;
        }
      }
    }
  }
}

TEST(TextMeasureTest, DigitsTakeCellsOfOneWidth) {
  const QtTextMeasure measure;
  const ElementStyle style;
  const double one = measure.Digits("11:11", style, 100).width;
  EXPECT_DOUBLE_EQ(one, measure.Digits("28:40", style, 100).width);
  EXPECT_EQ(ColourOf(0x0000FF), QColor(255, 0, 0));
}

TEST(QtTickTimerTest, HeldTicksComeAfterwards) {
  int ticks = 0;
  QtTickTimer timer([&] { ++ticks; });
  timer.Hold();
  timer.Arm(0);
  QTest::qWait(20);
  EXPECT_EQ(ticks, 0);
  timer.Release();
  QTest::qWait(20);
  EXPECT_EQ(ticks, 1);
  timer.Arm(0.01);
  timer.Disarm();
  QTest::qWait(30);
  EXPECT_EQ(ticks, 1);
}

}  // namespace
}  // namespace corvanel
