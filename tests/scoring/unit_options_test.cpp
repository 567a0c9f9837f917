#include "scoring/unit_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fakes.h"

namespace corvanel {
namespace {

class UnitOptionsTest : public testing::Test {
 protected:
  UnitOptions Dialog() { return UnitOptions({session, table, bench, prompts, bench.errors}); }
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
    const UnitChoice unit{row.unit, row.other};
    EXPECT_EQ(unit.Name(), row.name);
    EXPECT_EQ(UnitOptions::Caption(unit), std::string(row.name) + " Options");
  }
  session.options.TableTopUnit = "Abacus";
  EXPECT_EQ(Dialog().Unit().optDesktop, 2);
  EXPECT_EQ(Dialog().Unit().txtOther, "Abacus");
  session.options.TableTopUnit = "BridgeTab";
  EXPECT_EQ(Dialog().Unit().optDesktop, 1);
}

TEST_F(UnitOptionsTest, WrongNumbersKeepTheDialogAndTheOptions) {
  UnitOptions dialog = Dialog();
  struct Row {
    const char* key;
    const char* text;
    const char* message;
  };
  const Row rows[] = {
      {"BMMinPerBoard", "0", "The minutes per board must be greater than 0"},
      {"BMMinPerBoard", "", "The minutes per board must be greater than 0"},
      {"BMMinPerBoard", ".", "The minutes per board must be greater than 0"},
      {"BMMinPerBoard", "601", "The minutes must be 600 or less"},
      {"BMBreak", "99999999999999999999", "The minutes must be 600 or less"},
      {"BMPauseTables", "10000", "The number of tables must be 9999 or less"},
      {"BMPauseMinutes", "600.5", "The minutes must be 600 or less"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(dialog.cmdOK_Click({{"BMSuggest", "False"}, {row.key, row.text}}, {}), row.key);
    EXPECT_EQ(prompts.texts.back(), row.message);
  }
  EXPECT_TRUE(session.options.BMSuggest);
  EXPECT_EQ(store.flushes, 0);
  EXPECT_TRUE(dialog.Leave("BMMinPerBoard", "0.5"));
}

TEST_F(UnitOptionsTest, BoxesTakeTheirOwnCharacters) {
  for (const char c : {'0', '9'}) EXPECT_TRUE(UnitOptions::Takes("BMBreak", c));
  for (const char c : {'.', '-', 'x', ' '}) EXPECT_FALSE(UnitOptions::Takes("BMPauseTables", c));
  EXPECT_TRUE(UnitOptions::Takes("BMMinPerBoard", '.'));
  EXPECT_FALSE(UnitOptions::Takes("BMMinPerBoard", ','));
}

TEST_F(UnitOptionsTest, OkStoresEverythingInItsOrder) {
  UnitOptions dialog = Dialog();
  prompts.file = "/music/gong.wav";
  dialog.cmdSound_Click();
  dialog.cmdTest_Click();
  EXPECT_EQ(bench.played.back(), "/music/gong.wav");
  EXPECT_EQ(dialog.SoundText(), "gong.wav");
  EXPECT_EQ(session.options.BMPauseSound, "");  // nothing changes before OK
  // As the dialog's controls happen to lie in it.
  const KeysAndValues texts = {
      {"LogFile", "False"},       {"BMSuggest", "False"},     {"BMUpdateSettings", "True"},
      {"BMPauseMinutes", "1.5"},  {"BMMinPerBoard", "7.5."},  {"BMBreak", "20"},
      {"BMOmitwarning1", "True"}, {"BMOmitwarning2", "True"}, {"BMSlowTables", "True"},
      {"BMAutoMove", "True"},     {"BMAutoPause", "False"},   {"BMPauseTables", "3"},
      {"BMPausePlay", "True"}};
  EXPECT_FALSE(dialog.cmdOK_Click(texts, {2, ""}));
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

TEST_F(UnitOptionsTest, TheLargestNumbersAreTaken) {
  const UnitOptions dialog = Dialog();
  EXPECT_TRUE(dialog.Leave("BMPauseMinutes", "600"));
  EXPECT_TRUE(dialog.Leave("BMPauseTables", "9999"));
  EXPECT_TRUE(prompts.texts.empty());
}

TEST_F(UnitOptionsTest, TheBreakIsOfWholeMinutes) {
  EXPECT_FALSE(UnitOptions::Takes("BMBreak", '.'));
  EXPECT_TRUE(UnitOptions::Takes("BMPauseMinutes", '.'));
}

}  // namespace
}  // namespace corvanel
