#include "settings/settings_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/support/fakes.h"

namespace corvanel {
namespace {

class SettingsTableTest : public testing::Test {
 protected:
  SettingsTableTest() { session.ProgramFolder = "/prog"; }
  void Load() { table.GetDefaults(); }

  FakeStore store;
  Session session;
  FakeErrors errors;
  SettingsTable table{store, session, errors};
};

TEST_F(SettingsTableTest, AnEmptyStoreGivesTheDefaults) {
  Load();
  const SessionSettings& s = session.settings;
  EXPECT_EQ(s.nRounds, 12);
  EXPECT_EQ(s.MinPerRound, 15);
  EXPECT_EQ(s.MinWarning, 3);
  EXPECT_EQ(s.MinWarning1, 7);
  EXPECT_TRUE(s.optBreak);
  EXPECT_FALSE(s.RequiredFinish);  // used only when the finish is required
  EXPECT_EQ(s.sounds.files[0], "/prog\\Fx2 DontStart.wav");
  EXPECT_EQ(s.sounds.files[2], "/prog\\Fx2 Move.wav");
  EXPECT_EQ(s.sounds.files[6], "/prog\\Bell.wav");
  EXPECT_EQ(s.sounds.play, (std::array<bool, 7>{true, true, true, true, true, true, true}));
  EXPECT_EQ(s.sounds.playFinalRound, (std::array<bool, 2>{false, false}));
  EXPECT_TRUE(table.FavouriteNames().empty());
  EXPECT_EQ(table.FavouriteInUse(), 0);
  EXPECT_EQ(session.options.BMPauseSound, "/prog\\ShipBell.wav");
  EXPECT_TRUE(session.options.AutoUpdate);
  EXPECT_TRUE(session.options.LogFile);
  EXPECT_TRUE(errors.reports.empty());
}

TEST_F(SettingsTableTest, EveryValueSurvivesARoundTrip) {
  Load();
  // Every field gets a value of its own, as far as its range goes.
  SettingsSet set;
  double number = 1;
  for (const auto& key : SetKeys()) {
    if (key.key == "Name" || key.key == "RequiredFinish") continue;
    number += 1;
    const bool isSwitch = key.greatest == 0 || key.text(set) == "True" || key.text(set) == "False";
    key.Read(set, isSwitch ? (key.text(set) == "0" ? "-1" : "0")
                           : std::to_string(std::clamp(number, key.least, key.greatest)));
  }
  set.Calculate = 1;
  set.RequiredFinish = ClockTime::At(23, 10);
  session.settings = set;
  table.SaveSession();
  EXPECT_EQ(store.flushes, 1);

  Session again;
  SettingsTable other(store, again, errors);
  other.GetDefaults();
  EXPECT_EQ(again.settings, SessionSettings(set));
  EXPECT_TRUE(errors.reports.empty());
}

TEST_F(SettingsTableTest, TheStoreCrossesTwoPlayFlags) {
  store.SaveSetting("Timer", "SoundPlay1", "0");
  Load();
  EXPECT_EQ(session.settings.sounds.play[static_cast<size_t>(Cue::EndOfRound)], false);
  EXPECT_EQ(session.settings.sounds.play[static_cast<size_t>(Cue::EarlyWarning)], true);
  table.SaveSession();
  EXPECT_EQ(store.GetSetting("Timer", "SoundPlay1"), "0");
  EXPECT_EQ(store.GetSetting("Timer", "SoundPlay2"), "-1");
}

TEST_F(SettingsTableTest, AFavouriteNamedInTheSetInUseSuppliesTheSettings) {
  store.SaveSetting("Timer", "Name", "Friday");
  store.SaveSetting("Timer", "nRounds", "9");
  store.SaveSetting("Timer", "SoundWarning1", "own.wav");
  store.SaveSetting("Timer05", "Name", "Friday");
  store.SaveSetting("Timer05", "nRounds", "7");
  store.SaveSetting("Timer02", "Name", "friday");
  store.SaveSetting("Timer03", "nRounds", "5");  // no name: a free slot
  Load();
  EXPECT_EQ(table.FavouriteInUse(), 5);
  EXPECT_EQ(session.settings.nRounds, 7);
  EXPECT_EQ(session.settings.sounds.files[1], "own.wav");
  EXPECT_EQ(table.FavouriteNames(), (std::vector<std::string>{"friday", "Friday"}));
  table.SaveSession();
  EXPECT_EQ(store.GetSetting("Timer", "Name"), "Friday");
  EXPECT_EQ(store.GetSetting("Timer03", "Skip"), std::nullopt);
}

TEST_F(SettingsTableTest, ValuesThatDoNotConvertTakeTheirDefaultInOneReport) {
  store.SaveSetting("Timer", "MinPerRound", "abc");
  store.SaveSetting("Timer", "nRounds", "99999");
  store.SaveSetting("Timer", "BreakAfterRound", "4");
  store.SaveSetting("Timer", "optBreak", "perhaps");
  store.SaveSetting("Timer", "FormX", "1e300");
  store.SaveSetting("TimerFont3", "Forecolour", "red");
  Load();
  EXPECT_EQ(session.settings.MinPerRound, 15);
  EXPECT_EQ(session.settings.nRounds, 12);
  EXPECT_EQ(session.settings.BreakAfterRound, 4);
  EXPECT_TRUE(session.settings.optBreak);
  EXPECT_EQ(session.elements[3], DefaultElementStyles()[3]);
  ASSERT_EQ(errors.reports, std::vector<std::string>{"6 frmMain.GetDefaults 0"});
  EXPECT_NE(errors.descriptions[0].find("Overflow: nRounds \"99999\" in section Timer"),
            std::string::npos);
  EXPECT_NE(errors.descriptions[0].find("Forecolour"), std::string::npos);
  EXPECT_TRUE(store.keptAsDamaged);
}

TEST_F(SettingsTableTest, OtherSpellingsAreRead) {
  store.SaveSetting("TIMER", "minperround", "7,5");
  store.SaveSetting("Timer", "DisplayState", "True");
  store.SaveSetting("Timer", "AutoLaunch", "-1");
  store.SaveSetting("Timer", "AutoUpdate", "0");
  store.SaveSetting("Timer", "FormSizeX", "3000");
  store.SaveSetting("Timer", "MinBetweenRounds", "0");
  Load();
  EXPECT_EQ(session.settings.MinPerRound, 7.5F);
  EXPECT_TRUE(session.options.DisplayState);
  EXPECT_TRUE(session.options.AutoLaunch);
  EXPECT_FALSE(session.options.AutoUpdate);
  EXPECT_EQ(session.options.FormSizeX, 7000);
  EXPECT_EQ(session.settings.MinBetweenRounds, kShortestMove);
  table.SaveOptions({"DisplayState", "FormSizeX"});
  EXPECT_EQ(store.GetSetting("Timer", "DisplayState"), "-1");
}

TEST_F(SettingsTableTest, NoStoreOfGarbageDoesHarm) {
  std::mt19937 random(3);
  const std::string alphabet = "0123456789.,-eTrue\"\\ \xFF";
  for (int i = 0; i < 2000; ++i) {
    for (int n = 0; n < 10; ++n) {
      const auto& keys = SetKeys();
      std::string value;
      for (unsigned long c = random() % 9; c > 0; --c)
        value += alphabet[random() % alphabet.size()];
      store.SaveSetting("Timer", keys[random() % keys.size()].key, value);
      store.SaveSetting("Timer", OptionKeys()[random() % OptionKeys().size()].key, value);
    }
    Load();
    ASSERT_GE(session.settings.nRounds, 1);
    ASSERT_TRUE(session.settings.MinPerRound >= 0 && session.settings.MinPerRound <= 1440);
  }
}

// No option, written and read, comes back as another one; and none is stored without a name.
TEST_F(SettingsTableTest, EveryOptionSurvivesARoundTrip) {
  Load();
  const Options defaults = session.options;
  std::vector<std::string> keys;
  double number = 100;
  for (const auto& key : OptionKeys()) {
    const std::string before = key.text(defaults);
    const bool isSwitch = key.greatest == 0 || before == "True" || before == "False";
    const bool on = before == "True" || before == "1" || before == "-1";
    number += 1;
    key.Read(session.options,
             isSwitch ? (on ? "False" : "True") : std::to_string(std::max(number, key.least)));
    EXPECT_NE(key.text(session.options), before) << key.key;
    keys.emplace_back(key.key);
  }
  table.SaveOptions(keys);
  Session again;
  again.ProgramFolder = session.ProgramFolder;
  SettingsTable(store, again, errors).GetDefaults();
  again.options.FormSizeX = session.options.FormSizeX;  // raised to the least that there is
  again.options.FormSizeY = session.options.FormSizeY;
  for (const auto& key : OptionKeys()) {
    EXPECT_EQ(key.text(again.options), key.text(session.options)) << key.key;
  }
  EXPECT_THROW(table.SaveOptions({"BMAutoPuase"}), std::out_of_range);
}

TEST_F(SettingsTableTest, AFavouriteTakesOverWhatItDoesNotSayOfItsFirstThreeSounds) {
  store.SaveSetting("Timer", "SoundPlay0", "0");
  store.SaveSetting("Timer", "SoundPlayBreak", "0");
  store.SaveSetting("Timer", "SoundWarning", "own.wav");
  store.SaveSetting("Timer", "SoundBreak", "bell.wav");
  store.SaveSetting("Timer01", "Name", "Friday");
  store.SaveSetting("Timer01", "SoundPlay2", "99");
  Load();
  const SoundChoices& sounds = table.Entry(1).sounds;
  EXPECT_EQ(sounds.files[0], "own.wav");
  EXPECT_EQ(sounds.files[3], "/prog\\Fx2 Break.wav");
  EXPECT_FALSE(sounds.play[0]);
  EXPECT_TRUE(sounds.play[1]);
  EXPECT_TRUE(sounds.play[3]);
}

TEST_F(SettingsTableTest, WholeNumbersAreRoundedHalvesToTheEvenOne) {
  const std::pair<const char*, int> rows[] = {{"6.4", 6}, {"6.6", 7}, {"6.5", 6}, {"7,5", 8}};
  for (const auto& [stored, loaded] : rows) {
    store.SaveSetting("Timer", "BreakAfterRound", stored);
    Load();
    EXPECT_EQ(session.settings.BreakAfterRound, loaded) << stored;
  }
}

// What stores of the club hold under each key of a pair that could be mistaken for the other.
TEST_F(SettingsTableTest, KeysThatAreAlikeStandForTheirOwnValues) {
  const std::pair<const char*, const char*> stored[] = {{"MinWarning", "2"},
                                                        {"MinWarning1", "6"},
                                                        {"Skip", "3"},
                                                        {"Arrow", "8"},
                                                        {"SoundPlay0FR", "-1"},
                                                        {"SoundPlay1FR", "0"},
                                                        {"SoundSkip", "s.wav"},
                                                        {"SoundArrow", "a.wav"},
                                                        {"SoundPlaySkip", "0"},
                                                        {"FormX", "10"},
                                                        {"FormY", "20"},
                                                        {"FormSizeX", "9000"},
                                                        {"FormSizeY", "8000"},
                                                        {"BMOmitwarning1", "False"},
                                                        {"BMOmitwarning2", "True"},
                                                        {"Show1", "0"}};
  for (const auto& [key, value] : stored) store.SaveSetting("Timer", key, value);
  store.SaveSetting("TimerFont0", "Forecolour", "255");
  store.SaveSetting("TimerFont0", "Backcolour", "65280");
  Load();
  const SessionSettings& s = session.settings;
  EXPECT_EQ(s.MinWarning, 2);
  EXPECT_EQ(s.MinWarning1, 6);
  EXPECT_EQ(s.Skip.Text(), "3");
  EXPECT_EQ(s.Arrow.Text(), "8");
  EXPECT_EQ(s.sounds.playFinalRound, (std::array<bool, 2>{true, false}));
  EXPECT_EQ(s.sounds.files[static_cast<size_t>(Cue::Skip)], "s.wav");
  EXPECT_EQ(s.sounds.files[static_cast<size_t>(Cue::Arrow)], "a.wav");
  EXPECT_FALSE(s.sounds.play[static_cast<size_t>(Cue::Skip)]);
  const Options& o = session.options;
  EXPECT_EQ(o.FormX, 10);
  EXPECT_EQ(o.FormY, 20);
  EXPECT_EQ(o.FormSizeX, 9000);
  EXPECT_EQ(o.FormSizeY, 8000);
  EXPECT_FALSE(o.BMOmitwarning1);
  EXPECT_TRUE(o.BMOmitwarning2);
  EXPECT_EQ(o.Show, (std::array<bool, 5>{true, false, true, true, true}));
  EXPECT_EQ(session.elements[0].Forecolour, (Colour{255, 0, 0}));
  EXPECT_EQ(session.elements[0].Backcolour, (Colour{0, 255, 0}));
}

TEST_F(SettingsTableTest, ADisplayTooSmallToReadIsMadeLarger) {
  store.SaveSetting("Timer", "FormSizeX", "100");
  store.SaveSetting("Timer", "FormSizeY", "100");
  Load();
  EXPECT_EQ(session.options.FormSizeX, 7000);
  EXPECT_EQ(session.options.FormSizeY, 5000);
}

TEST_F(SettingsTableTest, AnEmptySoundFileTakesItsDefault) {
  store.SaveSetting("Timer", "SoundBreak", "");
  Load();
  EXPECT_EQ(session.settings.sounds.files[static_cast<size_t>(Cue::Break)], "/prog\\Fx2 Break.wav");
}

TEST_F(SettingsTableTest, TheDisplayKeepsItsSizeWhereTheStoreHasNone) {
  session.options.FormSizeX = 9000;
  session.options.FormSizeY = 8000;
  Load();
  EXPECT_EQ(session.options.FormSizeX, 9000);
  EXPECT_EQ(session.options.FormSizeY, 8000);
}

}  // namespace
}  // namespace corvanel
