#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include "scoring/window/frm_options_bridgemate.h"
#include "scoring/window/frm_play_time.h"
#include "scoring/window/sections_dialog.h"
#include "tests/support/dialogs.h"
#include "tests/support/letters.h"
#include "tests/support/scoring_bench.h"

namespace corvanel {
namespace {

class UnitDialogTest : public testing::Test {
 protected:
  UnitDialogTest() {
    dialog.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
  }

  ClockBench bench;
  Session& session = bench.session;
  FakePrompts prompts;
  FakeStore store;
  SettingsTable table{store, session, bench.errors};
  UnitOptions logic{{session, table, bench, prompts, bench.errors}};
  FrmOptionsBridgemate dialog{logic, nullptr};
};

TEST_F(UnitDialogTest, EveryControlHasALetterOfItsOwn) {
  // The unit's name and the test stand beside what has one.
  ExpectLetters(dialog, {"txtOther", "cmdTest"});
  ExpectLetters(SectionsDialog("Friday", {"Section A : 8 tables"}, nullptr));
  ExpectLetters(FrmPlayTime("Friday", {}, "/x/BST1.txt", nullptr));
}

TEST_F(UnitDialogTest, CaptionsFollowTheUnitAtOnce) {
  auto* other = Find<QLineEdit>(dialog, "txtOther");
  auto* suggest = Find<QCheckBox>(dialog, "chkSuggest");
  EXPECT_EQ(dialog.windowTitle(), "Bridgemate Options");
  Find<QRadioButton>(dialog, "optDesktop_2")->click();
  EXPECT_EQ(suggest->text(), "S&uggest latest DesktopUnit file");
  QTest::keyClicks(other, "Abacus");
  EXPECT_EQ(dialog.windowTitle(), "Abacus Options");
  Find<QRadioButton>(dialog, "optDesktop_1")->click();
  EXPECT_EQ(suggest->text(), "S&uggest latest BridgeTab file");
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_EQ(session.options.TableTopUnit, "Bridgemate");
}

TEST_F(UnitDialogTest, NumberBoxesFilterLeadOnAndKeepAWrongNumber) {
  auto* board = Find<QLineEdit>(dialog, "txtMinPerBoard");
  auto* pause = Find<QLineEdit>(dialog, "txtPause");
  board->setFocus();
  board->clear();
  QTest::keyClicks(board, "x6.,5");
  EXPECT_EQ(board->text(), "6.5");
  QTest::keyClick(board, Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible());  // Enter goes on, and does not confirm here
  EXPECT_EQ(dialog.focusWidget()->objectName(), "txtBreak");
  pause->setFocus();
  pause->clear();
  QTest::keyClicks(pause, "-3.");
  EXPECT_EQ(pause->text(), "3");
  board->setFocus();
  board->setText("0");
  QTest::keyClick(board, Qt::Key_Tab);
  QApplication::processEvents();
  EXPECT_EQ(prompts.texts.back(), "The minutes per board must be greater than 0");
  EXPECT_EQ(dialog.focusWidget(), board);
  Click(dialog, "cmdOK");
  EXPECT_TRUE(dialog.isVisible());
  board->setText("6.5");
  Click(dialog, "cmdOK");
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(session.options.BMMinPerBoard, 6.5F);
  EXPECT_EQ(session.options.BMPauseTables, 3);
}

TEST(SectionDialogTest, EverySectionIsTickedAtFirst) {
  SectionsDialog dialog("Friday & more", {"Section A : 8 tables", "Section B : 6 tables"}, nullptr);
  EXPECT_EQ(Find<QLabel>(dialog, "lblSessionName")->text(), "Friday & more");
  EXPECT_EQ(dialog.Ticked(), (std::vector<bool>{true, true}));
  auto* list = Find<QListWidget>(dialog, "lstSett");
  EXPECT_EQ(list->item(1)->text(), "Section B : 6 tables");
  dialog.show();
  QTest::keyClick(list, Qt::Key_Space);
  EXPECT_EQ(dialog.Ticked(), (std::vector<bool>{false, true}));
}

TEST(PlayTimeDialogTest, ThePictureIsSavedAsPdfOrPng) {
  ScoringPicture picture = Mitchell(4, 3, 2);
  for (const RoundRow& row : picture.rounds) {
    const int64_t end = picture.sessionDate->seconds + row.round * 900 + row.Table;
    picture.received.push_back(ResultOf(row.Table, row.round, row.LowBoard, {end}));
  }
  const ScoringSession session(std::make_shared<ScoringPicture>(picture), {1});
  const FrmPlayTime dialog("Friday", PlayTimesOf(session), "/x/BST1.txt", nullptr);
  const QTemporaryDir folder;
  for (const auto& [name, sign] : {std::pair("a.pdf", "%PDF"), std::pair("a.png", "\x89PNG")}) {
    const QString file = folder.filePath(name);
    EXPECT_TRUE(dialog.Page().Save(file));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.read(4), QByteArray(sign));
    EXPECT_GT(written.size(), 2000);
  }
  EXPECT_FALSE(dialog.Page().Save("/no/such/folder/a.png"));
  EXPECT_FALSE(dialog.Page().Save("/no/such/folder/a.pdf"));
}

}  // namespace
}  // namespace corvanel
