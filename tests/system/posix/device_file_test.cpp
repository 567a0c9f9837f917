#include "system/device_file.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

TEST(DeviceFileTest, TheListIsTheUsersAloneAndBelongsToOneProgramAtATime) {
  const TemporaryFolder folder;
  const fs::path store = folder.Path() / "settings.json";
  const fs::path list = folder.Path() / "settings.json.devices";
  {
    DiskWriter writer;
    DeviceFile file(store, writer);
    DeviceFile other(store, writer);
    EXPECT_EQ(file.Kept(), "");
    EXPECT_TRUE(file.Take());
    EXPECT_FALSE(other.Take());
    file.Keep("one");
    file.Keep("two");
    ASSERT_TRUE(writer.Wait(std::chrono::seconds(5)));
    EXPECT_EQ(file.Kept(), "two");
    EXPECT_EQ(file.Failure(), "");
    EXPECT_EQ(fs::status(list).permissions() & (fs::perms::group_all | fs::perms::others_all),
              fs::perms::none);
    file.PutAside();
    EXPECT_EQ(file.Kept(), "");
    EXPECT_TRUE(fs::exists(folder.Path() / "settings.json.devices.damaged"));
    // In the way of what is written.
    fs::create_directories(folder.Path() / "settings.json.devices.new" / "x");
    file.Keep("three");
    ASSERT_TRUE(writer.Wait(std::chrono::seconds(5)));
    EXPECT_NE(file.Failure(), "");
  }
}

}  // namespace
}  // namespace corvanel
