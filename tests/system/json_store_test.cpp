#include "system/json_store.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "basics/runtime_error.h"
#include "system/folders.h"
#include "tests/support/temporary_folder.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

class JsonStoreTest : public testing::Test {
 protected:
  /// To the disk, and nothing else on its way there.
  void Flush(JsonStore& store) {
    store.Flush();
    ASSERT_TRUE(writer.Wait(std::chrono::seconds(20)));
  }
  void Write(const std::string& text) const { std::ofstream(file) << text; }
  static std::string Read(const fs::path& path) {
    std::ifstream stream(path);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  const TemporaryFolder own;
  const fs::path folder = own.Path();
  const fs::path file = folder / "settings.json";
  DiskWriter writer;
};

TEST_F(JsonStoreTest, KeepsValuesOrderAndCase) {
  {
    JsonStore store(file, writer);
    EXPECT_TRUE(store.Damage().empty());
    store.SaveSetting("Timer", "Header", "Café \"Friday\"\n\\");
    store.SaveSetting("Timer", "nRounds", "12");
    store.SaveSetting("timer", "NROUNDS", "9");
    store.SaveSetting("Timer01", "Name", "x");
    store.DeleteSection("TIMER01");
    Flush(store);
  }
  JsonStore store(file, writer);
  EXPECT_EQ(store.GetSetting("TIMER", "header"), "Café \"Friday\"\n\\");
  EXPECT_EQ(store.GetAllSettings("Timer"),
            (KeysAndValues{{"Header", "Café \"Friday\"\n\\"}, {"nRounds", "9"}}));
  EXPECT_TRUE(store.GetAllSettings("Timer01").empty());
}

TEST_F(JsonStoreTest, ADamagedFileIsReadAsFarAsItGoesAndKept) {
  const std::string whole = R"({"Olvendra": {"Timer": {"nRounds": "9", "Header": "Friday"}}})";
  for (const std::string& damaged :
       {whole.substr(0, 45), std::string("garbage"), std::string("[1,2]"), std::string(),
        std::string(R"({"Other": {"Timer": {"nRounds": "9"}}})"),
        std::string(R"({"Olvendra": {"Timer": {"nRounds": {"x": 1}}}})")}) {
    for (const auto& entry : fs::directory_iterator(folder)) fs::remove(entry);
    Write(damaged);
    JsonStore store(file, writer);
    EXPECT_FALSE(store.Damage().empty()) << damaged;
    EXPECT_EQ(store.GetSetting("Timer", "nRounds").has_value(), damaged.size() == 45) << damaged;
    store.SaveSetting("Timer", "nRounds", "7");
    Flush(store);
    EXPECT_EQ(Read(file.string() + ".damaged1"), damaged);
    EXPECT_EQ(JsonStore(file, writer).GetSetting("Timer", "nRounds"), "7");
  }
}

TEST_F(JsonStoreTest, NumbersAndSwitchesWrittenByHandAreTexts) {
  Write(R"({"olvendra": {"Timer": {"nRounds": 9, "MinPerRound": 7.5, "optBreak": true}}})");
  JsonStore store(file, writer);
  EXPECT_EQ(store.Damage(), "");
  EXPECT_EQ(store.GetSetting("Timer", "nRounds"), "9");
  EXPECT_EQ(store.GetSetting("Timer", "MinPerRound"), "7.5");
  EXPECT_EQ(store.GetSetting("Timer", "optBreak"), "True");
}

TEST_F(JsonStoreTest, WhatANewerVersionWroteIsPassedOverAndKept) {
  const std::string newer =
      R"({"Format": 2, "Other": {"Timer": {"nRounds": "3"}}, "Olvendra": {"Version": [1, {"a": []}],)"
      R"( "Timer": {"Colours": ["red", {"deep": null}], "nRounds": "9", "Nothing": null,)"
      R"( "Later": {"x": {"y": "1"}}, "Header": "Friday"}, "Sound": {"Volume": 0.5}}})";
  Write(newer);
  JsonStore store(file, writer);
  EXPECT_NE(store.Damage().find("does not know"), std::string::npos) << store.Damage();
  EXPECT_EQ(store.GetAllSettings("Timer"), (KeysAndValues{{"nRounds", "9"}, {"Header", "Friday"}}));
  EXPECT_EQ(store.GetSetting("Sound", "Volume"), "0.5");
  Flush(store);
  EXPECT_EQ(Read(file.string() + ".damaged1"), newer);
}

TEST_F(JsonStoreTest, WhatSomebodyElseWroteMeanwhileIsKept) {
  Write(R"({"Olvendra": {"Timer": {"nRounds": "9"}}})");
  JsonStore store(file, writer);
  Flush(store);
  Flush(store);
  EXPECT_EQ(store.OutsideChange(), "");
  const std::string outside = R"({"Olvendra": {"Timer": {"nRounds": "13"}}})";
  Write(outside);
  Flush(store);
  EXPECT_EQ(Read(store.OutsideChange()), outside);
  EXPECT_EQ(JsonStore(file, writer).GetSetting("Timer", "nRounds"), "9");
  fs::remove(file);  // somebody tidied up
  Flush(store);
  EXPECT_EQ(JsonStore(file, writer).GetSetting("Timer", "nRounds"), "9");
}

TEST_F(JsonStoreTest, AStoreThatCannotBeWrittenTellsAndLeavesTheOldOne) {
  Write(R"({"Olvendra": {}})");
  JsonStore elsewhere(folder / "settings.json" / "below-a-file.json", writer);
  Flush(elsewhere);
  EXPECT_TRUE(elsewhere.Failure());
  fs::create_directory(folder / "taken");
  JsonStore taken(folder / "taken", writer);
  EXPECT_FALSE(taken.Damage().empty());
  Flush(taken);
  EXPECT_TRUE(taken.Failure());
  EXPECT_TRUE(fs::is_directory(folder / "taken"));
  EXPECT_EQ(Read(file), R"({"Olvendra": {}})");
}

TEST_F(JsonStoreTest, AFileThatIsProtectedAgainstWritingStays) {
  Write(R"({"Olvendra":{"Timer":{"nRounds":"9"}}})");
  const std::string before = Read(file);
  fs::permissions(file, fs::perms::owner_read);
  JsonStore store(file, writer);
  store.SaveSetting("Timer", "nRounds", "7");
  Flush(store);
  EXPECT_TRUE(store.Failure());
  EXPECT_EQ(Read(file), before);
}

TEST_F(JsonStoreTest, TheNewestCopyComesBack) {
  JsonStore store(file, writer);
  EXPECT_FALSE(store.RestoreCopy());
  for (const char* rounds : {"5", "6"}) {
    store.SaveSetting("Timer", "nRounds", rounds);
    EXPECT_TRUE(fs::exists(store.KeepCopy()));
  }
  store.SaveSetting("Timer", "nRounds", "9");
  Flush(store);
  EXPECT_TRUE(store.RestoreCopy());
  writer.Wait(std::chrono::seconds(20));
  EXPECT_EQ(store.GetSetting("Timer", "nRounds"), "6");
  EXPECT_EQ(JsonStore(file, writer).GetSetting("Timer", "nRounds"), "6");
}

TEST_F(JsonStoreTest, OldCopiesAreThinnedOut) {
  JsonStore store(file, writer);
  for (int rounds = 1; rounds <= 14; ++rounds) {
    store.SaveSetting("Timer", "nRounds", std::to_string(rounds));
    store.KeepCopy();
  }
  const auto files = std::distance(fs::directory_iterator(folder), fs::directory_iterator());
  EXPECT_EQ(files, 10);
  EXPECT_TRUE(store.RestoreCopy());
  writer.Wait(std::chrono::seconds(20));
  EXPECT_EQ(store.GetSetting("Timer", "nRounds"), "14");
}

TEST_F(JsonStoreTest, MissingFoldersAreMade) {
  JsonStore store(folder / "new" / "deep" / "settings.json", writer);
  store.SaveSetting("Timer", "nRounds", "7");
  Flush(store);
  EXPECT_TRUE(fs::exists(folder / "new" / "deep" / "settings.json"));
}

TEST_F(JsonStoreTest, SoundsOfOtherMachinesAreFoundInTheProgramFolder) {
  std::ofstream(folder / "Fx2 Move.wav") << "x";
  const std::string own = (folder / "Fx2 Move.wav").string();
  EXPECT_EQ(SoundFile("C:\\Corvanel\\Fx2 Move.wav", folder.string()), own);
  EXPECT_EQ(SoundFile("\\Fx2 Move.wav", folder.string()), own);
  EXPECT_EQ(SoundFile(own, "/elsewhere"), own);
}

TEST_F(JsonStoreTest, EveryDamagedFileIsKept) {
  for (const char* damaged : {"first", "second"}) {
    Write(damaged);
    JsonStore store(file, writer);
    Flush(store);
  }
  EXPECT_EQ(Read(file.string() + ".damaged1"), "first");
  EXPECT_EQ(Read(file.string() + ".damaged2"), "second");
}

}  // namespace
}  // namespace corvanel
