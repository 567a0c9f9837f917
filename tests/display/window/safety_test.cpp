#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <map>

#include "display/window/frm_display.h"
#include "display/window/frm_display2.h"
#include "system/qt/qt_sound_player.h"
#include "system/qt/qt_tick_timer.h"
#include "tests/support/fake_control_window.h"
#include "tests/support/fakes.h"
#include "widgets/notice_list.h"

namespace corvanel {
namespace {

/// Both displays on a clock in virtual time.
class SafetyTest : public testing::Test, public DisplayHost {
 protected:
  SafetyTest() {
    for (DisplayWindow* display : displays) {
      display->resize(1024, 768);
      display->show();
      EXPECT_TRUE(QTest::qWaitForWindowExposed(display));
    }
    bench.session.settings.MinPerRound = 10;
    bench.clock.Start();
    ShowFace();
  }
  void ShowControlWindow() override {}
  void ShowHelp() override {}
  double ScreenWidth() const override { return 1920 * kTwipsPerPixel; }
  void ShowFullScreenPair(bool /*fullScreen*/) override {}
  void ShowMonitorPairs() override {}
  DisplayForm& RoomDisplay() override { return room; }
  DisplayForm& Twin() override { return twin; }

  void ShowFace() {
    for (DisplayWindow* display : displays) display->ShowFace(bench.face);
  }
  void MoveMouse(DisplayWindow& display, const QPoint& place) {
    QMouseEvent move(QEvent::MouseMove, place, display.mapToGlobal(place), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&display, &move);
  }
  /// Where every button of the bar stands in the window.
  std::map<QString, QRect> Places() {
    std::map<QString, QRect> places;
    auto* bar = room.findChild<QWidget*>("fraCommand");
    for (const QToolButton* button : bar->findChildren<QToolButton*>()) {
      if (button->isVisible()) {
        places[button->objectName()] = QRect(button->mapTo(&room, QPoint(0, 0)), button->size());
      }
    }
    return places;
  }

  ClockBench bench;
  FakePrompts prompts;
  FakeControlWindow control;
  ProgramExit exit{bench.session, prompts, control};
  DisplayCommands commands{{bench.clock, bench.session, prompts, bench.errors, *this, exit}};
  FrmDisplay room{bench.session, commands};
  FrmDisplay2 twin{bench.session, commands};
  std::array<DisplayWindow*, 2> displays = {&room, &twin};
};

TEST_F(SafetyTest, TheLastCommandIsTakenBackByKeyAndByButton) {
  MoveMouse(room, {300, 300});
  auto* undo = room.findChild<QToolButton*>("cmdUndo");
  EXPECT_FALSE(undo->isVisible());
  bench.Pass(60);
  QTest::keyClick(&room, Qt::Key_N);
  QTest::keyClick(&room, Qt::Key_Plus);
  bench.Pass(12);
  ShowFace();
  EXPECT_TRUE(undo->isVisible());
  EXPECT_EQ(undo->text(), "Undo +1 minute, 12 s ago");
  QTest::mouseClick(undo, Qt::LeftButton);
  ShowFace();
  EXPECT_EQ(undo->text(), "Undo next round, 12 s ago");
  QTest::keyClick(&twin, Qt::Key_U);
  ShowFace();
  EXPECT_FALSE(undo->isVisible());
  EXPECT_EQ(bench.session.currentRound, 1);
  EXPECT_EQ(bench.face.countdown, "8:48");
}

TEST_F(SafetyTest, KeysWithoutACommandDoNothing) {
  const ClockPoint before = bench.clock.Point();
  for (const Qt::Key key :
       {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Tab, Qt::Key_Left, Qt::Key_Space, Qt::Key_Return,
        Qt::Key_Delete, Qt::Key_X, Qt::Key_7, Qt::Key_F5}) {
    for (DisplayWindow* display : displays) {
      QTest::keyClick(display, key);
      EXPECT_FALSE(display->isFullScreen()) << key;
    }
  }
  for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier}) {
    QTest::keyClick(&room, Qt::Key_N, modifier);
    EXPECT_FALSE(room.isFullScreen());
  }
  EXPECT_EQ(bench.clock.Point(), before);
  QTest::keyClick(&room, Qt::Key_N, Qt::ShiftModifier);
  EXPECT_EQ(bench.session.currentRound, 2);
  EXPECT_FALSE(room.isFullScreen());
}

TEST_F(SafetyTest, NoButtonComesToWhereAnotherOneWas) {
  MoveMouse(room, {300, 300});
  const auto before = Places();
  ASSERT_TRUE(before.contains("cmdPause"));
  const auto same = [&](const char* what) {
    ShowFace();
    room.ShowFullScreenPair(bench.face.paused);
    for (const auto& [name, place] : Places()) {
      if (before.contains(name)) {
        EXPECT_EQ(place, before.at(name)) << name.toStdString() << what;
        continue;
      }
      // What is new stands in the place of its pair, or where nothing was.
      for (const auto& [other, was] : before) {
        const bool pair = (name == "cmdResume" && other == "cmdPause") ||
                          (name == "cmdFullScreen_1" && other == "cmdFullScreen_0");
        EXPECT_TRUE(pair ? place == was : !place.intersects(was))
            << name.toStdString() << " over " << other.toStdString() << what;
      }
    }
  };
  bench.clock.Pause();
  same(" paused");
  room.ShowNotices({{NoticeKind::Away, "The computer was away", "Take that time out"}});
  same(" with a line");
  bench.clock.Resume();
  same(" resumed");
}

TEST_F(SafetyTest, LinesForTheDirectorStandOnHisScreenAndNotOnTheRooms) {
  const std::vector<Notice> notices = {
      {NoticeKind::Sound, "The sound Bell.wav was not heard: the file is not there", ""},
      {NoticeKind::Away, "The computer was away for 2 min 5 s; the clock has run on meanwhile.",
       "Take that time out"}};
  std::vector<int> actions;
  std::vector<int> waved;
  for (DisplayWindow* display : displays) {
    QObject::connect(display, &DisplayWindow::NoticeActionWanted,
                     [&](int kind) { actions.push_back(kind); });
    QObject::connect(display, &DisplayWindow::NoticeWavedAway,
                     [&](int kind) { waved.push_back(kind); });
    display->ShowNotices(notices);
  }
  EXPECT_EQ(twin.findChildren<QLabel*>("lblNotice").size(), 2);
  for (const QLabel* line : twin.findChildren<QLabel*>("lblNotice")) {
    EXPECT_TRUE(line->isVisible());
    const QRect place(line->mapTo(&twin, QPoint(0, 0)), line->size());
    EXPECT_TRUE(twin.rect().contains(place));
    EXPECT_FALSE(place.intersects(twin.findChild<QWidget*>("lblMin")->geometry()));
  }
  for (const QLabel* line : room.findChildren<QLabel*>("lblNotice")) {
    EXPECT_FALSE(line->isVisible());
  }
  MoveMouse(room, {300, 300});
  EXPECT_TRUE(room.findChild<QLabel*>("lblNotice")->isVisible());
  QTest::mouseClick(twin.findChild<QToolButton*>("cmdNotice"), Qt::LeftButton);
  QTest::mouseClick(room.findChild<QToolButton*>("cmdNoticeClose"), Qt::LeftButton);
  EXPECT_EQ(actions, std::vector<int>{static_cast<int>(NoticeKind::Away)});
  EXPECT_EQ(waved, std::vector<int>{static_cast<int>(NoticeKind::Sound)});
  const int footWithLines = twin.findChild<NoticeList*>()->height();
  EXPECT_GT(footWithLines, 20);
  // The bar of the twin stands still while lines come and go below it.
  MoveMouse(twin, {300, 300});
  const QRect bar = twin.findChild<QWidget*>("fraCommand")->geometry();
  twin.ShowNotices({});
  EXPECT_EQ(twin.findChild<QWidget*>("fraCommand")->geometry(), bar);
  EXPECT_TRUE(twin.findChild<NoticeList*>()->isHidden());
}

TEST(QtSoundPlayerTest, TellsWhatWasNotHeard) {
  QtSoundPlayer player(CORVANEL_SOUND_FOLDER);
  QStringList told;
  QObject::connect(&player, &QtSoundPlayer::NotPlayed, &player,
                   [&](const QString& file, const QString& why) { told << file + ": " + why; });
  player.Play("\\no such.wav");
  ASSERT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }, 10000));
  EXPECT_TRUE(told[0].contains("no such.wav")) << told[0].toStdString();
}

}  // namespace
}  // namespace corvanel
