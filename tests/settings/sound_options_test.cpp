#include "settings/sound_options.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"

namespace corvanel {
namespace {

class SoundOptionsTest : public testing::Test {
 protected:
  bool Load() {
    session.ProgramFolder = "/prog";
    table.GetDefaults();
    return true;
  }

  std::string opened;
  ClockBench bench;
  Session& session = bench.session;
  FakePrompts prompts;
  FakeStore store;
  SettingsTable table{store, session, bench.errors};
  const bool loaded = Load();
  SoundOptions options{{session, table, bench, [this](const std::string& file) { opened = file; },
                        prompts, bench.errors}};
};

TEST_F(SoundOptionsTest, ShowsWarningsAndFiles) {
  session.settings.MinWarning1 = 0;
  session.settings.MinWarning = 3.5F;
  EXPECT_EQ(options.SettingsText(),
            "Current warnings are:\r\nEarly warning - none\r\n"
            "Last warning  - 3.5 minutes before end of round");
  EXPECT_EQ(options.FileText(2), "Fx2 Move.wav");
  prompts.file = "missing.wav";
  options.cmdSound_Click(2);
  EXPECT_EQ(prompts.texts.back(), "Choose a sound (wav) file");
  EXPECT_EQ(options.FileText(2), "missing.wav (not found)");
  prompts.file = "text.wav";
  options.cmdSound_Click(3);
  EXPECT_EQ(options.FileText(3), "text.wav (cannot be played)");
  EXPECT_FALSE(options.CanBePlayed(3));
  options.cmdHelp_Click();
  EXPECT_EQ(opened, "/prog/sounds.txt");
}

TEST_F(SoundOptionsTest, TestAllFollowsTheSounds) {
  const auto file = [&](size_t cue) { return options.Choices().files[cue]; };
  options.cmdTestAll_Click();
  options.Tested({.file = file(0), .on = "Hall, volume 70 %"});
  EXPECT_EQ(options.StatusText(), "1 of 7: Fx2 DontStart.wav is playing on Hall, volume 70 %");
  EXPECT_EQ(bench.played, std::vector{file(0)});  // until it is over
  for (size_t cue = 0; cue < kCues; ++cue) {
    EXPECT_EQ(bench.played.back(), file(cue));
    EXPECT_TRUE(options.TestsAll());
    options.Tested({.file = file(cue), .why = cue == 2 ? "it is gone" : "", .ended = true});
  }
  EXPECT_FALSE(options.TestsAll());
  EXPECT_EQ(options.StatusText(), "Fx2 Move.wav was not heard: it is gone");
  options.cmdTestAll_Click();
  for (size_t cue = 0; cue < kCues; ++cue) options.Tested({.file = file(cue), .ended = true});
  EXPECT_EQ(options.StatusText(), "All were played");
}

TEST_F(SoundOptionsTest, TestAllCanBeStoppedAndLetsTheSessionGoFirst) {
  const std::string first = options.Choices().files[0];
  options.cmdTestAll_Click();
  options.cmdTestAll_Click();
  EXPECT_FALSE(options.TestsAll());
  EXPECT_EQ(bench.played.back(), "stopped");
  options.cmdTestAll_Click();
  options.Tested({.file = first, .why = "a cue came", .ended = true, .gaveWay = true});
  EXPECT_FALSE(options.TestsAll());
  EXPECT_EQ(bench.played.back(), first);
  options.cmdTestAll_Click();
  options.cmdTest_Click(4);
  options.Tested({.file = first, .ended = true});  // cut off
  EXPECT_FALSE(options.TestsAll());
  EXPECT_EQ(bench.played.back(), options.Choices().files[4]);
}

TEST_F(SoundOptionsTest, OnlyOkChangesTheLiveSettings) {
  const SoundChoices before = session.settings.sounds;
  prompts.file = "/music/gong.wav";
  options.cmdSound_Click(0);
  options.cmdTest_Click(0);
  EXPECT_EQ(bench.played.back(), "/music/gong.wav");
  EXPECT_EQ(session.settings.sounds, before);
  options.chkPlay_Click(1, false);
  options.chkPlayFinal_Click(0, true);
  prompts.answers = {Answer::Cancel, Answer::No, Answer::Yes};
  EXPECT_FALSE(options.cmdOK_Click());
  EXPECT_EQ(session.settings.sounds.files[0], "/music/gong.wav");
  EXPECT_FALSE(session.settings.sounds.play[1]);
  EXPECT_TRUE(session.settings.sounds.playFinalRound[0]);
  EXPECT_TRUE(options.cmdOK_Click());
  EXPECT_EQ(store.flushes, 0);
  EXPECT_TRUE(options.cmdOK_Click());
  EXPECT_EQ(prompts.texts.back(), "Do you wish to save these settings");
  EXPECT_EQ(store.GetSetting("Timer", "SoundWarning"), "/music/gong.wav");
  EXPECT_EQ(store.GetSetting("Timer", "SoundPlay2"), "0");
}

TEST_F(SoundOptionsTest, SavesIntoTheFavouriteInUse) {
  table.UseFavourite(4, "Friday");
  table.CaptureSettings(4);
  prompts.answers = {Answer::Yes};
  prompts.file = "gong.wav";
  options.cmdSound_Click(6);
  EXPECT_TRUE(options.cmdOK_Click());
  EXPECT_EQ(prompts.texts.back(), "Do you wish to save these settings\r\nfor favourite - Friday");
  EXPECT_EQ(store.GetSetting("Timer04", "SoundEndOfBreak"), "gong.wav");
  EXPECT_EQ(store.GetSetting("Timer", "Name"), "Friday");
}

TEST_F(SoundOptionsTest, RestoringGivesTheSuppliedSounds) {
  prompts.answers = {Answer::No, Answer::Yes};
  options.chkPlay_Click(3, false);
  options.cmdRestore_Click();
  EXPECT_FALSE(options.Choices().play[3]);
  options.cmdRestore_Click();
  EXPECT_TRUE(options.Choices().play[3]);
  EXPECT_EQ(prompts.texts.back(), "Do you wish to reset to the default sounds?");
  EXPECT_EQ(options.FileText(6), "Beep.wav");
  EXPECT_EQ(options.FileText(0), "Fx2 DontStart.wav");
  EXPECT_EQ(session.settings.sounds.files[6], "/prog\\Bell.wav");
}

}  // namespace
}  // namespace corvanel
