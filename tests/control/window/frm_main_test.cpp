#include "control/window/frm_main.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>
#include <map>

#include "control/control_window.h"
#include "control/window/dlg_welcome.h"
#include "session/contrast.h"
#include "settings/settings_table.h"
#include "tests/support/fakes.h"
#include "tests/support/letters.h"

namespace corvanel {
namespace {

class Desk : public ControlHost {
 public:
  void SessionStarts() override {}
  void ShowDisplays() override { done += "displays "; }
  void ShowHint() override {}
  void SaveDisplayGeometry() override { done += "geometry "; }
  void ShutDownComputer() override { done += "shutdown "; }
  void EndProgram() override { done += "end "; }
  std::string done;
};

/// The real control window, driven by keys and clicks.
class FrmMainTest : public testing::Test {
 protected:
  FrmMainTest() {
    window.SetLogic(logic);
    window.ShowFavourites({}, "");
    logic.Display();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  template <class Widget>
  Widget* Find(const char* name) {
    auto* widget = window.findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  QLineEdit* Focus(const char* name) {
    auto* box = Find<QLineEdit>(name);
    box->setFocus(Qt::TabFocusReason);
    return box;
  }
  QString FocusName() {
    QApplication::processEvents();
    return window.focusWidget() == nullptr ? QString() : window.focusWidget()->objectName();
  }

  ClockBench bench;
  Session& session = bench.session;
  FakePrompts prompts;
  FakeStore store;
  Desk desk;
  SettingsTable table{store, session, bench.errors};
  Notices notices{bench.broadcast};
  ProgramExit exit{session, bench.clock, prompts, desk};
  FrmMain window{session};
  EveningSoFar evening{bench.time};
  ControlWindow logic{{session, window, prompts, bench.errors, bench.time, bench.clock, evening,
                       notices, table, desk, exit}};
};

TEST_F(FrmMainTest, LettersAreRefusedAndTheTextStays) {
  QLineEdit* rounds = Focus("txtnRounds");
  EXPECT_EQ(rounds->selectedText(), "12");  // typing replaces it
  QTest::keyClicks(rounds, "x.e-");
  EXPECT_EQ(rounds->text(), "12");
  QTest::keyClicks(rounds, "9");
  EXPECT_EQ(rounds->text(), "9");
  QTest::keyClick(rounds, Qt::Key_Backspace);
  EXPECT_EQ(rounds->text(), "");
}

TEST_F(FrmMainTest, APasteIsFilteredLikeTyping) {
  QLineEdit* rounds = Focus("txtnRounds");
  QApplication::clipboard()->setText(" 19");
  QTest::keyClick(rounds, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(rounds->text(), "19");
  QLineEdit* minutes = Focus("txtMinPerRound");
  QTest::keyClicks(minutes, "7,5");
  EXPECT_EQ(minutes->text(), "7.5");
  Focus("txtnRounds");
  rounds->selectAll();
  QApplication::clipboard()->setText("many");
  rounds->paste();
  EXPECT_EQ(rounds->text(), "19");
}

TEST_F(FrmMainTest, EnterFinishesTheEntryAndWalksOn) {
  QLineEdit* rounds = Focus("txtnRounds");
  QTest::keyClicks(rounds, "8");
  QTest::keyClick(rounds, Qt::Key_Return);
  EXPECT_EQ(session.settings.nRounds, 8);
  EXPECT_EQ(FocusName(), "txtMinPerRound");
  for (const char* next : {"txtMinBetweenRounds", "txtMinWarning_1", "txtMinWarning_0", "txtSkip",
                           "txtArrow", "txtBreakRound", "txtBreakLength", "txtCurrentRound",
                           "txtStartTime", "txtHeader", "txtnRounds"}) {
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(FocusName(), next);
  }
  EXPECT_TRUE(prompts.texts.empty());
}

TEST_F(FrmMainTest, AWrongTimeGivesOneMessageAndKeepsTheFocus) {
  QLineEdit* start = Focus("txtStartTime");
  QTest::keyClicks(start, "25:00");
  QTest::keyClick(start, Qt::Key_Return);
  EXPECT_EQ(FocusName(), "txtStartTime");
  EXPECT_EQ(start->text(), "25:00");
  EXPECT_EQ(prompts.texts, std::vector<std::string>{"Please enter a valid time, e.g. 19:30"});
  start->selectAll();
  QTest::keyClicks(start, "9pm");
  QTest::keyClick(start, Qt::Key_Tab);
  EXPECT_EQ(start->text(), "21:00");
  EXPECT_EQ(prompts.texts.size(), 1U);
}

TEST_F(FrmMainTest, LeavingForAnotherWindowEndsNoEntry) {
  QLineEdit* rounds = Focus("txtnRounds");
  QTest::keyClicks(rounds, "0");
  QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QApplication::sendEvent(rounds, &away);
  QFocusEvent menu(QEvent::FocusOut, Qt::MenuBarFocusReason);
  QApplication::sendEvent(rounds, &menu);
  EXPECT_TRUE(prompts.texts.empty());
}

TEST_F(FrmMainTest, TheModeSwapsTheBoxes) {
  QTest::mouseClick(Find<QPushButton>("optCalc_1"), Qt::LeftButton);
  EXPECT_FALSE(Find<QLineEdit>("txtMinPerRound")->isVisible());
  EXPECT_TRUE(Find<QLineEdit>("txtFinishTime")->isVisible());
  EXPECT_EQ(Find<QLabel>("lblFinish")->text(), "Required Finish Time");
  QTest::mouseClick(Find<QPushButton>("optCalc_0"), Qt::LeftButton);
  EXPECT_TRUE(Find<QLineEdit>("txtMinPerRound")->isVisible());
  EXPECT_EQ(session.settings.Calculate, 0);
}

TEST_F(FrmMainTest, StartTakesTheBoxThatIsBeingEdited) {
  QLineEdit* minutes = Focus("txtMinPerRound");
  QTest::keyClicks(minutes, "20");
  QTest::keyClick(minutes, Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(session.settings.MinPerRound, 20);
  EXPECT_EQ(bench.face.countdown, "20:00");
  EXPECT_EQ(desk.done, "displays ");
  EXPECT_TRUE(Find<QPushButton>("cmdResume")->isEnabled());
}

TEST_F(FrmMainTest, ChecksAndCaptionFollow) {
  QTest::mouseClick(Find<QCheckBox>("chkBreak"), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
  EXPECT_TRUE(session.settings.optBreak);
  QLineEdit* round = Focus("txtCurrentRound");
  EXPECT_EQ(Find<QPushButton>("cmdStart")->text(), "Start Timer from Round 1");
  QTest::keyClicks(round, "3");
  EXPECT_EQ(Find<QPushButton>("cmdStart")->text(), "Start Timer from round 3");
  QLineEdit* header = Focus("txtHeader");
  QTest::keyClicks(header, "Friday");
  EXPECT_TRUE(Find<QCheckBox>("chkHeader")->isChecked());
}

TEST_F(FrmMainTest, TheCloseBoxIsTheExit) {
  window.close();
  EXPECT_EQ(desk.done, "end ");
  EXPECT_TRUE(window.isVisible());
}

TEST_F(FrmMainTest, EveryControlHasALetterOfItsOwn) {
  window.ShowFavourites({"Friday"}, "Friday");
  window.OfferFavouriteSave(true);
  // The alphabet ends: these follow what has a letter, by Tab or by an arrow key, and Start is
  // Ctrl+Enter.
  ExpectLetters(window, {"cmdFavDelete", "txtDefault", "cmdSaveDefault", "optCalc_1",
                         "txtBreakRound", "txtHeader", "cmdStart", "cmdStopDownload"});
}

TEST_F(FrmMainTest, TheMenusHaveTheLettersThatEverybodyKnows) {
  window.ShowScoring("BridgeTab", "");
  EXPECT_EQ(Find<QMenu>("mnuBridgemate")->title(), "&BridgeTab");
  EXPECT_EQ(Find<QMenu>("mnuHelp")->title(), "&Help");
  QTest::keyClick(&window, Qt::Key_F10);
  const auto* bar = window.findChild<QMenuBar*>();
  EXPECT_TRUE(QTest::qWaitFor([&] { return bar->activeAction() != nullptr; }));
  window.ShowScoring("Hand&made", "");  // the letter of Help
  EXPECT_EQ(Find<QMenu>("mnuBridgemate")->title(), "Hand&&made");
}

// A slip of the hand must not bring another favourite, nor the list show one that is not in use.
TEST_F(FrmMainTest, TheOpenedFilesNameHasItsRoom) {
  window.show();
  window.ShowScoring("Bridgemate", "/club/Friday evening.bws");
  QCoreApplication::processEvents();
  for (const char* name : {"lblScoringFile", "lblVersion"}) {
    const auto* label = window.findChild<QLabel*>(name);
    EXPECT_GE(label->width(), label->sizeHint().width()) << name;
  }
}

TEST_F(FrmMainTest, TheFavouritesListWaitsToBeAsked) {
  window.ShowFavourites({"Five", "Six"}, "");
  auto* list = Find<QComboBox>("cboFavs");
  EXPECT_EQ(list->currentIndex(), -1);
  window.ShowFavourites({"Five", "Six"}, "Five");
  int chosen = 0;
  QObject::connect(&window, &FrmMain::FavouriteChosen, [&](const std::string&) { ++chosen; });
  QWheelEvent turn(QPointF(5, 5), list->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                   Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(list, &turn);
  EXPECT_EQ(list->currentText(), "Five");
  EXPECT_EQ(chosen, 0);
}

TEST_F(FrmMainTest, DialogsOverItKeepTheirOwnColours) {
  QDialog dialog(&window);
  QLabel sample(&dialog);
  QPalette colours = sample.palette();
  colours.setColor(QPalette::Window, Qt::darkBlue);
  sample.setAutoFillBackground(true);
  sample.setPalette(colours);
  sample.resize(40, 20);
  EXPECT_EQ(sample.grab().toImage().pixelColor(20, 10), QColor(Qt::darkBlue));
}

TEST_F(FrmMainTest, EveryBoxHasANameForAScreenReader) {
  for (const QLineEdit* box : window.findChildren<QLineEdit*>()) {
    bool named = !box->accessibleName().isEmpty();
    for (const QLabel* label : window.findChildren<QLabel*>()) named |= label->buddy() == box;
    EXPECT_TRUE(named) << box->objectName().toStdString();
  }
}

TEST_F(FrmMainTest, TheFavouritesControlsNameTheirFavourite) {
  std::vector<std::string> wanted;
  const auto keep = [&](const char* what) {
    return [&wanted, what](const std::string& name) { wanted.push_back(what + name); };
  };
  QObject::connect(&window, &FrmMain::SaveAsNew, keep("new "));
  QObject::connect(&window, &FrmMain::FavouriteChosen, keep("choose "));
  QObject::connect(&window, &FrmMain::FavouriteSaveWanted, keep("save "));
  QObject::connect(&window, &FrmMain::FavouriteDeleteWanted, keep("delete "));
  EXPECT_FALSE(Find<QWidget>("fraLoad")->isVisible());
  window.ShowFavourites({"Friday", "Teams \"A\", long", "&Élite"}, "Friday");
  window.OfferFavouriteSave(true);
  const int width = window.centralWidget()->minimumSizeHint().width();
  window.ShowInUse(std::string(300, 'x'));
  EXPECT_EQ(window.centralWidget()->minimumSizeHint().width(), width);
  EXPECT_LT(Find<QLabel>("lblFavInUse")->sizeHint().width(), 200);
  EXPECT_TRUE(Find<QWidget>("fraLoad")->isVisible());
  EXPECT_TRUE(wanted.empty());  // listing is not choosing
  auto* list = Find<QComboBox>("cboFavs");
  QTest::keyClick(list, Qt::Key_Down);
  QTest::mouseClick(Find<QPushButton>("cmdFavSave"), Qt::LeftButton);
  QTest::keyClick(list, Qt::Key_Down);
  QTest::mouseClick(Find<QPushButton>("cmdFavDelete"), Qt::LeftButton);
  auto* name = Find<QLineEdit>("txtDefault");
  QTest::keyClicks(name, " Monday ");
  QTest::keyClick(name, Qt::Key_Return);
  EXPECT_EQ(wanted, (std::vector<std::string>{"choose Teams \"A\", long", "save Teams \"A\", long",
                                              "choose &Élite", "delete &Élite", "new Monday"}));
}

// The smallest screen, a large font, two lines and a session under way.
TEST_F(FrmMainTest, EverythingIsInSightAndLinesMoveNothing) {
  QFont large = window.font();
  large.setPointSize(12);
  QApplication::setFont(large);
  window.resize(1016, 730);  // of 1024x768, less a frame
  logic.cmdStart_Click();
  bench.broadcast.Add(logic);
  bench.clock.Refresh();
  QApplication::processEvents();
  const auto* strong = Find<QPushButton>("cmdResume");
  const QPoint before = strong->mapTo(&window, QPoint(0, 0));
  window.ShowNotices({{NoticeKind::Store, "one"},
                      {NoticeKind::Finish, "two"},
                      {NoticeKind::Sound, "The sound was not heard"},
                      {NoticeKind::Awake, "Nothing keeps this computer awake"}});
  QApplication::processEvents();
  EXPECT_EQ(strong->mapTo(&window, QPoint(0, 0)), before);
  const auto lines = window.findChildren<QLabel*>("lblNotice");
  ASSERT_EQ(lines.size(), 2);
  EXPECT_EQ(lines[1]->text(), "Nothing keeps this computer awake (and 2 more)");
  auto* scroll = Find<QScrollArea>("scroll");
  EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
  QApplication::setFont(QFont());
}

TEST_F(FrmMainTest, NoLineWidensIt) {
  window.ShowNotices({{NoticeKind::Scoring, "The file " + std::string(250, 'x') + ".bws is gone"}});
  QApplication::processEvents();
  EXPECT_LT(window.minimumSizeHint().width(), 800);
}

TEST_F(FrmMainTest, WhatAnEmptyBoxAsksForCanBeRead) {
  const QPalette colours = Find<QLineEdit>("txtDefault")->palette();
  const auto colour = [](const QColor& c) {
    return Colour{static_cast<uint8_t>(c.red()), static_cast<uint8_t>(c.green()),
                  static_cast<uint8_t>(c.blue())};
  };
  EXPECT_GE(ContrastRatio(colour(colours.color(QPalette::PlaceholderText)),
                          colour(colours.color(QPalette::Base))),
            4.5);
}

TEST_F(FrmMainTest, TheStrongButtonLeadsBackToTheClockWhileItRuns) {
  bench.broadcast.Add(logic);
  const auto strong = [&] {
    QApplication::processEvents();
    QString names;
    for (const QPushButton* button : window.findChildren<QPushButton*>()) {
      if (button->property("primary").toBool() && button->isVisible())
        names += button->objectName();
    }
    return names;
  };
  EXPECT_EQ(strong(), "cmdStart");
  EXPECT_FALSE(Find<QWidget>("fraLive")->isVisible());
  QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(strong(), "cmdResume");
  for (const auto& [key, modifier] : {std::pair(Qt::Key_Escape, Qt::NoModifier),
                                      std::pair(Qt::Key_Return, Qt::ControlModifier)}) {
    desk.done.clear();
    QTest::keyClick(&window, key, modifier);
    EXPECT_EQ(desk.done, "displays ");
  }
  QTest::mouseClick(Find<QPushButton>("cmdLivePause"), Qt::LeftButton);
  EXPECT_TRUE(bench.clock.State().paused);
  EXPECT_FALSE(Find<QPushButton>("cmdLivePlus")->isEnabled());
  QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !bench.clock.State().paused; }));
  bench.RunToEnd();
  EXPECT_EQ(strong(), "cmdStart");
}

TEST(DlgWelcomeTest, TwoNumbersMakeASession) {
  Session session;
  DlgWelcome dialog(session, ClockTime::At(19, 30), 1, nullptr);
  auto* rounds = dialog.findChild<QSpinBox*>("spnRounds");
  auto* finish = dialog.findChild<QLabel*>("lblFinish");
  EXPECT_EQ(finish->text(), "Start now and you finish at 22:56.");
  rounds->setValue(3);
  dialog.findChild<QSpinBox*>("spnMinutes")->setValue(20);
  EXPECT_EQ(finish->text(), "Start now and you finish at 20:32.");
  EXPECT_EQ(dialog.Settings().nRounds, 3);
  EXPECT_EQ(dialog.Settings().MinPerRound, 20);
  EXPECT_FALSE(dialog.Settings().optBreak);
  rounds->setValue(9);
  EXPECT_EQ(dialog.Settings().BreakAfterRound, 4);
  EXPECT_TRUE(dialog.Settings().optBreak);
  EXPECT_FALSE(dialog.Settings().ExtraMonitor);
  // A second screen is offered, and may be left alone.
  DlgWelcome wide(session, ClockTime::At(19, 30), 2, nullptr);
  EXPECT_TRUE(wide.Settings().ExtraMonitor);
  wide.findChild<QCheckBox*>("chkMonitor")->setChecked(false);
  EXPECT_FALSE(wide.Settings().ExtraMonitor);
  ExpectLetters(wide);
}

TEST(DlgWelcomeTest, EnterStartsOnlyAfterBothNumbers) {
  Session session;
  DlgWelcome dialog(session, ClockTime::At(19, 30), 1, nullptr);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  const auto enter = [&] { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); };
  enter();
  EXPECT_EQ(dialog.focusWidget()->objectName(), "spnMinutes");
  enter();
  EXPECT_TRUE(dialog.isVisible());
  enter();
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

}  // namespace
}  // namespace corvanel
