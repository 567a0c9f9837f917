#include <gtest/gtest.h>

#include <QAbstractSlider>
#include <QApplication>
#include <QDialog>
#include <QHelpEvent>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QTreeWidget>
#include <set>

#include "display/window/countdown_panel.h"
#include "display/window/dialog_placer.h"
#include "display/window/frm_display.h"
#include "display/window/frm_display2.h"
#include "display/window/frm_help.h"
#include "display/window/text_measure.h"
#include "display/window/text_row.h"
#include "system/key_places.h"
#include "system/qt/qt_tick_timer.h"
#include "tests/support/fake_display_host.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

/// The real display on a clock in virtual time.
class FrmDisplayTest : public testing::Test, public FakeDisplayHost {
 protected:
  FrmDisplayTest() : FakeDisplayHost(window, twin) {
    session.settings.nRounds = 3;
    session.settings.MinPerRound = 10;
    session.settings.Header = "Friday Pairs";
    window.resize(1024, 768);
    bench.broadcast.Add(window);
    bench.broadcast.Add(twin);
    clock.Start(1);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  void ShowFullScreenPair(bool fullScreen) override { window.ShowFullScreenPair(fullScreen); }
  void ShowMonitorPairs() override {
    twin.ShowRoomDisplay(window.isVisible(), window.isFullScreen());
  }

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
  void Pass(double seconds) { bench.Pass(seconds); }

  ClockBench bench;
  Session& session = bench.session;
  RoundClock& clock = bench.clock;
  FakePrompts prompts;
  FakeErrors errors;
  DisplayCommands commands{{clock, session, prompts, errors, *this}};
  FrmDisplay window{session, commands, LetterOfKey};
  FrmDisplay2 twin{session, commands, LetterOfKey};
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
  EXPECT_EQ(clock.State().round, 2);
  QTest::keyClick(&window, Qt::Key_F);
  EXPECT_TRUE(window.isFullScreen());
  EXPECT_FALSE(Find<QToolButton>("cmdFullScreen_1")->isHidden());
  QTest::keyClick(&window, Qt::Key_F);
  EXPECT_FALSE(window.isFullScreen());
  QTest::keyClick(&window, Qt::Key_F1);
  QTest::keyClick(&window, Qt::Key_X);
  QTest::keyClick(&window, Qt::Key_E);
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_EQ(done, "help exit control ");
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
  auto* minutes = Find<QAbstractSlider>("vsbChange");
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

TEST_F(FrmDisplayTest, TheTwinShowsTheSameAndItsPairsFollowTheRoomDisplay) {
  twin.ShowRoomDisplay(true, false);
  twin.resize(1024, 768);
  twin.show();
  const auto hidden = [&](const char* name) { return twin.findChild<QWidget*>(name)->isHidden(); };
  EXPECT_EQ(twin.findChild<QWidget*>("lblMess"), nullptr);
  EXPECT_FALSE(hidden("cmdHide_0"));
  EXPECT_TRUE(hidden("cmdHide_1"));
  QTest::keyClick(&twin, Qt::Key_H);
  EXPECT_FALSE(window.isVisible());
  EXPECT_TRUE(hidden("cmdHide_0"));
  EXPECT_FALSE(hidden("cmdHide_1"));
  QTest::keyClick(&twin, Qt::Key_H);
  EXPECT_TRUE(window.isVisible());
  QTest::mouseClick(twin.findChild<QPushButton*>("cmdMonitorFullScreen_0"), Qt::LeftButton);
  EXPECT_TRUE(window.isFullScreen());
  EXPECT_TRUE(hidden("cmdMonitorFullScreen_0"));
  QTest::keyClick(&twin, Qt::Key_M);
  EXPECT_FALSE(window.isFullScreen());
  QTest::keyClick(&twin, Qt::Key_P);
  EXPECT_TRUE(clock.State().paused);
  clock.Do(SessionCommand::Resume);
  Pass(600);
  EXPECT_EQ(twin.findChild<TextRow*>("lblInfo")->Text(), "MOVE FOR ROUND 2");
}

/// Asserts that every element lies within its window, none over another, and that the countdown
/// dominates.
void CheckElements(DisplayWindow& display, const std::string& where) {
  auto* panel = display.findChild<CountdownPanel*>("lblMin");
  std::vector<QRect> places = {panel->geometry()};
  for (const TextRow* row : display.findChildren<TextRow*>()) {
    if (!row->isVisible()) continue;
    places.push_back(row->geometry().adjusted(0, 1, 0, -1));
    // The smallest window has no room for large words.
    const bool may = display.width() < 300 && row->objectName() != "lblHeader";
    EXPECT_TRUE(may || row->Fits()) << row->objectName().toStdString() << ' ' << where;
  }
  if (const auto* foot = display.findChild<QWidget*>("fraMonitor"))
    places.push_back(foot->geometry());
  for (size_t i = 0; i < places.size(); ++i) {
    EXPECT_TRUE(display.rect().contains(places[i])) << i << ' ' << where;
    for (size_t j = 0; j < i; ++j) EXPECT_FALSE(places[i].intersects(places[j])) << where;
  }
  const auto* bar = display.findChild<QWidget*>("fraCommand");
  // The smallest window has no room for both.
  EXPECT_TRUE(display.width() < 300 || !bar->geometry().intersects(panel->geometry())) << where;
  EXPECT_TRUE(display.rect().contains(bar->geometry())) << where;
  const QSizeF digits = panel->DigitsSize();
  EXPECT_TRUE(panel->rect().contains(QRect(QPoint(0, 0), digits.toSize()))) << where;
  if (display.width() >= 1024) {
    // In a move the message is the news.
    EXPECT_TRUE(digits.width() >= 0.45 * display.width() ||
                digits.height() >= 0.19 * display.height())
        << where;
  }
}

// Real fonts, both windows, every state, many sizes.
TEST_F(FrmDisplayTest, NothingIsClippedAtAnySizeInAnyState) {
  session.settings.Header = "The Grand Autumn Congress of All Clubs, Second Session";
  session.settings.Skip = "2";
  session.settings.Arrow = "2";
  session.settings.BreakAfterRound = 1;
  session.settings.optBreak = true;
  session.settings.ExtraMonitor = true;
  const std::pair<int, int> sizes[] = {{267, 267},   {640, 480},   {1024, 768}, {1280, 720},
                                       {1920, 1080}, {3840, 2160}, {1080, 1920}};
  twin.show();
  clock.Start(1);
  // Round, both warnings, break and its end, the moves, the final round, the end.
  for (const double at : {0, 190, 430, 601, 1350, 1501, 1561, 2170, 2250, 2900}) {
    Pass(at - bench.time.Elapsed());
    for (const auto& [width, height] : sizes) {
      for (DisplayWindow* display :
           {static_cast<DisplayWindow*>(&window), static_cast<DisplayWindow*>(&twin)}) {
        display->resize(width, height);
        display->Rearrange();
        CheckElements(*display, display->objectName().toStdString() + ' ' + std::to_string(width) +
                                    'x' + std::to_string(height) + " at " + std::to_string(at));
      }
    }
  }
  EXPECT_EQ(clock.State().phase, Phase::Ended);
}

TEST_F(FrmDisplayTest, AHeldKeyDoesItsCommandOnce) {
  const auto hold = [&](Qt::Key key, const char* text) {
    for (const bool repeated : {false, true, true}) {
      QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text, repeated);
      QApplication::sendEvent(&window, &press);
    }
  };
  hold(Qt::Key_N, "n");
  EXPECT_EQ(clock.State().round, 2);
  hold(Qt::Key_P, "p");
  EXPECT_TRUE(clock.State().paused);
  QTest::keyClick(&window, Qt::Key_P);
  hold(Qt::Key_Plus, "+");
  EXPECT_EQ(Countdown(), "13:00");
}

TEST(FrmHelpTest, ListsTheKeysOfBothDisplays) {
  FrmHelp help(nullptr);
  const auto lines = [&](const char* name) {
    auto* list = help.findChild<QTreeWidget*>(name);
    QStringList texts;
    for (int i = 0; list != nullptr && i < list->topLevelItemCount(); ++i) {
      texts << list->topLevelItem(i)->text(0) + ' ' + list->topLevelItem(i)->text(1);
    }
    return texts;
  };
  EXPECT_EQ(lines("lvwScores").size(), 9);
  EXPECT_EQ(lines("lvwScores")[6], "u undo the last command");
  EXPECT_EQ(lines("lvwScores").first(), "f toggle between full screen and normal window");
  EXPECT_EQ(lines("lvwCont"), (QStringList{"h hide/unhide the monitor display",
                                           "m maximise/restore monitor display"}));
  int sounds = 0;
  QObject::connect(&help, &FrmHelp::SoundsWanted, [&] { ++sounds; });
  help.findChild<QPushButton*>("cmdSounds")->click();
  EXPECT_EQ(sounds, 1);
}

ProgressFace Tables(size_t count, size_t sections) {
  ProgressFace face;
  face.lines = {"Last board not started at tables 3 4", "Tables 3 4 7 8 still playing"};
  face.info = "Bridgemate: 5 of 8 tables finished";
  for (size_t s = 0; s < sections; ++s) {
    face.sections.push_back({sections > 1 ? std::string(1, static_cast<char>('A' + s)) : "", {}});
    for (size_t t = 1; t <= count; ++t) {
      const auto state = static_cast<TableState>(t % 6);
      face.sections.back().cells.push_back({std::to_string(t), state, "1/3", ""});
    }
  }
  return face;
}

TEST_F(FrmDisplayTest, TablesHaveTheirPlaceBelowTheClock) {
  auto* frame = Find<QWidget>("fraProgress");
  EXPECT_FALSE(frame->isVisible());
  const std::pair<size_t, size_t> sizes[] = {{1, 1}, {8, 1}, {30, 1}, {7, 2}, {25, 8}, {1, 78}};
  for (const auto& [tables, sections] : sizes) {
    for (const QSize& size : {QSize(1024, 768), QSize(1920, 1080), QSize(500, 700)}) {
      window.resize(size);
      window.ShowTables(Tables(tables, sections));
      window.Rearrange();
      EXPECT_TRUE(frame->isVisible());
      EXPECT_TRUE(window.rect().contains(frame->geometry()));
      for (const char* name : {"lblMin", "lblInfo", "lblEnd", "lblBridgemate", "lblNow"}) {
        EXPECT_FALSE(Find<QWidget>(name)->geometry().intersects(frame->geometry())) << name;
      }
      EXPECT_TRUE(Find<TextRow>("lblProgress")->Fits());
    }
  }
}

TEST_F(FrmDisplayTest, TheTwinsCellsTellWhoIsThere) {
  ProgressFace face = Tables(8, 1);
  for (TableCell& cell : face.sections[0].cells) cell.tip = cell.number + ": NS   3, EW  11";
  twin.resize(1024, 768);
  twin.show();
  const auto tips = [&](DisplayWindow& display) {
    display.ShowTables(face);
    const QRect frame = display.findChild<QWidget*>("fraProgress")->geometry();
    std::set<QString> told;
    for (int x = frame.left(); x < frame.right(); x += 4) {
      const QPoint point(x, frame.bottom() - frame.height() / 4);
      QHelpEvent event(QEvent::ToolTip, point, display.mapToGlobal(point));
      QApplication::sendEvent(&display, &event);
      if (event.isAccepted()) told.insert(QToolTip::text());
    }
    told.erase(QString());
    return told.size();
  };
  EXPECT_EQ(tips(window), 0U);  // the room has no use for it
  EXPECT_EQ(tips(twin), 8U);
}

TEST_F(FrmDisplayTest, OptionsSayWhatOfTheUnitsIsShown) {
  auto* grid = Find<QWidget>("lblTable");
  auto* lines = Find<QWidget>("lblProgress");
  auto* info = Find<QWidget>("lblBridgemate");
  window.ShowTables(Tables(8, 1));
  const auto shown = [&] {
    window.Rearrange();
    return std::vector<bool>{info->isVisible(), lines->isVisible() && lines->height() > 0,
                             grid->isVisible() && grid->height() > 20};
  };
  // One fact is told once: what the units say stands aside for the line that says it better.
  EXPECT_EQ(shown(), (std::vector<bool>{false, true, true}));
  session.options.BMShowInfo = 0;
  session.options.BMShowTables = 0;
  EXPECT_EQ(shown(), (std::vector<bool>{false, true, false}));
  session.options.BMShowTables = 1;
  session.options.BMShowProgress = 0;
  EXPECT_EQ(shown(), (std::vector<bool>{false, false, true}));
  session.options.BMShowInfo = 1;
  EXPECT_EQ(shown(), (std::vector<bool>{true, false, true}));
  session.options.BMControl = 1;  // only for the director
  EXPECT_EQ(shown(), (std::vector<bool>{false, false, false}));
  twin.resize(1024, 768);
  twin.ShowTables(Tables(8, 1));
  twin.show();
  twin.Rearrange();
  EXPECT_TRUE(twin.findChild<QWidget*>("fraProgress")->isVisible());
}

TEST_F(FrmDisplayTest, MakesRoomForADialogWhileThatIsOpen) {
  window.setGeometry(window.screen()->availableGeometry());
  window.Rearrange();
  DialogPlacer placer({&window, &twin}, [&] { return &twin; });
  qApp->installEventFilter(&placer);
  const QRect before = window.CountdownOnScreen();
  QDialog dialog(&window);
  dialog.setFixedSize(window.width() / 2, window.height() - 40);
  dialog.show();
  QApplication::processEvents();
  EXPECT_FALSE(dialog.geometry().intersects(window.CountdownOnScreen()));
  EXPECT_TRUE(window.geometry().contains(window.CountdownOnScreen()));
  dialog.hide();
  EXPECT_EQ(window.CountdownOnScreen(), before);
}

TEST(TextMeasureTest, DigitsTakeCellsOfOneWidth) {
  const QtTextMeasure measure;
  const ElementStyle style;
  const double one = measure.Digits("11:11", style, 100).width;
  EXPECT_DOUBLE_EQ(one, measure.Digits("28:40", style, 100).width);
  EXPECT_EQ(ColourOf({255, 0, 0}), QColor(255, 0, 0));
}

TEST(QtTickTimerTest, HeldTicksComeAfterwards) {
  int ticks = 0;
  int held = 0;
  QtTickTimer timer([&] { ++ticks; }, [&] { ++held; });
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
