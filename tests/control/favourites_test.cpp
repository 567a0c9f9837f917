#include "control/favourites.h"

#include <gtest/gtest.h>

#include "tests/support/favourites_bench.h"

namespace corvanel {
namespace {

class FavouritesTest : public testing::Test, protected FavouritesBench {
 protected:
  FavouritesTest() {
    Load();
    session.settings.sounds.files[0] = "own.wav";
  }
  void Load() { favourites.Reload(); }
  void SaveRounds(int16_t rounds, const std::string& name) {
    session.settings.nRounds = rounds;
    favourites.cmdSaveDefault_Click(name);
  }
};

TEST_F(FavouritesTest, SavesChoosesAndSurvivesARestart) {
  SaveRounds(7, "Friday");
  SaveRounds(9, "Monday");
  EXPECT_EQ(view.listed, (std::vector<std::string>{"Friday", "Monday"}));
  EXPECT_EQ(view.inUse, "Monday");
  EXPECT_EQ(view.chosen, "Monday");
  EXPECT_FALSE(view.favouriteOffered);
  favourites.cboFavs_Click("Friday");
  EXPECT_EQ(session.settings.nRounds, 7);
  EXPECT_EQ(view.texts[Box::nRounds], "7");
  EXPECT_EQ(store.GetSetting("Timer", "Name"), "Friday");
  session.settings = SessionSettings{};
  Load();
  EXPECT_EQ(session.settings.nRounds, 7);
  EXPECT_EQ(view.inUse, "Friday");
  session.settings.nRounds = 11;
  prompts.answers = {Answer::Yes};
  favourites.cmdFavSave_Click("Friday");
  EXPECT_EQ(prompts.texts.back(), "Do you want to overwrite the favourite - \r\n\r\nFriday");
  EXPECT_EQ(store.GetSetting("Timer01", "nRounds"), "11");
}

TEST_F(FavouritesTest, ANameInAnotherSpellingTakesTheSlotAndRenamesIt) {
  SaveRounds(7, "Élégance");
  prompts.answers = {Answer::No, Answer::Yes};
  SaveRounds(8, "éLÉGANCE");
  EXPECT_EQ(store.GetSetting("Timer01", "nRounds"), "7");
  SaveRounds(8, "éLÉGANCE");
  EXPECT_EQ(prompts.texts.back(),
            "éLÉGANCE already exists as a favourite\r\n\r\n"
            "Do you want to overwrite it with these settings?");
  EXPECT_EQ(store.GetSetting("Timer01", "Name"), "éLÉGANCE");
  EXPECT_EQ(store.GetSetting("Timer01", "nRounds"), "8");
  EXPECT_EQ(view.listed, std::vector<std::string>{"éLÉGANCE"});
}

TEST_F(FavouritesTest, TwentyAreEnough) {
  for (int i = 1; i <= kFavourites; ++i) SaveRounds(5, "Club " + std::to_string(i));
  favourites.cmdSaveDefault_Click("One more");
  EXPECT_EQ(prompts.texts.back(),
            "You already have 20 favourites\r\n\r\nYou need to delete one first");
  EXPECT_EQ(view.listed.size(), 20U);
  prompts.answers = {Answer::Yes};
  SaveRounds(6, "club 20");
  EXPECT_EQ(store.GetSetting("Timer20", "nRounds"), "6");
}

TEST_F(FavouritesTest, DeletingMovesToTheFirstOfTheList) {
  for (const char* name : {"One", "Two", "Three"}) SaveRounds(5, name);
  session.settings.nRounds = 3;
  prompts.answers = {Answer::No, Answer::Yes, Answer::Yes, Answer::Yes};
  favourites.cmdFavDelete_Click("two");
  EXPECT_EQ(view.listed.size(), 3U);
  favourites.cmdFavDelete_Click("TWO");
  EXPECT_EQ(view.listed, (std::vector<std::string>{"One", "Three"}));
  EXPECT_TRUE(store.GetAllSettings("Timer02").empty());
  EXPECT_EQ(view.inUse, "One");
  EXPECT_EQ(session.settings.nRounds, 5);
  SaveRounds(4, "Four");  // takes slot 2, view.listed last until the next start
  EXPECT_EQ(view.listed, (std::vector<std::string>{"One", "Three", "Four"}));
  Load();
  EXPECT_EQ(view.listed, (std::vector<std::string>{"One", "Four", "Three"}));
  prompts.answers = {Answer::Yes, Answer::Yes, Answer::Yes};
  for (const char* name : {"One", "Three", "Four"}) favourites.cmdFavDelete_Click(name);
  EXPECT_TRUE(view.listed.empty());
  EXPECT_EQ(view.inUse, "");
  EXPECT_EQ(store.GetSetting("Timer", "Name"), "");
}

TEST_F(FavouritesTest, RefusalsLeaveEverythingAlone) {
  SaveRounds(7, "Friday");
  const int flushes = store.flushes;
  favourites.cmdSaveDefault_Click("");
  EXPECT_EQ(prompts.texts.back(), "Please provide a name for this favourite");
  favourites.cboFavs_Click("");
  EXPECT_EQ(prompts.texts.back(), "Please provide a name for the favourite");
  favourites.cboFavs_Click("Sunday");
  EXPECT_EQ(prompts.texts.back(), "Favourite Sunday not found");
  favourites.cmdFavSave_Click("Sunday");
  EXPECT_EQ(prompts.texts.back(), "Sunday cannot be found\r\n\r\n");
  favourites.cmdFavDelete_Click("Sunday");
  EXPECT_EQ(prompts.texts.back(), "Favourite Sunday not found");
  EXPECT_EQ(store.flushes, flushes);
  EXPECT_EQ(view.listed, std::vector<std::string>{"Friday"});
}

TEST_F(FavouritesTest, OddNamesAreKept) {
  const std::string names[] = {"\"quoted\", with a comma", std::string(300, 'x'), "Ärger & Söhne"};
  for (const std::string& name : names) SaveRounds(5, name);
  Load();
  EXPECT_EQ(view.listed, std::vector<std::string>(std::begin(names), std::end(names)));
}

TEST_F(FavouritesTest, ASessionUnderWayKeepsItsRoundAndStartTime) {
  SaveRounds(3, "Short");
  SaveRounds(9, "Long");
  control.Leave(Box::CurrentRound, "5");
  control.cmdStart_Click();
  const ClockTime start = control.Planned().time;
  favourites.cboFavs_Click("Short");
  EXPECT_EQ(prompts.texts.back(),
            "Round 5 is in play, so the number of rounds was set to 5, not 3");
  EXPECT_EQ(session.settings.nRounds, 5);
  EXPECT_EQ(bench.clock.State().round, 5);
  EXPECT_EQ(control.Planned().time, start);
  // Deleting another one changes nothing of tonight, and says nothing.
  session.settings.MinPerRound = 17;
  const size_t said = prompts.texts.size();
  prompts.answers = {Answer::Yes};
  favourites.cmdFavDelete_Click("Long");
  EXPECT_EQ(prompts.texts.size(), said + 1);
  EXPECT_EQ(session.settings.MinPerRound, 17);
  EXPECT_EQ(session.settings.nRounds, 5);
  EXPECT_EQ(view.inUse, "Short");
  EXPECT_EQ(view.listed, std::vector<std::string>{"Short"});
  EXPECT_EQ(bench.clock.State().round, 5);
  EXPECT_EQ(control.Planned().time, start);
  EXPECT_EQ(bench.face.phase, Phase::Round);
}

TEST_F(FavouritesTest, AStoreThatCannotBeWrittenIsReported) {
  store.full = true;
  SaveRounds(7, "Friday");
  EXPECT_EQ(bench.errors.reports, std::vector<std::string>{"61 frmMain.cmdFavSave_Click 1"});
  EXPECT_EQ(view.listed, std::vector<std::string>{"Friday"});
}

TEST_F(FavouritesTest, AShorterOneBringsThePlannedRoundDown) {
  SaveRounds(3, "Short");
  SaveRounds(9, "Long");
  control.Leave(Box::CurrentRound, "5");
  favourites.cboFavs_Click("Short");
  EXPECT_EQ(control.Planned().round, 3);
  EXPECT_EQ(view.texts[Box::CurrentRound], "3");
}

TEST_F(FavouritesTest, LoadingProposesTheNextQuarterHour) {
  bench.time.PassTo(300);  // 19:35
  Load();
  EXPECT_EQ(view.texts[Box::StartTime], "19:45");
}

TEST_F(FavouritesTest, DeletingTheOneInUseLeavesASessionUnderWayWithoutAName) {
  SaveRounds(5, "Friday");
  control.cmdStart_Click();
  prompts.answers = {Answer::Yes};
  favourites.cmdFavDelete_Click("Friday");
  EXPECT_EQ(view.inUse, "");
  EXPECT_EQ(store.GetSetting("Timer", "Name"), "");
  EXPECT_EQ(session.settings.nRounds, 5);
}

TEST_F(FavouritesTest, TheNameThatWasTypedIsTakenAway) {
  view.newNamesCleared = 0;
  SaveRounds(5, "Friday");
  EXPECT_EQ(view.newNamesCleared, 1);
}

}  // namespace
}  // namespace corvanel
