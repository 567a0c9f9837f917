// The session as it is led from the hall: what devices can do to it, and what they are told.

#include "network/remote_desk.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/network_bench.h"

namespace corvanel {
namespace {

using nlohmann::json;

const RemoteDevice kAnn = {std::string(64, 'a'), "Ann's phone"};
const RemoteDevice kBob = {std::string(64, 'b'), "Bob's tablet"};

class RemoteDeskTest : public testing::Test, public RemoteLines {
 protected:
  RemoteDeskTest() {
    network_.keeper.kept = TextOf({kAnn, kBob});
    desk_.Load();
    desk_.SpeakBy(this);
    bench_.session.settings.nRounds = 5;
    bench_.clock.Start(1);
  }
  ~RemoteDeskTest() override { desk_.SpeakBy(nullptr); }

  void Admit(const RemoteGate& gate) override { gate_ = gate; }
  void TellDevices(const std::string& state) override {
    told_ = json::parse(state)["can"];
    all_ = state;
  }
  void Answer(const RemoteWord& /*word*/, const std::string& refusal) override {
    refusal_ = refusal;
  }

  /// Says what the device was told to say for this; the refusal.
  std::string Press(const RemoteDevice& device, const std::string& button) {
    return Say(device, told_.value(button, button));
  }
  std::string Say(const RemoteDevice& device, const std::string& text) {
    refusal_ = "not answered";
    desk_.Hear({1, 1, device, text});
    return refusal_;
  }
  json Told() { return json::parse(all_); }

  ClockBench bench_;
  Notices notices_{bench_.broadcast};
  NetworkBench network_{bench_, notices_};
  RemoteDesk& desk_ = network_.remotes;
  RemoteGate gate_;
  json told_;
  std::string all_;
  std::string refusal_;
};

constexpr const char* kMovedOn = "The session has moved on meanwhile: nothing was done.";

TEST_F(RemoteDeskTest, EveryCommandDoesWhatItsKeyDoes) {
  bench_.Pass(10);
  EXPECT_EQ(Press(kAnn, "pause"), "");
  EXPECT_TRUE(bench_.clock.State().paused);
  EXPECT_EQ(bench_.face.done, "pause by Ann's phone");
  EXPECT_FALSE(told_.contains("longer")) << "nothing is added to a clock that stands";
  EXPECT_EQ(Press(kBob, "resume"), "");
  EXPECT_FALSE(bench_.clock.State().paused);
  const double left = bench_.clock.Now().secondsLeft;
  EXPECT_EQ(Press(kAnn, "longer"), "");
  EXPECT_NEAR(bench_.clock.Now().secondsLeft, left + 60, 0.001);
  EXPECT_EQ(Press(kAnn, "shorter"), "");
  EXPECT_EQ(Press(kAnn, "shorter"), "");
  EXPECT_NEAR(bench_.clock.Now().secondsLeft, left - 60, 0.001);
  EXPECT_EQ(Press(kBob, "next"), "");
  EXPECT_EQ(bench_.clock.State().round, 2);
  EXPECT_EQ(Told()["undo"]["what"], "next round");
  EXPECT_EQ(Told()["undo"]["by"], "Bob's tablet");
  EXPECT_EQ(Press(kAnn, "undo"), "");
  EXPECT_EQ(bench_.clock.State().round, 1);
  bench_.clock.Do(SessionCommand::Pause);
  EXPECT_EQ(bench_.face.done, "pause") << "the keyboard's";
}

// Two thumbs and a key at the same moment: one thing is done, not two.
TEST_F(RemoteDeskTest, WhatWasSeenOnlyBeforeIsNotDone) {
  const std::string next = told_["next"];
  EXPECT_EQ(next, "next round 1");
  EXPECT_EQ(Say(kAnn, next), "");
  EXPECT_EQ(Say(kBob, next), kMovedOn);
  EXPECT_EQ(bench_.clock.State().round, 2);
  const std::string undo = told_["undo"];
  bench_.Pass(1);
  bench_.clock.Do(SessionCommand::AddMinute);
  EXPECT_EQ(Say(kAnn, undo), kMovedOn) << "the keyboard did something else meanwhile";
  EXPECT_EQ(bench_.clock.State().round, 2);
  EXPECT_EQ(Press(kAnn, "undo"), "");
  EXPECT_EQ(Press(kAnn, "undo"), "");
  EXPECT_EQ(bench_.clock.State().round, 1);
  // Both wanted the same.
  EXPECT_EQ(Say(kAnn, "pause"), "");
  EXPECT_EQ(Say(kBob, "pause"), "");
  EXPECT_EQ(bench_.clock.UndoSteps().size(), 1U);
}

// The round runs out while the word is on its way: the move that began is not skipped.
TEST_F(RemoteDeskTest, ATickThatFellDueComesFirst) {
  bench_.Pass(bench_.clock.Now().secondsLeft - 0.5);
  const std::string next = told_["next"];
  bench_.time.PassTo(bench_.time.Elapsed() + 1);
  EXPECT_EQ(Say(kAnn, next), kMovedOn);
  EXPECT_EQ(bench_.clock.State().phase, Phase::Move);
  EXPECT_EQ(Say(kAnn, "longer"), kMovedOn);
}

TEST_F(RemoteDeskTest, StrangeWordsAreRefused) {
  const ClockState before = bench_.clock.State();
  for (const char* text : {"", " ", "start 1", "next", "next round 7", "next move 1", "undo",
                           "undo nan", "Pause", "pause now", "restart"}) {
    EXPECT_EQ(Say(kAnn, text), kMovedOn) << text;
  }
  EXPECT_EQ(bench_.clock.State(), before);
}

TEST_F(RemoteDeskTest, DevicesAreLetInOneByOneAndSentAway) {
  const std::string code = desk_.Invite();
  const RemoteDevice carol = {std::string(64, 'c'), "Carol's phone"};
  EXPECT_TRUE(gate_.Find(RemoteDevice{KeyOfCode(code), ""}.Id()));
  desk_.Hear({1, 1, carol, "join", KeyOfCode(code), "", ""});
  EXPECT_FALSE(gate_.Find(RemoteDevice{KeyOfCode(code), ""}.Id())) << "the code was used";
  EXPECT_EQ(desk_.Devices().size(), 3U);
  EXPECT_TRUE(gate_.Has(carol));
  EXPECT_NE(desk_.Code(), code) << "the next one needs another code";
  EXPECT_EQ(ReadDevices(network_.keeper.kept).Value().size(), 3U);
  EXPECT_EQ(Press(carol, "pause"), "");
  desk_.SendAway(carol);
  EXPECT_FALSE(gate_.Find(carol.Id()));
  EXPECT_EQ(Say(carol, "resume"), "not answered");
  EXPECT_TRUE(bench_.clock.State().paused) << "a word that was on its way does nothing";
  EXPECT_EQ(ReadDevices(network_.keeper.kept).Value().size(), 2U);
  const std::string lateKey = KeyOfCode(desk_.Code());
  desk_.EndInvitation();
  EXPECT_FALSE(gate_.Find(RemoteDevice{lateKey, ""}.Id()));
  desk_.Hear({1, 1, {std::string(64, 'd'), "Late"}, "join", lateKey, "", ""});
  EXPECT_EQ(desk_.Devices().size(), 2U);
}

TEST_F(RemoteDeskTest, TwoDevicesOfOneNameAreToldApart) {
  for (const char digit : {'c', 'd'}) {
    desk_.Invite();
    desk_.Hear({1, 1, {std::string(64, digit), "iPhone"}, "join", KeyOfCode(desk_.Code()), "", ""});
  }
  EXPECT_EQ(desk_.Devices()[2].name, "iPhone");
  EXPECT_EQ(desk_.Devices()[3].name, "iPhone 2");
  EXPECT_EQ(Press({std::string(64, 'd'), "iPhone"}, "pause"), "");
  EXPECT_EQ(bench_.face.done, "pause by iPhone 2");
}

TEST_F(RemoteDeskTest, AListThatCannotBeWrittenIsToldOf) {
  network_.keeper.failure = "the disk is full";
  bench_.Pass(2);
  ASSERT_EQ(bench_.notices.size(), 1U);
  EXPECT_NE(bench_.notices[0].text.find("the disk is full"), std::string::npos);
  network_.keeper.failure.clear();
  bench_.Pass(2);
  EXPECT_TRUE(bench_.notices.empty());
}

TEST_F(RemoteDeskTest, DevicesSeeTheLinesForTheDirector) {
  notices_.Set({NoticeKind::Scoring, "The scoring file is gone", "Look again"});
  EXPECT_EQ(Told()["lines"], json({"The scoring file is gone"}));
  notices_.Clear(NoticeKind::Scoring);
  EXPECT_EQ(Told()["lines"], json::array());
  const std::string before = all_;
  all_.clear();
  bench_.Pass(20);
  EXPECT_EQ(all_, "") << "seconds pass without a word";
}

TEST_F(RemoteDeskTest, AListThatAnotherProgramWorksWithIsLeftAlone) {
  network_.keeper.ours = false;
  const std::string before = network_.keeper.kept;
  RemoteDesk desk({bench_.clock, notices_, network_.keeper});
  desk.Load();
  EXPECT_TRUE(desk.Devices().empty());
  EXPECT_EQ(bench_.notices.size(), 1U);
  desk.Invite();
  desk.Hear({1, 1, {std::string(64, 'c'), "Carol"}, "join", KeyOfCode(desk.Code()), "", ""});
  EXPECT_EQ(desk.Devices().size(), 1U);
  EXPECT_EQ(network_.keeper.kept, before);
}

TEST_F(RemoteDeskTest, ADamagedListIsPutAsideAndToldOf) {
  network_.keeper.kept = "[{";
  RemoteDesk desk({bench_.clock, notices_, network_.keeper});
  desk.Load();
  EXPECT_TRUE(desk.Devices().empty());
  EXPECT_TRUE(network_.keeper.putAside);
  ASSERT_EQ(bench_.notices.size(), 1U);
  EXPECT_EQ(bench_.notices[0].kind, NoticeKind::Devices);
}

}  // namespace
}  // namespace corvanel
