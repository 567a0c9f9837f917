// Who may lead the session from the hall, and that nobody else can.

#include "network/remote_devices.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "basics/numbers.h"
#include "tests/support/remote_device.h"

namespace corvanel {
namespace {

const std::string kKey(64, 'a');
const std::string kOther(64, 'b');

class RemoteLineTest : public testing::Test {
 protected:
  RemoteLineTest() { ann_.Meet(line_.Challenge()); }
  /// The text of the word, or why it was not taken.
  std::string Hear(const std::string& message, double now = 100) {
    const auto word = line_.Hear(message, gate_, now);
    return word ? word.Value().text : "refused: " + word.Failure().description;
  }

  RemoteGate gate_{{{kKey, "Ann's phone"}}, ""};
  RemoteLine line_;
  SpeakingDevice ann_{kKey};
};

// By another implementation of scrypt and HMAC.
TEST(RemoteCodeTest, TheKeyOfACodeAndItsNameAreWhatEveryPageMakesOfIt) {
  const std::string key = KeyOfCode("K7QM2XRT9B");
  EXPECT_EQ(key, "1ac8bc53ee2d48b1ff31277c205ff4f1bce9324728efcef99d73781e5c6a20a3");
  EXPECT_EQ((RemoteDevice{key, ""}).Id(), "e228ff49770fa763");
}

TEST(RemoteCodeTest, CodesAreTenSignsThatNobodyMixesUp) {
  std::set<std::string> codes;
  for (int i = 0; i < 500; ++i) codes.insert(NewCode());
  EXPECT_EQ(codes.size(), 500U);
  for (const std::string& code : codes) {
    EXPECT_EQ(code.size(), 10U);
    EXPECT_EQ(code.find_first_not_of("23456789ABCDEFGHJKLMNPQRSTUVWXYZ"), std::string::npos);
  }
}

TEST_F(RemoteLineTest, AWordIsTakenOnceInItsTimeAndFromWhoMayAlone) {
  const std::string first = ann_.Say("pause", 99);
  EXPECT_EQ(Hear(first), "pause");
  EXPECT_EQ(Hear(first), "refused: repeated");
  const std::string second = ann_.Say("resume", 99.5);
  const std::string third = ann_.Say("longer", 99.8);
  EXPECT_EQ(Hear(third), "longer");
  EXPECT_EQ(Hear(second), "refused: repeated") << "out of order";
  EXPECT_EQ(Hear(ann_.Say("pause", 89)), "refused: late");
  EXPECT_EQ(Hear(ann_.Say("pause", 111)), "refused: late");
  EXPECT_EQ(Hear(ann_.Signed(50, "nan", "pause")), "refused: late");
  EXPECT_EQ(Hear(ann_.Signed(4294967295, "100", "pause")), "pause");
  SpeakingDevice stranger(kOther);
  stranger.Meet(line_.Challenge());
  EXPECT_EQ(Hear(stranger.Say("pause", 100)), "refused: unknown");
}

// What was overheard on one connection is worth nothing on another.
TEST_F(RemoteLineTest, EveryConnectionHasAChallengeOfItsOwn) {
  const std::string word = ann_.Say("pause", 100);
  RemoteLine other;
  EXPECT_FALSE(other.Hear(word, gate_, 100)) << "nobody has asked for a challenge";
  EXPECT_NE(other.Challenge(), line_.Challenge());
  EXPECT_EQ(other.Hear(word, gate_, 100).Failure().description, "unknown");
  EXPECT_EQ(Hear(word), "pause");
}

// Any sign changed, anywhere.
TEST_F(RemoteLineTest, NothingThatWasChangedOnTheWayIsTaken) {
  std::mt19937 random(18);
  for (int i = 0; i < 5000; ++i) {
    std::string word = ann_.Say("next round 3", 100);
    const std::string sent = word;
    switch (random() % 3) {
      case 0:
        word[random() % word.size()] = static_cast<char>(random());
        break;
      case 1:
        word.erase(random() % word.size(), 1 + random() % 3);
        break;
      default:
        word.insert(random() % word.size(), 1, static_cast<char>(random()));
    }
    // Digits can be written with letters of either case.
    const bool same = SameName(word, sent) && word.ends_with(" next round 3");
    if (!same) {
      EXPECT_TRUE(Hear(word).starts_with("refused")) << word;
    }
  }
}

TEST_F(RemoteLineTest, WhoIsInvitedCanComeInAndNothingElse) {
  gate_ = RemoteGate({{kKey, "Ann's phone"}}, kOther);
  SpeakingDevice bob(kOther);
  bob.Meet(line_.Challenge());
  EXPECT_EQ(Hear(bob.Say("pause", 100)), "refused: unknown");
  EXPECT_EQ(Hear(bob.Say("here", 100)), "refused: unknown");
  EXPECT_EQ(Hear(bob.Say("join Bob", 100)), "refused: name");
  EXPECT_EQ(Hear(bob.Say("join " + std::string(64, '0') + " Bob", 100)), "refused: unknown");
  for (const std::string& name :
       {std::string(), std::string("\t\x01 "), std::string(81, 'x'), std::string("\u202E\u200B"),
        std::string("\xC3\x28\x80").substr(2)}) {
    EXPECT_EQ(Hear(bob.Say(SpeakingDevice::Join(name), 100)), "refused: name");
  }
  const std::string said = bob.Say(SpeakingDevice::Join(" Bob's\n tab\u200Blet"), 100);
  const auto word = line_.Hear(said, gate_, 100);
  ASSERT_TRUE(word);
  EXPECT_EQ(word.Value().device.name, "Bob's tablet");
  EXPECT_EQ(word.Value().invitation, kOther);
  EXPECT_NE(word.Value().device.key, kOther);
  EXPECT_EQ(word.Value().publicKey.size(), 64U);
  // Said again elsewhere it leads to another key: the server's part is never the same.
  RemoteLine other;
  bob.Meet(other.Challenge());
  const auto again = other.Hear(bob.Say(SpeakingDevice::Join("Bob"), 100), gate_, 100);
  EXPECT_NE(again.Value().publicKey, word.Value().publicKey);
  bob.Meet(line_.Challenge());
  gate_.LetIn(word.Value().device);
  EXPECT_EQ(Hear(bob.Signed(200, "100", SpeakingDevice::Join("Bob"))), "refused: unknown")
      << "the code was used";
  EXPECT_EQ(Hear(bob.Signed(201, "100", "pause")), "refused: unknown");
  SpeakingDevice tablet(word.Value().device.key);
  tablet.Meet(line_.Challenge());
  EXPECT_EQ(Hear(tablet.Signed(202, "100", "pause")), "pause");
  EXPECT_FALSE(gate_.Find(RemoteDevice{std::string(64, 'c'), ""}.Id()));
}

TEST(RemoteDevicesTest, TheListComesBackAndADamagedOneIsToldOf) {
  const std::vector<RemoteDevice> devices = {{kKey, "Ann's \"phone\""}, {kOther, "<b>"}};
  EXPECT_EQ(ReadDevices(TextOf(devices)).Value(), devices);
  for (
      const char* damaged :
      {"", "?", "[", "{}x", R"([{"name":"x"}])", R"([{"name":1,"key":"aa"}])",
       R"([{"name":"x","key":"zz"}])", R"([3])",
       R"([{"name":"","key":"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"}])"}) {
    EXPECT_FALSE(ReadDevices(damaged)) << damaged;
  }
}

}  // namespace
}  // namespace corvanel
