#include "system/record_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

#include "system/store_lock.h"
#include "tests/support/temporary_folder.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

constexpr std::chrono::seconds kLong(20);

class RecordFilesTest : public testing::Test {
 protected:
  std::vector<std::string> Kept() {
    DiskWriter none;
    return RecordFiles(store, none).Kept();
  }

  const TemporaryFolder own;
  const fs::path folder = own.Path();
  const fs::path store = folder / "settings.json";
};

TEST_F(RecordFilesTest, KeepsTheLatestAndSurvivesWhatLiesInItsWay) {
  DiskWriter writer;
  RecordFiles files(store, writer);
  for (const char* text : {"1", "2", "3", "4", "5"}) {
    files.Keep(text);
    writer.Wait(kLong);
  }
  EXPECT_THAT(Kept(), ElementsAre("5", "4", "3"));
  for (const char* boot : {"minute 29922638", "a-longer-boot-0f1e", "b"}) {
    files.KeepAlive({boot, 12.5, 1e9});
    writer.Wait(kLong);
    EXPECT_EQ(files.LastAlive()->utc, 1e9);
    EXPECT_EQ(files.LastAlive()->boot, boot);
  }
  fs::remove(folder / "settings.json.session");
  EXPECT_THAT(Kept(), ElementsAre("4", "3"));
  // A folder in the place of a record counts as a damaged one.
  fs::create_directory(folder / "settings.json.session");
  EXPECT_THAT(Kept(), ElementsAre("", "4", "3"));
  fs::remove(folder / "settings.json.session");
  // A folder where the file should be written: an error, not a crash.
  fs::create_directory(folder / "settings.json.session.new");
  files.Keep("6");
  writer.Wait(kLong);
  EXPECT_NE(files.Failure(), "");
  EXPECT_THAT(files.Kept(), ElementsAre("4", "3"));
  fs::remove(folder / "settings.json.session.new");
  files.Keep("7");
  writer.Wait(kLong);
  EXPECT_EQ(files.Failure(), "");
  files.Forget();
  EXPECT_THAT(files.Kept(), IsEmpty());
  EXPECT_FALSE(files.LastAlive());
  EXPECT_TRUE(fs::is_empty(folder));
}

// Forgetting the last session must not take the record of the next one with it.
TEST_F(RecordFilesTest, WhatIsKeptAfterForgettingStays) {
  DiskWriter writer;
  RecordFiles files(store, writer);
  files.Keep("old");
  writer.Wait(kLong);
  std::promise<void> disk;
  // The disk takes its time: Forget gives up waiting, and the next session begins.
  writer.Do("", [answers = disk.get_future().share()] { answers.wait(); });
  files.Forget();
  files.Keep("new");
  EXPECT_EQ(files.Failure(), "the disk is not responding");
  disk.set_value();
  EXPECT_TRUE(writer.Wait(kLong));
  EXPECT_THAT(files.Kept(), ElementsAre("new"));
  EXPECT_EQ(files.Failure(), "");
}

TEST(DiskWriterTest, KeepsTheOrderAndLeavesOutWhatIsOvertaken) {
  std::vector<std::string> done;
  int failed = 0;
  {
    DiskWriter writer([&] { ++failed; });
    std::promise<void> begin;
    writer.Do("", [wait = begin.get_future().share()] { wait.wait(); });
    writer.Do("a", [&] { done.emplace_back("a1"); });
    writer.Do("b", [&] { done.emplace_back("b1"); });
    writer.Do("a", [&] { done.emplace_back("a2"); });
    writer.Do("c", [&] { done.emplace_back("c1"); });
    writer.Do("bad", [] { throw RuntimeError(61, "Disk full"); });
    writer.Do("worse", [] { throw std::bad_alloc(); });
    writer.Drop("c");
    EXPECT_FALSE(writer.Wait(std::chrono::milliseconds(1)));
    begin.set_value();
    EXPECT_TRUE(writer.Wait(kLong));
    EXPECT_THAT(done, ElementsAre("b1", "a2"));
    EXPECT_EQ(writer.Failure("bad")->Number(), 61);
    EXPECT_TRUE(writer.Failure("worse"));
    EXPECT_FALSE(writer.Failure("a"));
    EXPECT_THROW(writer.DoNow([] { throw RuntimeError(75, "no"); }), RuntimeError);
    writer.Do("", [&] { done.emplace_back("last"); });
  }
  EXPECT_EQ(done.back(), "last");  // the end waits for what was asked for
  EXPECT_EQ(failed, 2);
}

TEST(StoreLockTest, GoesWithItsHolderAndLeavesNothingInTheWay) {
  const TemporaryFolder folder;
  const std::filesystem::path store = folder.Path() / "settings.json";
  {
    StoreLock first(store);
    StoreLock second(store);
    EXPECT_TRUE(first.Take());
    EXPECT_FALSE(second.Take());
  }
  StoreLock third(store);
  EXPECT_TRUE(third.Take());
  EXPECT_TRUE(StoreLock("/nonexistent/settings.json").Take());
}

}  // namespace
}  // namespace corvanel
