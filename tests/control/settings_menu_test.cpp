#include "control/settings_menu.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/support/favourites_bench.h"

namespace corvanel {
namespace {

class SettingsMenuTest : public testing::Test, protected FavouritesBench, public FileAccess {
 protected:
  SettingsMenuTest() { favourites.Reload(); }
  Result<std::string> ReadFile(const std::string& path) override {
    if (!files.contains(path)) return Error{53, path + ": not found"};
    return files[path];
  }
  Status WriteFile(const std::string& path, const std::string& bytes) override {
    if (path.starts_with("/full")) return Error{61, "Disk full"};
    files[path] = bytes;
    return {};
  }

  Status Rename(const std::string& /*from*/, const std::string& /*to*/) override { return {}; }
  Status Remove(const std::string& /*path*/) override { return {}; }

  std::map<std::string, std::string> files;
  SettingsMenu menu{{store, session, *this, favourites, prompts, bench.errors}};
};

TEST_F(SettingsMenuTest, ExportTellsWhere) {
  menu.mnuSettingsExport_Click();  // cancelled: nothing
  EXPECT_EQ(prompts.texts, std::vector<std::string>{"Settings.txt"});
  table.SaveSession();
  prompts.file = "/usb/Settings.txt";
  menu.mnuSettingsExport_Click();
  EXPECT_EQ(prompts.texts.back(), "Settings were saved successfully to file\r\n/usb/Settings.txt");
  prompts.file = "/full/Settings.txt";
  menu.mnuSettingsExport_Click();
  EXPECT_EQ(prompts.texts.back(), "Settings could not be saved\r\nDisk full");
}

TEST_F(SettingsMenuTest, AnImportReplacesAndCanBeTakenBack) {
  session.settings.nRounds = 5;
  favourites.cmdSaveDefault_Click("Friday");
  files["/usb/a.txt"] = "\"[Timer]\",0\r\n\"nRounds\",\"9\"\r\n";
  menu.mnuSettingsImport_Click();
  EXPECT_EQ(prompts.texts.back(), "Settings could not be imported");
  EXPECT_EQ(session.settings.nRounds, 5);
  prompts.file = "/usb/a.txt";
  menu.mnuSettingsImport_Click();
  EXPECT_EQ(prompts.texts.back(), "Settings imported successfully");
  EXPECT_EQ(session.settings.nRounds, 9);
  EXPECT_TRUE(view.listed.empty());
  menu.mnuSettingsUndoImport_Click();
  EXPECT_EQ(session.settings.nRounds, 5);
  EXPECT_EQ(view.listed, std::vector<std::string>{"Friday"});
}

TEST_F(SettingsMenuTest, TheWayBackLeadsPastImportsThatFailed) {
  session.settings.nRounds = 5;
  favourites.cmdSaveDefault_Click("Friday");
  files["/usb/bad.txt"] = "nonsense";
  files["the copy"] = "the settings as they were";
  files["/usb/good.txt"] = "\"[Timer]\",0\r\n\"nRounds\",\"9\"\r\n";
  for (const char* file : {"/usb/bad.txt", "/usb/bad.txt", "/usb/good.txt"}) {
    prompts.file = file;
    menu.mnuSettingsImport_Click();
  }
  EXPECT_EQ(session.settings.nRounds, 9);
  menu.mnuSettingsUndoImport_Click();
  EXPECT_EQ(view.listed, std::vector<std::string>{"Friday"});
  prompts.file = "/usb/bad.txt";
  menu.mnuSettingsImport_Click();
  menu.mnuSettingsUndoImport_Click();
  EXPECT_EQ(view.listed, std::vector<std::string>{"Friday"});
}

TEST_F(SettingsMenuTest, InALaterRunTooTheWayBackLeadsPastThem) {
  favourites.cmdSaveDefault_Click("Friday");
  files["/usb/bad.txt"] = "nonsense";
  files["the copy"] = "the settings as they were";
  prompts.file = "/usb/bad.txt";
  menu.mnuSettingsImport_Click();
  SettingsMenu later{{store, session, *this, favourites, prompts, bench.errors}};
  later.mnuSettingsImport_Click();
  later.mnuSettingsUndoImport_Click();
  EXPECT_EQ(view.listed, std::vector<std::string>{"Friday"});
}

TEST_F(SettingsMenuTest, AFailedImportSaysWhereTheOldSettingsAre) {
  files["/usb/a.txt"] = "nonsense";
  prompts.file = "/usb/a.txt";
  menu.mnuSettingsImport_Click();
  EXPECT_EQ(
      prompts.texts.back(),
      "Settings could not be imported\r\nThe settings before the import are kept in the copy");
  prompts.file = "/usb/missing.txt";
  menu.mnuSettingsImport_Click();
  EXPECT_EQ(prompts.texts.back(), "Settings could not be imported\r\n/usb/missing.txt: not found");
}

}  // namespace
}  // namespace corvanel
