#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "settings/window/frm_options.h"
#include "settings/window/frm_sound.h"
#include "tests/support/dialogs.h"
#include "tests/support/fakes.h"
#include "tests/support/letters.h"

namespace corvanel {
namespace {

class SettingsDialogsTest : public testing::Test {
 protected:
  SettingsDialogsTest() { table.GetDefaults(); }
  SoundOptions Sounds() {
    return SoundOptions({session, table, bench, [this](const std::string& file) { opened = file; },
                         prompts, bench.errors});
  }

  std::string opened;
  ClockBench bench;
  Session& session = bench.session;
  FakePrompts prompts;
  FakeStore store;
  SettingsTable table{store, session, bench.errors};
};

TEST_F(SettingsDialogsTest, SoundsAreChosenTestedAndTakenOver) {
  session.settings.sounds.files[3] = "missing.wav";
  SoundOptions options = Sounds();
  FrmSound dialog(options, nullptr);
  dialog.show();
  EXPECT_EQ(Find<QLabel>(dialog, "lblSound_3")->text(), "missing.wav (not found)");
  EXPECT_TRUE(Find<QLabel>(dialog, "lblSettings")->text().startsWith("Current warnings are:\n"));
  auto* final = Find<QCheckBox>(dialog, "chkPlayFinal_1");
  EXPECT_TRUE(final->isEnabled());
  QTest::keyClick(Find<QCheckBox>(dialog, "chkPlay_1"), Qt::Key_Space);
  EXPECT_FALSE(final->isEnabled());
  prompts.file = "/music/gong.wav";
  Click(dialog, "cmdSound_3");
  EXPECT_EQ(Find<QLabel>(dialog, "lblSound_3")->text(), "gong.wav");
  bench.clock.Start(1);
  const std::string before = bench.face.countdown;
  Click(dialog, "cmdTest_3");
  EXPECT_EQ(bench.played.back(), "/music/gong.wav");
  EXPECT_EQ(bench.face.countdown, before);
  Click(dialog, "cmdHelp");
  EXPECT_TRUE(opened.ends_with("/sounds.txt"));
  prompts.answers = {Answer::Cancel, Answer::No};
  QTest::keyClick(&dialog, Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible());  // the question was cancelled
  QTest::keyClick(&dialog, Qt::Key_Return);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(session.settings.sounds.files[3], "/music/gong.wav");
  EXPECT_EQ(session.settings.sounds.play[1], 0);
}

TEST_F(SettingsDialogsTest, EveryControlHasALetterOfItsOwn) {
  SoundOptions options = Sounds();
  FrmSound sounds(options, nullptr);
  // In each row the switch has the letter, and the others follow it.
  std::set<QString> rest;
  for (int row = 0; row < kCues; ++row) {
    for (const char* name : {"chkPlayFinal_%1", "cmdSound_%1", "cmdTest_%1"}) {
      rest.insert(QString(name).arg(row));
    }
  }
  ExpectLetters(sounds, rest);
  FrmOptions general({session.options, table, bench.errors, [] {}}, nullptr);
  ExpectLetters(general);
}

TEST_F(SettingsDialogsTest, EscapeLeavesTheSoundsAlone) {
  const SoundChoices before = session.settings.sounds;
  SoundOptions options = Sounds();
  FrmSound dialog(options, nullptr);
  dialog.show();
  prompts.answers = {Answer::Yes};
  Find<QCheckBox>(dialog, "chkPlay_4")->click();
  Click(dialog, "cmdRestore");
  EXPECT_TRUE(Find<QCheckBox>(dialog, "chkPlay_4")->isChecked());
  EXPECT_EQ(Find<QLabel>(dialog, "lblSound_6")->text(), "Beep.wav");
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(session.settings.sounds, before);
}

TEST_F(SettingsDialogsTest, TheSoundDialogShowsHowTheTestFares) {
  SoundOptions options = Sounds();
  FrmSound dialog(options, nullptr);
  Click(dialog, "cmdTestAll");
  EXPECT_EQ(Find<QPushButton>(dialog, "cmdTestAll")->text(), "S&top");
  dialog.Tested({.file = options.Choices().files[0], .on = "Hall"});
  EXPECT_EQ(Find<QLabel>(dialog, "lblStatus")->text(),
            "1 of 7: Fx2 DontStart.wav is playing on Hall");
  Click(dialog, "cmdTestAll");
  EXPECT_EQ(Find<QPushButton>(dialog, "cmdTestAll")->text(), "Test &all");
}

TEST_F(SettingsDialogsTest, GeneralOptionsAreStoredByEnterAndLeftByEscape) {
  int applied = 0;
  for (const Qt::Key end : {Qt::Key_Escape, Qt::Key_Return}) {
    FrmOptions dialog({session.options, table, bench.errors, [&] { ++applied; }}, nullptr);
    QSignalSpy display(&dialog, &FrmOptions::DisplayOptionsWanted);
    QSignalSpy sounds(&dialog, &FrmOptions::SoundOptionsWanted);
    dialog.show();
    EXPECT_EQ(Find<QPushButton>(dialog, "cmdBridgemate")->text(), "&Bridgemate Options");
    for (const char* box : {"chkAutoStart", "chkAutoShutdown", "chkAutoUpdate", "chkOnTop"}) {
      Find<QCheckBox>(dialog, box)->click();
    }
    Click(dialog, "cmdDisplay");
    Click(dialog, "cmdSound");
    EXPECT_EQ(display.count() + sounds.count(), 2);
    EXPECT_EQ(applied, 0);
    QTest::keyClick(&dialog, end);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(store.GetSetting("Timer", "OnTop").has_value(), end == Qt::Key_Return);
  }
  EXPECT_EQ(applied, 1);
  EXPECT_EQ(store.GetAllSettings("Timer"), (KeysAndValues{{"AutoShutdown", "1"},
                                                          {"AutoLaunch", "True"},
                                                          {"AutoUpdate", "False"},
                                                          {"OnTop", "True"}}));
  store.full = true;
  FrmOptions dialog({session.options, table, bench.errors, [&] { ++applied; }}, nullptr);
  EXPECT_TRUE(Find<QCheckBox>(dialog, "chkAutoShutdown")->isChecked());
  Click(dialog, "cmdOK");
  EXPECT_EQ(bench.errors.reports, std::vector<std::string>{"61 frmOptions.cmdOK_Click 1"});
  EXPECT_EQ(applied, 2);
}

}  // namespace
}  // namespace corvanel
