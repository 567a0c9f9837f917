#include "startup/update_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sodium.h>

#include <array>

#include "basics/hex.h"
#include "tests/support/fake_updates.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Both halves of a key that releases are signed with.
struct Key {
  Key() { crypto_sign_keypair(open.data(), secret.data()); }
  std::string Digits() const { return Hex(open); }
  std::string Sign(const std::string& lines) const {
    std::array<unsigned char, crypto_sign_BYTES> signature{};
    crypto_sign_detached(signature.data(), nullptr, BytesOf(lines), lines.size(), secret.data());
    return lines + "ed25519 " + Hex(signature) + "\n";
  }

  std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> open{};
  std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret{};
};

std::string Line(const std::string& name, const std::string& bytes) {
  Sha256 hash;
  hash.Add(bytes);
  return hash.Digits() + ' ' + std::to_string(bytes.size()) + ' ' + name + '\n';
}

const std::string kSetup = std::string(1000, 'x') + std::string(500, 'y');
const std::string kNotes = "1,5,0\r\nFaster\r\nNicer";

/// A program of version 1.4.02 with the key, and a server with a signed release.
class UpdateCheckTest : public testing::Test, protected FakeUpdates {
 protected:
  UpdateCheckTest() { Restore(); }
  /// The server and the disk as they should be; the director says yes.
  void Restore() {
    static_cast<FakeUpdates&>(*this) = FakeUpdates();
    files = {{"timerversion.txt", kNotes}};
    Sign(Line("timerversion.txt", kNotes) + Line("corvanelsetup.exe", kSetup));
    prompts.answers = {Answer::Yes};
  }
  void Sign(const std::string& lines) { files["timerversion.sig"] = key.Sign(lines); }
  bool Run() {
    UpdateCheck update({*this,
                        *this,
                        installs ? this : nullptr,
                        prompts,
                        time,
                        {1, 4, 2},
                        trusted,
                        [this](const std::string& bytes) { kept = bytes; }});
    return update.Run();
  }

  Key key;
  std::string trusted = key.Digits();
  bool installs = true;
  std::string kept;
  FakePrompts prompts;
  VirtualTime time{ClockTime::At(19, 0)};
};

TEST(UpdateFileTest, NotesOfAnyEncodingAreRead) {
  EXPECT_EQ(ParseVersionFile("1,5,0\r\nsch\xF6n")->notes, "sch\xC3\xB6n");
  EXPECT_EQ(ParseVersionFile("\xEF\xBB\xBF"
                             "1,5,0\nsch\xC3\xB6n")
                ->notes,
            "sch\xC3\xB6n");
}

TEST(SizeTextTest, KilobytesAndMegabytes) {
  EXPECT_EQ(SizeText(900 * 1024), "900 kb");
  EXPECT_EQ(SizeText(1023.4 * 1024), "1023 kb");
  EXPECT_EQ(SizeText(1536 * 1024), "1.5 mb");
}

TEST_F(UpdateCheckTest, TellsWhatItFound) {
  const std::vector<std::string> begin = {"Checking internet", "- connected",
                                          "- contacting Corvanel website"};
  const auto lines = [&](std::vector<std::string> more) {
    more.insert(more.begin(), begin.begin(), begin.end());
    return more;
  };
  prompts.answers = {Answer::No};
  EXPECT_FALSE(Run());
  EXPECT_EQ(kept, kNotes);
  EXPECT_EQ(log, lines({"Checking for updates", "Version 1.5.0 is available for download"}));
  EXPECT_EQ(prompts.texts.back(),
            "Version 1.5.0 is available for download\r\nFaster\r\nNicer\r\n\r\n"
            "Do you want to download and install the update?");
  const char* none = "Update information could not be found";
  const char* latest = "Your version of Corvanel is up-to-date";
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"1,4,2", {"Checking for updates", latest}},
      {"1,4,1\nold", {"Checking for updates", latest}},
      {"", {none}},
      {"<html>", {none}},
      {"1,2", {none}},
      {"1,-2,3", {none}},
      {"99999999999999999999,1,1", {none}},
  };
  for (const auto& [file, end] : rows) {
    log.clear();
    files["timerversion.txt"] = file;
    EXPECT_FALSE(Run());
    EXPECT_EQ(log, lines(end)) << file;
  }
  log.clear();
  failure = 12007;
  Run();
  EXPECT_EQ(log, lines({"- can't access Corvanel website at present2EE7", none}));
  log.clear();
  files.clear();
  Run();
  EXPECT_EQ(log, lines({"- can't access Corvanel website at present"}));
  log.clear();
  connected = false;
  Run();
  EXPECT_THAT(log, ElementsAre("Checking internet", "- not connected"));
}

TEST_F(UpdateCheckTest, OnlyAWholeInstallerIsStarted) {
  EXPECT_TRUE(Run());
  EXPECT_EQ(written, kSetup);
  EXPECT_EQ(prompts.texts.back(), "Corvanel will now close whilst the update is installed");
  EXPECT_EQ(done, "hidden started ");
  EXPECT_EQ(progress, "1 kb of 1 kb - 0 secs remaining 100");
  Restore();
  total = -1;  // the server does not say; the signature does
  EXPECT_TRUE(Run());
  const char* lost = "Connection to the internet has been lost";
  const std::tuple<const char*, std::function<void()>, const char*> rows[] = {
      {"no such file", [&] { refused = true; }, "Error trying to download - refused"},
      {"cut off", [&] { chunks.pop_back(); }, lost},
      {"lost",
       [&] {
         chunks[1] = Error{2, "reset"};
       },
       lost},
      {"no folder", [&] { folderFull = true; },
       "Error trying to download - the file could not be created"},
      {"disk full", [&] { diskFull = true; }, "Error trying to download - the disk is full"},
      {"blocked", [&] { runs = false; }, "Error trying to download - it is blocked"},
      {"stopped", [&] { stop = true; }, "Download was stopped"},
  };
  for (const auto& [name, spoil, message] : rows) {
    Restore();
    spoil();
    EXPECT_FALSE(Run()) << name;
    EXPECT_EQ(prompts.texts.back(), message) << name;
    EXPECT_EQ(done, stop ? "hidden " : "hidden removed ") << name;
    EXPECT_EQ(log.back(), "Download failed");
  }
}

/// Whoever has the server, the network or the disk, but not the key.
TEST_F(UpdateCheckTest, NothingThatWasNotSignedIsStarted) {
  const std::string version = Line("timerversion.txt", kNotes);
  const std::string setup = Line("corvanelsetup.exe", kSetup);
  const std::string evil(1500, 'e');
  const std::string good = files["timerversion.sig"];
  const auto signature = [&]() -> std::string& { return files["timerversion.sig"]; };
  const auto replace = [&](const std::string& from, const std::string& to) {
    signature().replace(signature().find(from), from.size(), to);
  };
  const auto give = [&](const std::string& bytes) {
    chunks = {bytes};
    total = static_cast<int64_t>(bytes.size());
  };
  const auto other = [&] { return Key().Sign(version + setup); };
  const std::pair<const char*, std::function<void()>> cheats[] = {
      {"no signature", [&] { files.erase("timerversion.sig"); }},
      {"an empty one", [&] { signature() = ""; }},
      {"a page instead", [&] { signature() = "<!DOCTYPE html><h1>ed25519 </h1>\n"; }},
      {"only the last line", [&] { signature() = good.substr(good.find("ed25519")); }},
      {"without its last line", [&] { signature() = good.substr(0, good.find("ed25519")); }},
      {"its last line twice", [&] { signature() += good.substr(good.find("ed25519")); }},
      {"cut in the digits", [&] { signature() = good.substr(0, good.size() - 9) + "\n"; }},
      {"more digits", [&] { signature() = good.substr(0, good.size() - 1) + "00\n"; }},
      {"digits that are none", [&] { signature()[signature().size() - 2] = 'g'; }},
      {"zeros", [&] { signature() = version + setup + "ed25519 " + std::string(128, '0') + "\n"; }},
      {"without the line's end", [&] { signature().pop_back(); }},
      {"more behind it", [&] { signature() += "x\n"; }},
      {"another key's", [&] { signature() = other(); }},
      {"another key's, with that key",
       [&] { signature() = other() + "key " + Key().Digits() + "\n"; }},
      {"no list", [&] { Sign(""); }},
      {"a list without the version", [&] { Sign(setup); }},
      {"a list without the installer", [&] { Sign(version); }},
      {"of another version file", [&] { Sign(Line("timerversion.txt", "1,6,0") + setup); }},
      {"lines that say nothing", [&] { Sign(version + setup + "\n"); }},
      {"a line without a length", [&] { Sign(version + setup.substr(0, 65) + "x setup\n"); }},
      {"a length below 0", [&] { Sign(version + setup.substr(0, 65) + "-1 corvanelsetup.exe\n"); }},
      {"a length beyond numbers",
       [&] {
         Sign(version + setup.substr(0, 65) + std::string(30, '9') + " corvanelsetup.exe\n");
       }},
      {"an empty installer", [&] { Sign(version + Line("corvanelsetup.exe", "")); }},
      {"no digits", [&] { Sign(version + "abc 1500 corvanelsetup.exe\n"); }},
      {"a longer list", [&] { signature() = Line("corvanelsetup.exe", evil) + good; }},
      {"another length", [&] { replace(" 1500 ", " 1501 "); }},
      {"another name", [&] { replace("corvanelsetup.exe", "corvanelsetup.bat"); }},
      {"a digit changed", [&] { signature()[3] = signature()[3] == 'a' ? 'b' : 'a'; }},
      {"lines in another order",
       [&] { signature() = setup + version + good.substr(good.find("ed25519")); }},
      {"lines' ends changed", [&] { replace("\n", "\r\n"); }},
      {"a newer number", [&] { files["timerversion.txt"] = "1,6,0\r\nFaster\r\nNicer"; }},
      {"other notes", [&] { files["timerversion.txt"] = "1,5,0\r\nCall this number"; }},
      {"a zero in the notes", [&] { files["timerversion.txt"] += '\0'; }},
      {"an old release, signed long ago",
       [&] {
         files["timerversion.txt"] = "1,3,0\r\nOld";
         Sign(Line("timerversion.txt", "1,3,0\r\nOld") + setup);
       }},
      {"an old release as a new one",
       [&] { Sign(Line("timerversion.txt", "1,3,0\r\nOld") + setup); }},
      {"another installer", [&] { give(evil); }},
      {"a shorter one", [&] { give("MZ"); }},
      {"an empty one", [&] { give(""); }},
      {"a longer one", [&] { give(kSetup + "evil"); }},
      {"more than is promised", [&] { chunks.push_back(std::string("evil")); }},
      {"one that begins in the middle", [&] { give(kSetup.substr(700)); }},
      {"its pieces in another order", [&] { std::swap(chunks[0], chunks[1]); }},
      {"a byte changed", [&] { chunks[1] = std::string(499, 'y') + 'z'; }},
      {"a changed length, and no length", [&] { chunks = {evil + "e"}, total = -1; }},
      {"another file put in its place", [&] { tampered = evil; }},
      {"the file cut off on the disk", [&] { tampered = ""; }},
      {"a page for the installer", [&] { give("<html>Log in to the hotel's network</html>"); }},
  };
  EXPECT_GE(std::size(cheats), 40U);
  for (const auto& [name, cheat] : cheats) {
    Restore();
    cheat();
    EXPECT_FALSE(Run()) << name;
    EXPECT_THAT(done, Not(HasSubstr("started"))) << name;
    EXPECT_TRUE(done.empty() || done == "hidden removed ") << name << ": " << done;
  }
  for (const std::string& wrong : {std::string(64, '0'), key.Digits() + "00", std::string("key")}) {
    Restore();
    trusted = wrong;
    EXPECT_FALSE(Run());
    EXPECT_EQ(log.back(), "- version on the website is not signed");
    EXPECT_EQ(done, "");
  }
}

TEST_F(UpdateCheckTest, WithoutAKeyOrAnInstallerOfThisSystemItIsOnlyTold) {
  const std::string news = "Version 1.5.0 is available for download\r\nFaster\r\nNicer\r\n\r\n";
  Sign(Line("timerversion.txt", kNotes) + Line("corvanelsetup.exe", kSetup) +
       Line("corvanel_1.5.0_amd64.deb", "package"));
  installs = false;
  EXPECT_FALSE(Run());
  EXPECT_EQ(prompts.texts.back(), news + "It is at https://updates/corvanel_1.5.0_amd64.deb");
  installs = true;
  trusted.clear();
  EXPECT_FALSE(Run());
  EXPECT_EQ(prompts.texts.back(), news + "It is at https://updates/");
  EXPECT_EQ(written, "");
}

}  // namespace
}  // namespace corvanel
