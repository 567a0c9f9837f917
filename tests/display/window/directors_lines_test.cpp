#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <map>

#include "display/layout.h"
#include "display/window/display_picture.h"
#include "display/window/frm_display.h"
#include "display/window/frm_display2.h"
#include "system/key_places.h"
#include "tests/support/fake_display_host.h"
#include "tests/support/fakes.h"
#include "widgets/notice_list.h"

namespace corvanel {
namespace {

/// Both displays on a clock in virtual time.
class DirectorsLinesTest : public testing::Test {
 protected:
  DirectorsLinesTest() {
    for (DisplayWindow* display : displays) {
      bench.broadcast.Add(*display);
      display->resize(1024, 768);
      display->show();
      EXPECT_TRUE(QTest::qWaitForWindowExposed(display));
    }
    bench.session.settings.MinPerRound = 10;
    bench.clock.Start(1);
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
  FakeDisplayHost host{room, twin};
  DisplayCommands commands{{bench.clock, bench.session, prompts, bench.errors, host}};
  FrmDisplay room{bench.session, commands, LetterOfKey};
  FrmDisplay2 twin{bench.session, commands, LetterOfKey};
  std::array<DisplayWindow*, 2> displays = {&room, &twin};
};

/// On the director's own screen nothing covers anything: the lines, the bar and the buttons for the
/// room display stand below the picture, whatever they say.
TEST_F(DirectorsLinesTest, TheTwinsFootHoldsAllThatStandsInIt) {
  const auto place = [&](const char* name) {
    const auto* widget = twin.findChild<QWidget*>(name);
    return QRect(widget->mapTo(&twin, QPoint(0, 0)), widget->size());
  };
  const Notice awake{NoticeKind::Awake,
                     "Nothing keeps this computer awake: set its power settings"};
  for (const QSize size : {QSize(1024, 768), QSize(1920, 1080), QSize(3840, 2160)}) {
    bench.clock.Do(SessionCommand::AddMinute);
    twin.ShowNotices({});
    twin.ShowNotices({awake, {NoticeKind::Store, "The settings were changed by somebody else"}});
    twin.resize(size);
    QApplication::processEvents();
    MoveMouse(twin, {300, 300});
    MoveMouse(twin, {330, 330});
    const auto* list = twin.findChild<NoticeList*>(QString(), Qt::FindDirectChildrenOnly);
    const QRect notices = list->geometry();
    const int line = list->findChildren<QLabel*>("lblNotice").last()->fontMetrics().height();
    EXPECT_GE(notices.height(), 2 * line) << size.height();
    const int foot = twin.findChild<DisplayPicture*>()->geometry().bottom();
    EXPECT_GT(place("fraCommand").top(), foot) << size.height();
    EXPECT_LT(place("fraCommand").bottom(), notices.top()) << size.height();
    EXPECT_GT(place("fraMonitor").top(), foot) << size.height();
    for (const bool full : {false, true}) {
      twin.ShowRoomDisplay(!full, full);
      for (const QPushButton* button : twin.findChildren<QPushButton*>()) {
        if (button->isVisible()) {
          EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
        }
      }
    }
  }
}

TEST_F(DirectorsLinesTest, TheLastCommandIsTakenBackByKeyAndByButton) {
  MoveMouse(room, {300, 300});
  auto* undo = room.findChild<QToolButton*>("cmdUndo");
  EXPECT_FALSE(undo->isEnabled());
  bench.Pass(60);
  QTest::keyClick(&room, Qt::Key_N);
  QTest::keyClick(&room, Qt::Key_Plus);
  bench.Pass(12);
  EXPECT_TRUE(undo->isEnabled());
  EXPECT_EQ(undo->text(), "Undo +1 minute,\n12 s ago");
  QTest::mouseClick(undo, Qt::LeftButton);
  EXPECT_EQ(undo->text(), "Undo next round,\n12 s ago");
  QTest::keyClick(&twin, Qt::Key_U);
  EXPECT_FALSE(undo->isEnabled());
  EXPECT_EQ(bench.clock.State().round, 1);
  EXPECT_EQ(bench.face.countdown, "8:48");
}

// What a key did is told for a moment where it covers nothing, and only to the director.
TEST_F(DirectorsLinesTest, AKeyIsAnsweredInTheMargin) {
  const auto* ofTwin = twin.findChild<QLabel*>("lblChip");
  twin.ShowHint();
  EXPECT_EQ(ofTwin->text(), "Move the mouse for buttons · F1 keys · Esc back");
  const auto* said = room.findChild<QLabel*>("lblChip");
  bench.session.settings.ExtraMonitor = true;
  bench.clock.Do(SessionCommand::AddMinute);
  EXPECT_FALSE(said->isVisible()) << "the room's players need not know";
  bench.session.settings.ExtraMonitor = false;
  bench.clock.Do(SessionCommand::SubtractMinute);
  EXPECT_EQ(said->text(), "−1 minute · U undoes");
  EXPECT_GE(said->y(), room.height() - MarginOf(room.width(), room.height()));
  EXPECT_LE(said->geometry().bottom(), room.height());
  bench.Pass(6);
  EXPECT_FALSE(said->isVisible());
  bench.clock.Do(SessionCommand::NextRound);
  EXPECT_EQ(said->text(), "Next round · U undoes");
  MoveMouse(room, {300, 300});
  EXPECT_FALSE(said->isVisible()) << "the bar's own chip says it";
}

TEST_F(DirectorsLinesTest, AScreenReaderLearnsTimeStateAndRound) {
  const auto* panel = room.findChild<QWidget*>("lblMin");
  bench.session.settings.nRounds = 3;
  bench.session.settings.MinWarning = 3;
  bench.session.settings.MinWarning1 = 0;
  bench.Pass(5);
  EXPECT_EQ(panel->accessibleName(), "9:55, Time remaining for Round 1 of 3");
  bench.clock.Do(SessionCommand::Restart);
  bench.Pass(8 * 60);
  EXPECT_EQ(panel->accessibleName(), "2:00, Time remaining for Round 1 of 3, LAST WARNING");
  // What has the keys is read aloud when its name changes: at the warning, not each second.
  EXPECT_EQ(room.accessibleName(), "3:00, Time remaining for Round 1 of 3, LAST WARNING");
  bench.clock.Do(SessionCommand::Pause);
  EXPECT_EQ(panel->accessibleName(), "2:00, Time remaining for Round 1 of 3, LAST WARNING, PAUSED");
}

TEST_F(DirectorsLinesTest, KeysWithoutACommandDoNothing) {
  const ClockState before = bench.clock.State();
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
  EXPECT_EQ(bench.clock.State(), before);
  QTest::keyClick(&room, Qt::Key_N, Qt::ShiftModifier);
  EXPECT_EQ(bench.clock.State().round, 2);
  EXPECT_FALSE(room.isFullScreen());
}

TEST_F(DirectorsLinesTest, NoButtonComesToWhereAnotherOneWas) {
  MoveMouse(room, {300, 300});
  const auto before = Places();
  ASSERT_TRUE(before.contains("cmdPause"));
  const auto same = [&](const char* what) {
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
  bench.clock.Do(SessionCommand::Pause);
  same(" paused");
  room.ShowNotices({{NoticeKind::Away, "The computer was asleep", "Don't count that time"}});
  same(" with a line");
  bench.clock.Do(SessionCommand::Resume);
  same(" resumed");
}

TEST_F(DirectorsLinesTest, LinesForTheDirectorStandOnHisScreenAndNotOnTheRooms) {
  const std::vector<Notice> notices = {
      {NoticeKind::Sound, "The sound Bell.wav was not heard: the file is not there", ""},
      {NoticeKind::Away, "The computer was asleep for 2 min 5 s. The clock kept running.",
       "Don't count that time"}};
  std::vector<NoticeKind> actions;
  std::vector<Notice> dismissed;
  for (DisplayWindow* display : displays) {
    QObject::connect(display, &DisplayWindow::NoticeActionWanted,
                     [&](const Notice& notice) { actions.push_back(notice.kind); });
    QObject::connect(display, &DisplayWindow::NoticeDismissed,
                     [&](const Notice& notice) { dismissed.push_back(notice); });
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
  EXPECT_EQ(actions, std::vector<NoticeKind>{NoticeKind::Away});
  EXPECT_EQ(dismissed, std::vector<Notice>{notices[0]});
  const int footWithLines = twin.findChild<NoticeList*>()->height();
  EXPECT_GT(footWithLines, 20);
  // The bar of the twin stands still while lines come and go below it.
  MoveMouse(twin, {300, 300});
  const QRect bar = twin.findChild<QWidget*>("fraCommand")->geometry();
  twin.ShowNotices({});
  EXPECT_EQ(twin.findChild<QWidget*>("fraCommand")->geometry(), bar);
  EXPECT_TRUE(twin.findChild<NoticeList*>()->isHidden());
}

}  // namespace
}  // namespace corvanel
