#include "display/display_commands.h"

#include <gtest/gtest.h>

#include "display/pointer_watch.h"
#include "session/contrast.h"
#include "tests/support/fake_display_host.h"
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

class DisplayCommandsTest : public testing::Test {
 protected:
  DisplayCommandsTest() {
    bench.session.settings.nRounds = 3;
    bench.session.settings.MinPerRound = 10;
    bench.clock.Start(1);
    bench.Pass(60);
  }
  ClockBench bench;
  FakePrompts prompts;
  FakeErrors errors;
  FakeForm form;
  FakeForm twin;
  FakeDisplayHost desk{form, twin};
  DisplayCommands commands{{bench.clock, bench.session, prompts, errors, desk}};

  /// A key that goes down on a window.
  void Press(int virtualKey, FakeForm& on) {
    const auto command = CommandOfKey(
        virtualKey, on.kind == DisplayKind::Twin || bench.session.settings.ExtraMonitor);
    if (command) commands.Run(*command, on);
  }
};

TEST_F(DisplayCommandsTest, KeysRunTheirCommands) {
  Press('P', form);
  EXPECT_TRUE(bench.face.paused);
  Press('P', form);
  EXPECT_FALSE(bench.face.paused);
  for (const int plus : {key::kAdd, key::kPlus}) Press(plus, form);
  EXPECT_EQ(bench.face.countdown, "11:00");
  for (const int minus : {key::kSubtract, key::kMinus}) Press(minus, form);
  EXPECT_EQ(bench.face.countdown, "9:00");
  Press('R', form);
  EXPECT_EQ(bench.face.countdown, "10:00");
  Press('N', form);
  EXPECT_EQ(bench.clock.State().round, 2);
  Press(key::kF1, form);
  Press('X', form);
  EXPECT_FALSE(form.hidden);
  Press(key::kEscape, form);
  EXPECT_TRUE(form.hidden);
  EXPECT_EQ(desk.done, "help control ");
}

TEST_F(DisplayCommandsTest, FullScreenRemembersTheNormalPlaceAndTogglesThePair) {
  Press('F', form);
  EXPECT_FALSE(form.place.normal);
  EXPECT_EQ(bench.session.options.FormX, 100);
  EXPECT_EQ(bench.session.options.FormSizeY, 6001);
  form.place.left = 0;
  commands.CaptureGeometry(form);
  EXPECT_EQ(bench.session.options.FormX, 100);
  EXPECT_FALSE(bench.session.options.DisplayState);
  Press('F', form);
  EXPECT_TRUE(form.place.normal);
  commands.CaptureGeometry(form);
  EXPECT_EQ(bench.session.options.FormX, 0);
  EXPECT_TRUE(bench.session.options.DisplayState);
  EXPECT_EQ(desk.done, "full normal ");
}

TEST_F(DisplayCommandsTest, AlwaysOnTopRefusesFullScreen) {
  bench.session.options.OnTop = true;
  commands.cmdFullScreen_Click(0, form);
  EXPECT_EQ(prompts.texts.back(),
            "You can't use full screen when you have set\r\n"
            "the option for Corvanel to be always on top.\r\n"
            "You can change the setting from the options menu");
  bench.session.settings.ExtraMonitor = true;
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
  twin.kind = DisplayKind::Twin;
  Press('H', form);  // alone, the room display does not know these keys
  Press('M', form);
  EXPECT_TRUE(form.Visible());
  EXPECT_TRUE(form.place.normal);
  Press('H', twin);
  EXPECT_FALSE(form.Visible());
  Press('H', twin);
  EXPECT_TRUE(form.Visible());
  Press('M', twin);
  EXPECT_FALSE(form.place.normal);
  EXPECT_TRUE(twin.place.normal);
  Press('M', twin);
  EXPECT_TRUE(form.place.normal);
}

TEST_F(DisplayCommandsTest, AlwaysOnTopLetsOnlyAnotherScreenBeMaximised) {
  bench.session.options.OnTop = true;
  bench.session.settings.ExtraMonitor = true;
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
  bench.session.settings.ExtraMonitor = true;
  Press('E', form);
  EXPECT_TRUE(twin.Visible());
  desk.ends = true;
  Press('E', form);
  EXPECT_FALSE(twin.Visible());
}

TEST_F(DisplayCommandsTest, TheMinuteButtonExplainsTheAdjuster) {
  commands.Run(DisplayCommand::ExplainMinutes, form);
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
  EXPECT_NEAR(ContrastRatio({}, {255, 255, 255}), 21, 1e-9);
  EXPECT_NEAR(ContrastRatio({255, 0, 0}, {255, 255, 255}), 4.0, 0.01);
}

TEST_F(DisplayCommandsTest, TheTwinsFullScreenRemembersNoPlace) {
  twin.kind = DisplayKind::Twin;
  twin.place.left = 5000;
  Press('F', twin);
  EXPECT_FALSE(twin.place.normal);
  EXPECT_EQ(bench.session.options.FormX, 0);
}

TEST_F(DisplayCommandsTest, MaximisedFromTheTwinTheRoomDisplayRemembersItsPlace) {
  twin.kind = DisplayKind::Twin;
  Press('M', twin);
  EXPECT_FALSE(form.place.normal);
  EXPECT_EQ(bench.session.options.FormX, 100);
  EXPECT_EQ(bench.session.options.FormSizeX, 9000);
}

TEST_F(DisplayCommandsTest, SoundsAndOptionsOpenTheirOwnDialogs) {
  commands.Run(DisplayCommand::Sounds, form);
  EXPECT_EQ(desk.done, "sounds ");
  commands.Run(DisplayCommand::Options, form);
  EXPECT_EQ(desk.done, "sounds options ");
}

TEST_F(DisplayCommandsTest, TheButtonsFollowWhatTheDisplaysDo) {
  twin.kind = DisplayKind::Twin;
  Press('M', twin);
  Press('M', twin);
  EXPECT_EQ(desk.done, "full normal ");
  EXPECT_EQ(desk.pairsShown, 2);
  Press('H', twin);
  EXPECT_EQ(desk.pairsShown, 3);
  Press(key::kEscape, form);
  EXPECT_EQ(desk.pairsShown, 4);
}

}  // namespace
}  // namespace corvanel
