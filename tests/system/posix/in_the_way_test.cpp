#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "system/json_store.h"
#include "tests/support/temporary_folder.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

// Somebody else who can write the folder does not choose what is overwritten, or makes us wait.
TEST(InTheWayTest, WhatLiesInTheWayOfAFileIsNotFollowed) {
  const TemporaryFolder folder;
  const fs::path file = folder.Path() / "settings.json";
  const fs::path victim = folder.Path() / "victim";
  const fs::path temporary = file.string() + ".new";
  DiskWriter writer;
  JsonStore store(file, writer);
  const auto flush = [&] {
    store.Flush();
    ASSERT_TRUE(writer.Wait(std::chrono::seconds(20)));
  };
  std::ofstream(victim) << "precious";
  fs::create_symlink(victim, temporary);
  flush();
  ASSERT_EQ(mkfifo(temporary.c_str(), 0600), 0);
  store.SaveSetting("Timer", "nRounds", "7");
  flush();
  EXPECT_FALSE(store.Failure());
  std::ifstream stream(victim);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "precious");
  EXPECT_EQ(JsonStore(file, writer).GetSetting("Timer", "nRounds"), "7");
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace
}  // namespace corvanel
