#include "network/rooms.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "network/broker.h"
#include "network/room_state.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

using nlohmann::json;

class RoomsTest : public testing::Test {
 protected:
  /// What a room with a session under way tells at `now` by its own clock.
  static std::string Brief(double now, const std::string& title = "Final") {
    ClockBench bench;
    bench.session.settings.Header = title;
    bench.clock.Start(1);
    auto faces = FacesAhead(bench.session, bench.clock.State(), bench.time, 40);
    return RoomState(bench.session, std::move(faces), {}, {"boot", 0}, ClockTime(72000)).Brief(now);
  }
  void Hear(const std::string& topic, const std::string& text, double at, bool kept = false) {
    rooms_.Hear({topic, text, kept, at});
  }
  json All(double now) const { return json::parse(rooms_.Text(now))["rooms"]; }
  json Only(double now) const {
    const json all = All(now);
    return all.size() == 1 ? all[0] : json();
  }

  Rooms rooms_;
};

TEST_F(RoomsTest, TheQuickestOfTheLatestWordsTellsHowFarTheClocksAreApart) {
  Hear("corvanel/A/state", Brief(100), 500, true);
  EXPECT_FALSE(Only(500).contains("lag")) << "kept for nobody knows how long";
  EXPECT_EQ(Only(500)["at"], 100);
  Hear("corvanel/A/state", Brief(110), 511.4);
  EXPECT_NEAR(Only(511)["lag"], 401.4, 0.051);
  Hear("corvanel/A/state", Brief(125), 525.1);
  Hear("corvanel/A/state", Brief(140), 542);
  EXPECT_NEAR(Only(542)["lag"], 400.1, 0.051);
  for (int i = 0; i < 8; ++i) Hear("corvanel/A/state", Brief(200 + i), 600.3 + i);
  EXPECT_NEAR(Only(610)["lag"], 400.3, 0.051) << "clocks drift";
}

TEST_F(RoomsTest, AnotherRunOfItsComputerHasAnotherClock) {
  Hear("corvanel/A/state", Brief(100), 500);
  std::string restarted = Brief(7);
  restarted.replace(restarted.find("boot"), 4, "next");
  Hear("corvanel/A/state", restarted, 600);
  EXPECT_NEAR(Only(600)["lag"], 593, 0.051);
}

TEST_F(RoomsTest, ItsSilenceIsTold) {
  Hear("corvanel/A/state", Brief(100), 500);
  EXPECT_FALSE(Only(500 + 2 * kBeat).contains("silentSince"));
  EXPECT_EQ(Only(500 + 3 * kBeat)["silentSince"], 500);
  Hear("corvanel/A/state", Brief(140), 560, true);
  EXPECT_EQ(Only(540 + 3 * kBeat)["silentSince"], 540) << "kept since we heard no more";
  Hear("corvanel/A/state", Brief(110), 561, true);
  EXPECT_EQ(Only(540 + 3 * kBeat)["silentSince"], 540) << "older than what we know";
  EXPECT_EQ(Only(501)["here"], false);
  Hear("corvanel/A/here", kHere, 501);
  EXPECT_EQ(Only(501)["here"], true);
  Hear("corvanel/A/here", kGone, 502);
  EXPECT_EQ(Only(502)["here"], false);
  Hear("corvanel/A/state", "", 503);
  EXPECT_TRUE(All(503).empty()) << "taken out of the broker";
}

TEST_F(RoomsTest, WhatCannotBeUnderstoodChangesNothing) {
  Hear("corvanel/A/state", Brief(100), 500);
  const std::string before = rooms_.Text(500);
  const json good = json::parse(Brief(101));
  const auto with = [&](const char* path, const json& value) {
    json changed = good;
    changed[json::json_pointer(path)] = value;
    return changed.dump();
  };
  const std::string texts[] = {
      "x",
      "[]",
      "{\"room\":1}",
      std::string(20000, ' ') + good.dump(),
      with("/version", 2),
      with("/version", "1"),
      with("/now", nullptr),
      with("/now", "soon"),
      with("/clock", 1),
      with("/room/step", 0),
      with("/room/title", json::array()),
      with("/room/faces", json::array()),
      with("/room/faces", json::object()),
      with("/room/faces/0", "x"),
      with("/room/faces/0/from", json::object()),
      with("/room/faces/0/caption", 3),
      with("/room/faces/0/paused", 0),
      "{\"now\":1e999," + good.dump().substr(1),
      good.dump().substr(0, 300),
      std::string(15000, '['),
  };
  for (const std::string& text : texts) {
    Hear("corvanel/A/state", text, 600);
    EXPECT_EQ(rooms_.Text(500), before) << text.substr(0, 80);
  }
  for (const char* topic :
       {"corvanel//state", "corvanel/state", "elsewhere/A/state", "", "/here"}) {
    Hear(topic, Brief(101), 600);
    EXPECT_EQ(rooms_.Text(500), before) << topic;
  }
  Hear(StateTopic(std::string(100, 'n')), Brief(1), 600);
  EXPECT_EQ(rooms_.Text(500), before);
}

TEST_F(RoomsTest, NoStrangerFillsTheMemory) {
  for (int i = 0; i < 1000; ++i) Hear(StateTopic(fmt::format("R{}", i)), Brief(1), 1);
  EXPECT_EQ(All(1).size(), 300U);
}

TEST_F(RoomsTest, ANameIsTextAndOneLevelOfATopic) {
  EXPECT_EQ(StateTopic("Bar / #1+\n"), "corvanel/Bar  1/state");
  Hear(StateTopic("<b>\"Hall\\\""), Brief(1), 1);
  EXPECT_EQ(Only(1)["name"], "<b>\"Hall\\\"");
  Hear("corvanel/\xFF\xFE/state", Brief(1), 1);
  EXPECT_EQ(All(1).size(), 2U) << "it is still JSON";
}

TEST(BrokerPlaceTest, IsReadFromItsText) {
  const struct {
    const char* text;
    const char* read;  // empty: none
  } rows[] = {
      {"broker", "plain broker 1883 as "},
      {"192.168.1.5:1884", "plain 192.168.1.5 1884 as "},
      {"mqtt://hall@broker.lan", "plain broker.lan 1883 as hall"},
      {"mqtts://broker.lan", "tls broker.lan 8883 as "},
      {"mqtts://a@b@broker:443", "tls broker 443 as a@b"},
      {"", ""},
      {"mqtts://", ""},
      {"user@", ""},
      {"broker:", ""},
      {"broker:0", ""},
      {"broker:70000", ""},
      {"broker:18x", ""},
      {"http://broker", ""},
      {"two words", ""},
      {"broker/room", ""},
  };
  for (const auto& row : rows) {
    const auto place = BrokerPlace::Of(row.text);
    std::string read;
    if (place) {
      const BrokerPlace& p = place.Value();
      read = fmt::format("{} {} {} as {}", p.tls ? "tls" : "plain", p.host, p.port, p.user);
    }
    EXPECT_EQ(read, row.read) << row.text;
  }
}

}  // namespace
}  // namespace corvanel
