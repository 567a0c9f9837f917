#include "display/display_options.h"

#include <gtest/gtest.h>

#include "display/screen_plan.h"
#include "session/contrast.h"
#include "settings/settings_table.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

class DisplayOptionsTest : public testing::Test {
 protected:
  int rearranged = 0;
  int rewritten = 0;
  FakeStore store;
  Session session;
  FakeErrors errors;
  SettingsTable table{store, session, errors};
  DisplayOptions options{{.session = session,
                          .save = [this](const auto& keys) { table.SaveDisplayOptions(keys); },
                          .rearrange = [this] { ++rearranged; },
                          .rewriteTimes = [this] { ++rewritten; },
                          .errors = errors}};
};

TEST_F(DisplayOptionsTest, ListsTheElementsWithTheirSamplesAndNotes) {
  session.options.TableTopUnit = "BridgeTab";
  EXPECT_EQ(options.Names()[0], "Current time");
  EXPECT_EQ(options.Names()[9], "BridgeTab info");
  session.elements[4].Size = 12;
  EXPECT_EQ(DisplayOptions::Sample(Element::LastWarning), "12:34");
  EXPECT_EQ(options.SampleStyle(Element::LastWarning).Size, 48);
  EXPECT_EQ(DisplayOptions::SizeNote(Element::LastWarning),
            "Font can be changed, but changes to font size will be ignored");
  EXPECT_EQ(DisplayOptions::SizeNote(Element::Title),
            "Font size might be reduced in order to fit on screen");
  EXPECT_EQ(DisplayOptions::Sample(Element::UnitInfo), "Tables in play");
  EXPECT_EQ(options.SampleStyle(Element::Title).Size, session.elements[8].Size);
}

TEST_F(DisplayOptionsTest, ChangesShowAtOnceAndCancelTakesThemBack) {
  const ElementStyles styles = session.elements;
  ElementStyle red = options.StyleOf(Element::TimeUp);
  red.Backcolour = {255, 0, 0};
  options.SetStyle(Element::TimeUp, red);
  options.Set("Show8", "False");
  options.Set("BMShowTables", "False");
  options.Set("BMControl", "True");
  options.Set("TimeAs24hour", "False");
  options.Set("TimeChange", "30");
  session.options.FormX = 77;  // moved meanwhile: none of the dialog's business
  EXPECT_EQ(rearranged, 4);
  EXPECT_EQ(rewritten, 2);
  EXPECT_FALSE(session.options.Show[kShowTitle]);
  options.cmdCancel_Click();
  EXPECT_EQ(session.elements, styles);
  EXPECT_TRUE(session.options.Show[kShowTitle]);
  EXPECT_TRUE(session.options.BMShowTables);
  EXPECT_FALSE(session.options.BMControl);
  EXPECT_TRUE(session.options.TimeAs24hour);
  EXPECT_EQ(session.options.TimeChange, 1);
  EXPECT_EQ(session.options.FormX, 77);
  EXPECT_EQ(store.flushes, 0);
}

TEST_F(DisplayOptionsTest, CloseWritesAllElementsAndKeys) {
  ElementStyle large = options.StyleOf(Element::Title);
  large.Size = 60.5F;
  options.SetStyle(Element::Title, large);
  options.Set("TimeChange", "15");
  options.cmdClose_Click({"Show0", "BMControl"});
  for (int element = 0; element < kElements; ++element) {
    EXPECT_EQ(store.GetAllSettings(SectionOfElement(element)).size(), 8U);
  }
  EXPECT_EQ(store.GetSetting("TimerFont8", "Size"), "60.5");
  EXPECT_EQ(store.GetSetting("Timer", "TimeChange"), "15");
  EXPECT_EQ(store.GetSetting("Timer", "TimeAs24hour"), "True");
  EXPECT_EQ(store.GetSetting("Timer", "LogFile"), "-1");
  Session again;
  SettingsTable(store, again, errors).GetDefaults();
  EXPECT_EQ(again.elements, session.elements);
  options.cmdRestore_Click();
  EXPECT_EQ(session.elements, DefaultElementStyles());
}

TEST_F(DisplayOptionsTest, PoorContrastIsPointedOut) {
  ElementStyle style;
  style.Forecolour = {255, 255, 0};  // on white
  style.Backcolour = {255, 255, 255};
  options.SetStyle(Element::Title, style);
  EXPECT_EQ(options.ContrastNote(Element::Title),
            "These colours are hard to tell apart across a room");
  EXPECT_EQ(options.ContrastNote(Element::TimeUp), "");
  options.SetStyle(Element::ScreenBackground, style);
  EXPECT_EQ(options.ContrastNote(Element::ScreenBackground), "");
}

TEST_F(DisplayOptionsTest, AStoreThatCannotBeWrittenIsReported) {
  store.full = true;
  options.cmdClose_Click({"Show0", "BMControl"});
  EXPECT_EQ(errors.reports, std::vector<std::string>{"61 frmFont 1"});
}

TEST(ContrastTest, WeighsThePairsAsTheyFallInTheText) {
  constexpr int32_t kBlack = 0;
  constexpr int32_t kWhite = 0xFFFFFF;
  const std::pair<int32_t, int32_t> rows[] = {
      {0xFFFFFF, kBlack}, {0x000000, kWhite}, {0x0000FF, kWhite},  // "FF": only 28 x 255
      {0x00FFFF, kBlack},                                          // "FFFF": 28 and 151 x 255
      {0xFF0000, kWhite}, {0x00FF00, kWhite},                      // "FF00": 28 x 255
      {0x7FFF00, kBlack}, {0x0F0F0F, kBlack}};
  for (const auto& [back, text] : rows)
    EXPECT_EQ(Contrast(Colour::FromStored(back)).Stored(), text) << back;
}

TEST(ScreenPlanTest, TheRoomDisplayTakesTheOtherScreen) {
  const std::vector<Place> two = {{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
  EXPECT_EQ(PlanScreens(two, 0).roomScreen, 1U);
  EXPECT_EQ(PlanScreens(two, 0).twinScreen, 0U);
  EXPECT_EQ(PlanScreens(two, 1).roomScreen, 0U);
  EXPECT_GE(PlanScreens(two, 0).room.x, 1920);
  for (const Place& only : {Place{0, 0, 1920, 1080}, Place{0, 0, 1080, 1920}}) {
    const ScreenPlan plan = PlanScreens({only}, 0);
    EXPECT_TRUE(plan.sideBySide);
    EXPECT_TRUE(plan.room.Right() <= plan.twin.x || plan.room.Bottom() <= plan.twin.y);
    EXPECT_LE(plan.twin.Right(), only.Right());
    EXPECT_LE(plan.twin.Bottom(), only.Bottom());
  }
}

TEST(ScreenPlanTest, ADialogOpensBesideTheCountdown) {
  const Place screen{0, 0, 1920, 1080};
  struct Row {
    const char* name;
    Place wanted;
    std::vector<Place> countdowns;
    bool hides;
  };
  const Row rows[] = {
      {"free where it is wanted", {800, 700, 400, 300}, {{300, 300, 800, 300}}, false},
      {"over the digits", {700, 300, 400, 500}, {{300, 300, 800, 300}}, false},
      {"between two displays",
       {760, 340, 400, 400},
       {{100, 400, 760, 250}, {1060, 400, 760, 250}},
       false},
      {"larger than any free place", {460, 140, 1000, 800}, {{160, 300, 1600, 480}}, true},
      {"larger than the screen", {-40, -60, 2000, 1200}, {{160, 300, 1600, 480}}, true},
  };
  for (const Row& row : rows) {
    const Place place = PlaceDialog(screen, row.wanted, row.countdowns);
    EXPECT_EQ(place.width, row.wanted.width) << row.name;
    EXPECT_TRUE(place.x >= 0 && place.y >= 0) << row.name;
    if (row.wanted.width <= screen.width) {
      EXPECT_TRUE(place.Right() <= 1920 && place.Bottom() <= 1080) << row.name;
    }
    for (const Place& countdown : row.countdowns) {
      const bool beside = place.Right() <= countdown.x || place.x >= countdown.Right() ||
                          place.Bottom() <= countdown.y || place.y >= countdown.Bottom();
      EXPECT_EQ(!beside, row.hides) << row.name;
    }
  }
  const Place wanted = rows[0].wanted;
  EXPECT_EQ(PlaceDialog(screen, wanted, rows[0].countdowns).x, wanted.x);
}

TEST_F(DisplayOptionsTest, CancelWritesTheTimesAnewToo) {
  options.Set("TimeAs24hour", "False");
  ASSERT_EQ(rewritten, 1);
  options.cmdCancel_Click();
  EXPECT_EQ(rewritten, 2);
}

}  // namespace
}  // namespace corvanel
