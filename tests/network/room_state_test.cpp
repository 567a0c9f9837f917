// What displays elsewhere are told, and that they need be told no more.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>

#include "network/room_teller.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

using nlohmann::json;

class RoomStateTest : public testing::Test {
 protected:
  RoomStateTest() {
    bench_.broadcast.Add(teller_);
    teller_.TellTo([this](const RoomState& state) { told_.push_back(state); });
    told_.clear();
  }

  json Now() { return json::parse(told_.back().Now(bench_.time.Elapsed())); }
  json Message() { return json::parse(told_.back().Message(bench_.time.Elapsed())); }

  ClockBench bench_;
  std::vector<RoomState> told_;
  RoomTeller teller_{{bench_.session, bench_.clock, bench_.time}};
};

TEST_F(RoomStateTest, SecondsPassWithoutAWord) {
  bench_.clock.Start(1);
  EXPECT_EQ(told_.size(), 1U);
  bench_.Pass(200);
  const size_t calm = told_.size();
  EXPECT_EQ(calm, 1U);
  struct Row {
    SessionCommand command;
    bool told;
  };
  for (const Row& row : {Row{SessionCommand::Pause, true}, Row{SessionCommand::Pause, false},
                         Row{SessionCommand::Resume, true}, Row{SessionCommand::AddMinute, true},
                         Row{SessionCommand::SubtractMinute, true},
                         Row{SessionCommand::NextRound, true}, Row{SessionCommand::Undo, true}}) {
    const size_t before = told_.size();
    bench_.clock.Do(row.command);
    EXPECT_EQ(told_.size() > before, row.told) << static_cast<int>(row.command);
    bench_.Pass(1.4);
  }
  const size_t before = told_.size();
  bench_.time.SetClock(3600);
  bench_.Pass(2);
  EXPECT_GT(told_.size(), before) << "the computer's clock was set";
  bench_.broadcast.ShowTables({{}, {{"", {{"1", TableState::Playing, "2/3", ""}}}}, "", ""});
  EXPECT_EQ(Now()["tables"][0]["tables"][0]["state"], "playing");
}

// Whatever happens in an evening: what was told last is what the clock shows, at every second.
TEST_F(RoomStateTest, WhatWasToldLastIsTrueAtEveryMoment) {
  std::mt19937 random(18);
  bench_.session.settings.nRounds = 4;
  bench_.session.settings.MinPerRound = 4;
  bench_.session.settings.BreakAfterRound = 2;
  bench_.session.settings.TimeForBreak = 5;
  bench_.clock.Start(1);
  int looks = 0;
  for (; bench_.clock.State().phase != Phase::Ended; ++looks) {
    if (random() % 60 == 0) bench_.clock.Do(SessionCommand::AddMinute);
    if (random() % 60 == 0) bench_.clock.Do(SessionCommand::Pause);
    if (random() % 20 == 0) bench_.clock.Do(SessionCommand::Resume);
    bench_.Pass(1);
    const json now = Now();
    const Standing standing = bench_.clock.Now();
    const ClockFace& face = bench_.face;
    EXPECT_EQ(now["round"], face.round);
    EXPECT_EQ(now["paused"], face.paused);
    EXPECT_EQ(now["message"], face.message);
    EXPECT_EQ(now["finish"], face.finish);
    EXPECT_EQ(now["caption"], face.caption);
    EXPECT_NEAR(now["secondsLeft"].get<double>(), standing.secondsLeft, 0.001);
    if (HasFailure()) break;
  }
  EXPECT_GT(looks, 1000);
  EXPECT_LT(told_.size(), static_cast<size_t>(looks) / 10) << "of " << looks << " seconds";
  EXPECT_EQ(Now()["phase"], "ended");
}

// A page plays the sounds of a stretch when that begins, whether it goes on to it by itself or is
// told of it: once.
TEST_F(RoomStateTest, AStretchBeginsOnceWithItsSounds) {
  for (size_t i = 0; i < kCues; ++i) {
    bench_.session.settings.sounds.files[i] = "sounds/" + std::to_string(i) + ".wav";
  }
  bench_.clock.Start(1);
  const json foretold = Message()["room"]["faces"][1];
  EXPECT_EQ(foretold["style"], "early");
  EXPECT_EQ(foretold["sounds"], json({static_cast<int>(Cue::EarlyWarning)}));
  bench_.Pass(foretold["from"].get<double>() + 0.5);
  EXPECT_EQ(Message()["room"]["faces"][0]["from"], foretold["from"]);
  EXPECT_EQ(Message()["room"]["faces"][0]["sounds"], foretold["sounds"]);
  bench_.broadcast.ShowTables({{"Table 1 still playing"}, {}, "", ""});
  EXPECT_EQ(Message()["room"]["faces"][0]["from"], foretold["from"]);
  // Nobody could know that all tables have finished.
  bench_.clock.Do(SessionCommand::AutoEnd);
  const json move = Message()["room"]["faces"][0];
  EXPECT_EQ(move["phase"], "move");
  EXPECT_EQ(move["from"], bench_.time.Elapsed());
  EXPECT_EQ(move["sounds"], json({static_cast<int>(Cue::EndOfRound)}));
}

TEST_F(RoomStateTest, TheMessageHasWhatAPageNeeds) {
  bench_.session.settings.Header = "<b>Łódź</b> \xff \"pairs\"";
  bench_.session.options.BMControl = true;
  bench_.clock.Start(3);
  bench_.broadcast.ShowTables({{"Table 1 still playing"},
                               {{"", {{"1", TableState::Playing, "2/3", "Ann, Bob"}}}},
                               "Bridgemate: no data",
                               ""});
  const json message = Message();
  EXPECT_EQ(message["version"], 1);
  EXPECT_EQ(message["clock"], "virtual");
  const json& room = message["room"];
  // A title is text, whatever stands in it; bytes that are none are replaced.
  EXPECT_EQ(room["title"], "<b>Łódź</b> \xef\xbf\xbd \"pairs\"");
  EXPECT_EQ(room["faces"][0]["caption"], "Time remaining for Round 3 of 12");
  EXPECT_EQ(room["faces"].size(), 40U);
  EXPECT_EQ(room["looks"]["styles"]["last"]["back"], "#ffdd00");
  // What the director keeps to himself goes nowhere, and players' names never do.
  EXPECT_EQ(room["line"], "");
  EXPECT_TRUE(room["sections"].empty());
  bench_.session.options.BMControl = false;
  bench_.broadcast.ShowTables({{}, {{"", {{"1", TableState::Slow, "2/3", "Ann, Bob"}}}}, "", ""});
  EXPECT_EQ(Message().dump().find("Ann"), std::string::npos);
  EXPECT_EQ(Message()["room"]["sections"].size(), 1U);
}

}  // namespace
}  // namespace corvanel
