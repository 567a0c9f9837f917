#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTest>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "system/qt/qt_scoring_files.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

const fs::path kFixtures = CORVANEL_FIXTURES;

class ScoringFilesTest : public testing::Test {
 protected:
  ScoringFilesTest() { fs::create_directories(folder); }
  ~ScoringFilesTest() override { fs::remove_all(folder); }
  ScoringFilesTest(const ScoringFilesTest&) = delete;
  ScoringFilesTest& operator=(const ScoringFilesTest&) = delete;

  const fs::path folder =
      fs::temp_directory_path() / ("corvanel-scoring-" + std::to_string(getpid()));
  const std::string file = (folder / "tonight.bws").string();
  QtScoringFiles files;
};

TEST_F(ScoringFilesTest, ReadsWithoutTouchingAndNoticesEveryChange) {
  EXPECT_EQ(files.ReadNow(file).Failure().number, 53);
  fs::copy_file(kFixtures / "live/02-1943.bws", file);
  const timespec longAgo[] = {{1000000000, 0}, {1000000000, 0}};
  utimensat(AT_FDCWD, file.c_str(), longAgo, 0);
  chmod(file.c_str(), 0400);
  const auto first = files.ReadNow(file);
  ASSERT_TRUE(first);
  EXPECT_EQ(first.Value()->received.size(), 17U);
  EXPECT_EQ(first.Value()->fileDate.Year(), 2001);
  struct stat state {};
  stat(file.c_str(), &state);
  EXPECT_EQ(state.st_atim.tv_sec, 1000000000);
  EXPECT_EQ(state.st_mtim.tv_sec, 1000000000);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);  // no lock file
  EXPECT_EQ(files.ReadNow(file).Value(), first.Value());            // the very same picture
  fs::remove(file);
  EXPECT_FALSE(files.ReadNow(file));
  fs::copy_file(kFixtures / "live/03-1946.bws", file);
  EXPECT_EQ(files.ReadNow(file).Value()->received.size(), 18U);
  fs::resize_file(file, 100000);
  EXPECT_FALSE(files.ReadNow(file));
}

TEST_F(ScoringFilesTest, APipeThatNobodyWritesHoldsNobodyUp) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(files.ReadNow(file));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  const std::ofstream writer(file);  // lets the waiting read go
}

// A share that died and was mounted anew under the same name: what waits on the old one waits on.
TEST_F(ScoringFilesTest, AReadThatIsStuckIsGivenUpForAnother) {
  QtScoringFiles impatient(std::chrono::milliseconds(50));
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_FALSE(impatient.ReadNow(file));
  const std::string dead = (folder / "dead.bws").string();
  fs::rename(file, dead);
  fs::copy_file(kFixtures / "live/02-1943.bws", file);
  ASSERT_TRUE(QTest::qWaitFor([&] { return static_cast<bool>(impatient.ReadNow(file)); }, 5000));
  { const std::ofstream writer(dead); }  // the old read ends, and changes nothing
  QTest::qWait(50);
  EXPECT_EQ(impatient.ReadNow(file).Value()->received.size(), 17U);
}

TEST_F(ScoringFilesTest, TheDirectorsOwnWishWaitsForNoStuckRead) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_FALSE(files.ReadNow(file));
  const std::string dead = (folder / "dead.bws").string();
  fs::rename(file, dead);
  fs::copy_file(kFixtures / "live/02-1943.bws", file);
  EXPECT_FALSE(files.ReadNow(file));
  files.GiveUp();
  ASSERT_TRUE(QTest::qWaitFor([&] { return static_cast<bool>(files.ReadNow(file)); }, 5000));
  const std::ofstream writer(dead);
}

TEST_F(ScoringFilesTest, AnswersByAnEventAndOneReadAtATime) {
  fs::copy_file(kFixtures / "live/02-1943.bws", file);
  std::vector<bool> answers;
  const auto answer = [&](const Result<PicturePointer>& picture) {
    answers.push_back(static_cast<bool>(picture));
  };
  files.Read(file, answer);
  EXPECT_TRUE(answers.empty());  // nobody waits
  files.Read(file, answer);
  EXPECT_EQ(answers, std::vector<bool>{false});  // the first one is still on its way
  ASSERT_TRUE(QTest::qWaitFor([&] { return answers.size() == 2; }, 5000));
  EXPECT_TRUE(answers[1]);
}

TEST_F(ScoringFilesTest, ListsScoringFilesAndFindsTheFoldersSpelling) {
  QtScoringFiles folders;
  for (const char* name : {"b.bws", "A.BWS", "notes.txt", "c.bws.bak"}) {
    std::ofstream(folder / name) << name;
  }
  fs::create_directories(folder / "folder.bws");
  const auto listed = folders.Files(folder.string() + "/");
  ASSERT_EQ(listed.size(), 2U);
  EXPECT_EQ(listed[0].name, "A.BWS");
  EXPECT_TRUE(folders.Files("/no/such/folder/").empty());
  fs::create_directories(folder / "Res2026/pairs");
  EXPECT_EQ(folders.RealSpelling(folder.string() + "/RES2026/Pairs/"),
            folder.string() + "/Res2026/pairs/");
  EXPECT_EQ(folders.RealSpelling("/no/RES2026/"), "/no/RES2026/");
}

}  // namespace
}  // namespace corvanel
