#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "startup/update_check.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// tools/release with a key of its own.
class ReleaseTest : public testing::Test {
 protected:
  ReleaseTest() {
    fs::create_directories(folder);
    std::ofstream(folder / "notes.txt") << "Louder\n";
    std::ofstream(folder / "CorvanelSetup.exe") << "MZ installer";
    std::ofstream(folder / package) << "package";
  }
  ~ReleaseTest() override { fs::remove_all(folder); }
  int Release(const std::string& arguments) const {
    const std::string command =
        "cd " + folder.string() + " && " CORVANEL_TOOLS "/release " + arguments + " >out 2>err";
    return WEXITSTATUS(std::system(command.c_str()));
  }

  const fs::path folder =
      fs::temp_directory_path() / ("corvanel-release-" + std::to_string(getpid()));
  const std::string package = "corvanel_" CORVANEL_VERSION "_amd64.deb";
};

TEST_F(ReleaseTest, WhatItSignsIsBelieved) {
  ASSERT_EQ(Release("key secret"), 0) << ReadAll(folder / "err");
  EXPECT_EQ(fs::status(folder / "secret").permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
  const std::string key = ReadAll(folder / "out").substr(0, 64);
  ASSERT_EQ(Release("up secret notes.txt CorvanelSetup.exe " + package), 0)
      << ReadAll(folder / "err");
  const std::string notes = ReadAll(folder / "up/timerversion.txt");
  const auto release = ParseVersionFile(notes);
  ASSERT_TRUE(release);
  EXPECT_EQ(release->notes, "Louder");
  const auto files = ReadSignedFiles(ReadAll(folder / "up/timerversion.sig"), key);
  ASSERT_TRUE(files);
  for (const char* name : {"timerversion.txt", "corvanelsetup.exe", package.c_str()}) {
    const std::string bytes = ReadAll(folder / "up" / name);
    Sha256 hash;
    hash.Add(bytes);
    const SignedFile* file = FindFile(*files, name);
    ASSERT_NE(file, nullptr) << name;
    EXPECT_EQ(*file, (SignedFile{name, static_cast<int64_t>(bytes.size()), hash.Digits()}));
  }
}

TEST_F(ReleaseTest, NoKeyIsOverwrittenAndNoOtherVersionReleased) {
  ASSERT_EQ(Release("key secret"), 0);
  const std::string secret = ReadAll(folder / "secret");
  EXPECT_NE(Release("key secret"), 0);
  EXPECT_EQ(ReadAll(folder / "secret"), secret);
  std::ofstream(folder / "corvanel_0.0.9_amd64.deb") << "old";
  EXPECT_NE(Release("up secret notes.txt corvanel_0.0.9_amd64.deb"), 0);
  EXPECT_NE(Release("key " CORVANEL_TOOLS "/secret"), 0);
}

}  // namespace
}  // namespace corvanel
