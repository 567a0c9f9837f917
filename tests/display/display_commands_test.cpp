#include "display/display_commands.h"

#include <gtest/gtest.h>

#include "display/contrast.h"
#include "display/pointer_watch.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

class FakeForm : public DisplayForm {
 public:
  WindowPlace Place() const override { return place; }
  void SetFullScreen(bool fullScreen) override { place.normal = !fullScreen; }
  DisplayKind Kind() const override { return kind; }
  bool Visible() const override { return !hidden; }
  void SetVisible(bool visible) override { hidden = !visible; }
  DisplayKind kind = DisplayKind::Room;
  WindowPlace place{100.4, 200, 9000, 6000.6, true};
  bool hidden = false;
};

class Desk : public DisplayHost, public ProgramEnding {
 public:
  void ShowControlWindow() override { done += "control "; }
  void ShowHelp() override { done += "help "; }
  double ScreenWidth() const override { return 1920 * 15; }
  void ShowFullScreenPair(bool fullScreen) override { done += fullScreen ? "full " : "normal "; }
  void ShowMonitorPairs() override {}
  DisplayForm& RoomDisplay() override { return room; }
  DisplayForm& Twin() override { return twin; }
  void SaveDisplayGeometry() override { done += "geometry "; }
  void ShutDownComputer() override { done += "shutdown "; }
  void EndProgram() override { done += "end "; }
  FakeForm room;
  FakeForm twin;
  std::string done;
};

class DisplayCommandsTest : public testing::Test {
 protected:
  DisplayCommandsTest() {
    bench.session.settings.nRounds = 3;
    bench.session.settings.MinPerRound = 10;
    bench.clock.Start();
    bench.Pass(60);
  }
  ClockBench bench;
  FakePrompts prompts;
  FakeErrors errors;
  Desk desk;
  FakeForm& form = desk.room;
  ProgramExit exit{bench.session, prompts, desk};
  DisplayCommands commands{{bench.clock, bench.session, prompts, errors, desk, exit}};
};

TEST_F(DisplayCommandsTest, KeysRunTheirCommands) {
  commands.Form_KeyDown('P', form);
  EXPECT_TRUE(bench.face.paused);
  commands.Form_KeyDown('P', form);
  EXPECT_FALSE(bench.face.paused);
  for (const int plus : {key::kAdd, key::kPlus}) commands.Form_KeyDown(plus, form);
  EXPECT_EQ(bench.face.countdown, "11:00");
  for (const int minus : {key::kSubtract, key::kMinus}) commands.Form_KeyDown(minus, form);
  EXPECT_EQ(bench.face.countdown, "9:00");
  commands.Form_KeyDown('R', form);
  EXPECT_EQ(bench.face.countdown, "10:00");
  commands.Form_KeyDown('N', form);
  EXPECT_EQ(bench.session.currentRound, 2);
  commands.Form_KeyDown(key::kF1, form);
  commands.Form_KeyDown('X', form);
  EXPECT_FALSE(form.hidden);
  commands.Form_KeyDown(key::kEscape, form);
  EXPECT_TRUE(form.hidden);
  EXPECT_EQ(desk.done, "help control ");
}

TEST_F(DisplayCommandsTest, FullScreenRemembersTheNormalPlaceAndTogglesThePair) {
  commands.Form_KeyDown('F', form);
  EXPECT_FALSE(form.place.normal);
  EXPECT_EQ(bench.session.options.FormX, 100);
  EXPECT_EQ(bench.session.options.FormSizeY, 6001);
  form.place.left = 0;
  commands.CaptureGeometry(form);
  EXPECT_EQ(bench.session.options.FormX, 100);
  EXPECT_EQ(bench.session.options.DisplayState, 0);
  commands.Form_KeyDown('F', form);
  EXPECT_TRUE(form.place.normal);
  commands.CaptureGeometry(form);
  EXPECT_EQ(bench.session.options.FormX, 0);
  EXPECT_EQ(bench.session.options.DisplayState, -1);
  EXPECT_EQ(desk.done, "full normal ");
}

TEST_F(DisplayCommandsTest, AlwaysOnTopRefusesFullScreen) {
  bench.session.options.OnTop = true;
  commands.cmdFullScreen_Click(0, form);
  EXPECT_EQ(prompts.texts.back(),
            "You can't use full screen when you have set\r\n"
            "the option for Corvanel to be always on top.\r\n"
            "You can change the setting from the options menu");
  bench.session.settings.ExtraMonitor = -1;
  for (const double left : {-5000.0, 0.0, 1920 * 15.0 + 100}) {
    form.place.left = left;
    commands.cmdFullScreen_Click(0, form);
    EXPECT_NE(prompts.texts.back().find("unless Corvanel is on the second monitor."),
              std::string::npos);
  }
  EXPECT_EQ(prompts.texts.size(), 4U);
  EXPECT_TRUE(form.place.normal);
  EXPECT_EQ(desk.done, "");
}

TEST_F(DisplayCommandsTest, TheTwinHidesAndMaximisesTheRoomDisplay) {
  desk.twin.kind = DisplayKind::Twin;
  commands.Form_KeyDown('H', form);  // the room display does not know these keys
  commands.Form_KeyDown('M', form);
  EXPECT_TRUE(form.Visible());
  EXPECT_TRUE(form.place.normal);
  commands.Form_KeyDown('H', desk.twin);
  EXPECT_FALSE(form.Visible());
  commands.Form_KeyDown('H', desk.twin);
  EXPECT_TRUE(form.Visible());
  commands.Form_KeyDown('M', desk.twin);
  EXPECT_FALSE(form.place.normal);
  EXPECT_TRUE(desk.twin.place.normal);
  commands.Form_KeyDown('M', desk.twin);
  EXPECT_TRUE(form.place.normal);
}

TEST_F(DisplayCommandsTest, AlwaysOnTopLetsOnlyAnotherScreenBeMaximised) {
  bench.session.options.OnTop = true;
  bench.session.settings.ExtraMonitor = -1;
  const std::pair<double, bool> rows[] = {
      {0, false}, {1920 * 15 - 500, false}, {1920 * 15 + 100, true}, {-200, false}, {-201, true}};
  for (const auto& [left, allowed] : rows) {
    prompts.texts.clear();
    form.place.left = left;
    form.place.normal = true;
    commands.cmdMonitorFullScreen_Click(0);
    EXPECT_EQ(!form.place.normal, allowed) << left;
    EXPECT_EQ(prompts.texts.empty(), allowed) << left;
  }
}

TEST_F(DisplayCommandsTest, TheTwinMakesWayForTheExitQuestion) {
  bench.session.settings.ExtraMonitor = -1;
  prompts.answers = {Answer::No};
  commands.Form_KeyDown('E', form);
  EXPECT_TRUE(desk.twin.Visible());
  prompts.answers = {Answer::Yes};
  commands.Form_KeyDown('E', form);
  EXPECT_FALSE(desk.twin.Visible());
}

TEST_F(DisplayCommandsTest, LeavingTheProgramAsksFirst) {
  struct Row {
    const char* name;
    int16_t autoShutdown;
    std::deque<Answer> answers;
    const char* done;
  };
  const Row rows[] = {
      {"stays", 0, {Answer::No}, ""},
      {"leaves", 0, {Answer::Yes}, "geometry end "},
      {"cancels the shutdown question", 1, {Answer::Yes, Answer::Cancel}, ""},
      {"leaves the computer on", 1, {Answer::Yes, Answer::No}, "geometry end "},
      {"shuts down", 1, {Answer::Yes, Answer::Yes}, "geometry shutdown end "},
  };
  for (const Row& row : rows) {
    desk.done.clear();
    prompts.answers = row.answers;
    bench.session.options.AutoShutdown = row.autoShutdown;
    commands.Form_KeyDown('E', form);
    EXPECT_EQ(desk.done, row.done) << row.name;
  }
  desk.done.clear();
  bench.session.options.AutoShutdown = 0;
  prompts.texts.clear();
  exit.FromControlWindow(false);
  EXPECT_EQ(desk.done, "end ");
  EXPECT_TRUE(prompts.texts.empty());
}

TEST_F(DisplayCommandsTest, TheMinuteButtonExplainsTheAdjuster) {
  commands.cmdChange_Click();
  EXPECT_EQ(prompts.texts.back(),
            "Click on the up or down arrows to the right\r\nto add or subtract one minute");
  commands.vsbChange_Change(0);
  EXPECT_EQ(bench.face.countdown, "9:00");
}

TEST(PointerWatchTest, OnlyAnotherPlaceIsAMovement) {
  PointerWatch watch;
  EXPECT_TRUE(watch.Moved(3, 4));
  EXPECT_FALSE(watch.Moved(3, 4));
  EXPECT_TRUE(watch.Moved(3, 5));
}

TEST(DefaultColours, AreReadAcrossTheRoom) {
  const ElementStyles& styles = DefaultElementStyles();
  for (const ElementStyle& style : styles) {
    EXPECT_GE(ContrastRatio(style.Forecolour, style.Backcolour), 7);
  }
  EXPECT_NEAR(ContrastRatio(0x000000, 0xFFFFFF), 21, 1e-9);
  EXPECT_NEAR(ContrastRatio(0x0000FF, 0xFFFFFF), 4.0, 0.01);  // pure red on white
}

}  // namespace
}  // namespace corvanel
