#include "scoring/unit_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fakes.h"

namespace corvanel {
namespace {

class UnitOptionsTest : public testing::Test {
 protected:
  UnitOptions Dialog() { return UnitOptions({session, table, bench, prompts, bench.errors}); }
  static UnitValues With(UnitValues values, UnitBox box, const std::string& text) {
    values.numbers[static_cast<size_t>(box)] = text;
    return values;
  }

  ClockBench bench;
  Session& session = bench.session;
  FakePrompts prompts;
  FakeStore store;
  SettingsTable table{store, session, bench.errors};
};

TEST_F(UnitOptionsTest, TheUnitsNameRunsThroughTheCaptions) {
  struct Row {
    int unit;
    const char* other;
    const char* name;
  };
  const Row rows[] = {{0, "x", "Bridgemate"},
                      {1, "", "BridgeTab"},
                      {2, "Abacus", "Abacus"},
                      {2, "", "DesktopUnit"}};
  for (const Row& row : rows) {
    UnitValues values;
    values.optDesktop = row.unit;
    values.txtOther = row.other;
    EXPECT_EQ(UnitOptions::UnitName(values), row.name);
    EXPECT_EQ(UnitOptions::Caption(values), std::string(row.name) + " Options");
    EXPECT_EQ(UnitOptions::SuggestCaption(values),
              "Suggest latest " + std::string(row.name) + " file");
  }
  session.options.TableTopUnit = "Abacus";
  EXPECT_EQ(Dialog().Values().optDesktop, 2);
  EXPECT_EQ(Dialog().Values().txtOther, "Abacus");
  session.options.TableTopUnit = "BridgeTab";
  EXPECT_EQ(Dialog().Values().optDesktop, 1);
}

TEST_F(UnitOptionsTest, WrongNumbersKeepTheDialogAndTheOptions) {
  UnitOptions dialog = Dialog();
  const UnitValues good = dialog.Values();
  struct Row {
    UnitBox box;
    const char* text;
    const char* message;
  };
  const Row rows[] = {
      {UnitBox::MinPerBoard, "0", "The minutes per board must be greater than 0"},
      {UnitBox::MinPerBoard, "", "The minutes per board must be greater than 0"},
      {UnitBox::MinPerBoard, ".", "The minutes per board must be greater than 0"},
      {UnitBox::MinPerBoard, "601", "The minutes must be 600 or less"},
      {UnitBox::Break, "99999999999999999999", "The minutes must be 600 or less"},
      {UnitBox::Pause, "10000", "The number of tables must be 9999 or less"},
      {UnitBox::PauseMinutes, "600.5", "The minutes must be 600 or less"},
  };
  for (const Row& row : rows) {
    const auto [box, close] = dialog.cmdOK_Click(With(good, row.box, row.text));
    EXPECT_FALSE(close) << row.text;
    EXPECT_EQ(box, row.box);
    EXPECT_EQ(prompts.texts.back(), row.message);
  }
  EXPECT_EQ(Dialog().Values(), good);
  EXPECT_EQ(store.flushes, 0);
  EXPECT_TRUE(dialog.Leave(UnitBox::MinPerBoard, "0.5"));
}

TEST_F(UnitOptionsTest, BoxesTakeTheirOwnCharacters) {
  for (const char c : {'0', '9'}) EXPECT_TRUE(UnitOptions::Takes(UnitBox::Break, c));
  for (const char c : {'.', '-', 'x', ' '}) EXPECT_FALSE(UnitOptions::Takes(UnitBox::Pause, c));
  EXPECT_TRUE(UnitOptions::Takes(UnitBox::MinPerBoard, '.'));
  EXPECT_FALSE(UnitOptions::Takes(UnitBox::MinPerBoard, ','));
}

TEST_F(UnitOptionsTest, OkStoresEverythingInItsOrder) {
  UnitOptions dialog = Dialog();
  UnitValues values = dialog.Values();
  values.chkSuggest = false;
  values.chkPause = false;
  values.chkLogFile = false;
  values.optDesktop = 2;
  values.numbers = {"7.5", "20", "3", "1.5"};
  prompts.file = "/music/gong.wav";
  dialog.cmdSound_Click();
  dialog.cmdTest_Click();
  EXPECT_EQ(bench.played.back(), "/music/gong.wav");
  EXPECT_EQ(dialog.SoundText(), "gong.wav");
  EXPECT_EQ(session.options.BMPauseSound, "");  // nothing changes before OK
  EXPECT_TRUE(dialog.cmdOK_Click(values).second);
  EXPECT_EQ(store.GetAllSettings("Timer"), (KeysAndValues{{"BMSuggest", "False"},
                                                          {"BMUpdateSettings", "True"},
                                                          {"BMMinPerBoard", "7.5"},
                                                          {"BMBreak", "20"},
                                                          {"BMOmitwarning1", "True"},
                                                          {"BMOmitwarning2", "True"},
                                                          {"BMSlowTables", "True"},
                                                          {"BMAutoMove", "True"},
                                                          {"BMAutoPause", "False"},
                                                          {"BMPauseTables", "3"},
                                                          {"BMPauseSound", "/music/gong.wav"},
                                                          {"BMPausePlay", "True"},
                                                          {"TabletopUnit", "DesktopUnit"},
                                                          {"LogFile", "0"},
                                                          {"BMPauseMinutes", "1.5"}}));
  table.GetDefaults();
  EXPECT_EQ(session.options.TableTopUnit, "DesktopUnit");
  EXPECT_EQ(session.options.BMPauseMinutes, 1.5F);
}

}  // namespace
}  // namespace corvanel
