#include "startup/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "startup/standard_settings.h"
#include "tests/support/fake_updates.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The start of a program that finds no internet.
class StartUpTest : public testing::Test {
 protected:
  StartUpTest() { updates.connected = false; }
  FakeUpdates updates;
  FakePrompts prompts;
  FakeStore store;
  FakeErrors errors;
  VirtualTime time{ClockTime::At(19, 0)};
  Version version{1, 4, 2};
  UpdateCheck update{{updates, updates, &updates, prompts, time, version, "",
                      [](const std::string& /*bytes*/) {}}};
  StartUp start{{store, updates, update, prompts, errors, version}};
};

TEST_F(StartUpTest, WhatIsNewIsToldOncePerVersion) {
  prompts.answers = {Answer::Yes};
  EXPECT_EQ(start.Run(), StartUp::End::Wait);
  EXPECT_THAT(prompts.texts.back(), HasSubstr("(on page 2)\r\nCorvanel can now link"));
  EXPECT_EQ(store.GetSetting("Timer", "ShowMessage"), std::nullopt);
  prompts.answers = {Answer::No};
  start.Run();
  EXPECT_EQ(store.GetSetting("Timer", "ShowMessage"), "10402");
  const size_t told = prompts.texts.size();
  start.Run();
  EXPECT_EQ(prompts.texts.size(), told);
}

TEST_F(StartUpTest, TheUnitIsAskedForOnlyWhereTheLinkWasStoredOn) {
  prompts.answers = {Answer::No};
  start.Run();
  EXPECT_EQ(prompts.texts.size(), 1U);
  store.SaveSetting("Timer", "BMSuggest", "True");
  store.SaveSetting("Timer", "ShowMessage", "0");
  prompts.answers = {Answer::Yes};
  start.Run();
  EXPECT_EQ(prompts.texts.back(), "Set the type of tabletop unit in options");
  EXPECT_EQ(store.GetSetting("Timer", "TableTopUnit"), "Bridgemate");
}

TEST_F(StartUpTest, WithoutUpdatesTheNoteIsSkippedToo) {
  store.SaveSetting("Timer", "AutoUpdate", "False");
  SaveAutoLaunch(store, errors, true);
  EXPECT_EQ(start.Run(), StartUp::End::OpenAtOnce);
  EXPECT_THAT(updates.log,
              ElementsAre("Starting Corvanel", "Option to check for updates is switched off"));
  EXPECT_THAT(prompts.texts, IsEmpty());
}

class Folder : public FileAccess {
 public:
  Result<std::string> ReadFile(const std::string& path) override {
    if (!files.contains(path)) return Error{53, "not found"};
    return files[path];
  }
  Status WriteFile(const std::string& /*path*/, const std::string& /*bytes*/) override {
    return Error{75, "read only"};
  }
  Status Rename(const std::string& from, const std::string& to) override {
    if (readOnly || !files.contains(from)) return Error{75, "no"};
    files[to] = files[from];
    files.erase(from);
    return {};
  }
  Status Remove(const std::string& path) override {
    files.erase(path);
    return {};
  }
  std::map<std::string, std::string> files;
  bool readOnly = false;
};

TEST(StandardSettingsTest, AreImportedOnceAndDeleted) {
  FakeStore store;
  FakePrompts prompts;
  FakeErrors errors;
  Folder folder;
  std::string& waiting = folder.files["/prog/EBUsettings.txt"];
  const auto import = [&] {
    return ImportStandardSettings("/prog", folder, store, prompts, errors);
  };
  store.SaveSetting("Timer01", "Name", "Friday");
  waiting = "\"[Timer]\",0\r\n\"nRounds\",\"9\"\r\n";
  folder.readOnly = true;  // it could not be deleted, and would come again and again
  EXPECT_TRUE(import());
  EXPECT_THAT(prompts.texts, IsEmpty());
  folder.readOnly = false;
  EXPECT_TRUE(import());
  EXPECT_EQ(prompts.texts.back(), "EBU standard settings have been loaded");
  EXPECT_THAT(folder.files, IsEmpty());
  EXPECT_EQ(store.GetSetting("Timer", "nRounds"), "9");
  EXPECT_TRUE(store.RestoreCopy());  // the club's favourites are in the copy
  EXPECT_EQ(store.GetSetting("Timer01", "Name"), "Friday");
  EXPECT_TRUE(import());  // nothing is waiting any more
  EXPECT_EQ(prompts.texts.size(), 1U);
  folder.files["/prog/EBUsettings.txt"] = "\"nRounds\",\"9\"\r\n";
  const int flushes = store.flushes;
  EXPECT_FALSE(import());
  EXPECT_EQ(prompts.texts.back(), "EBU settings could not be imported");
  EXPECT_TRUE(folder.files.contains("/prog/EBUsettings.txt"));
  EXPECT_EQ(store.flushes, flushes);  // the file of the store is as it was
}

}  // namespace
}  // namespace corvanel
