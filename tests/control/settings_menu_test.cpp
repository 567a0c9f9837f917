#include "control/settings_menu.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "tests/support/favourites_bench.h"

namespace corvanel {
namespace {

TEST(ExportSettingsTest, WritesTheRecordForms) {
  FakeStore store;
  store.SaveSetting("Timer", "nRounds", "12");
  store.SaveSetting("Timer", "Header", "Café, \"Friday\"");
  store.SaveSetting("TimerFont3", "Bold", "True");
  store.SaveSetting("Timer05", "Name", "Monday");
  const ExportOutcome outcome = ExportSettings(store);
  EXPECT_EQ(
      outcome.bytes,
      "\"[Timer]\",0\r\n\"nRounds\",\"12\"\r\n\"Header\",\"Caf\xE9, 'Friday'\"\r\n"
      "\"[Timer05]\",0\r\n\"Name\",\"Monday\"\r\n\"[TimerFont3]\",0\r\n\"Bold\",\"True\"\r\n");
  EXPECT_EQ(outcome.changed, std::vector<std::string>{"Timer, Header"});
  store.SaveSetting("Timer", "Header", "Łódź");
  EXPECT_TRUE(ExportSettings(store).bytes.starts_with("\xEF\xBB\xBF\"[Timer]\",0\r\n"));
}

TEST(ImportSettingsTest, ReplacesTheStoreAndReadsWhatItCan) {
  struct Row {
    const char* name;
    std::string file;
    bool whole;
    std::optional<std::string> rounds;
    std::optional<std::string> name5;
  };
  const Row rows[] = {
      {"whole", "\"[Timer]\",0\r\n\"nRounds\",\"9\"\r\n\"[Timer05]\",0\n\"Name\",\"A, B\"\n", true,
       "9", "A, B"},
      {"only slot 5", "\"[Timer05]\",0\r\n\"Name\",\"x\"\r\n", true, std::nullopt, "x"},
      {"starts with a key", "\"nRounds\",\"9\"\r\n\"[Timer]\",0\r\n", false, std::nullopt,
       std::nullopt},
      {"header without bracket", "\"[Timer05x\",0\r\n\"Name\",\"x\"\r\n", true, std::nullopt, "x"},
      {"cut off in a quote", "\"[Timer]\",0\r\n\"nRounds\",\"9\"\r\n\"Header\",\"Fri", false, "9",
       std::nullopt},
      {"cut off after a key", "\"[Timer]\",0\r\n\"nRounds\",\"9\"\r\n\"Header\",", false, "9",
       std::nullopt},
      {"bare fields", "[Timer],0\r\nnRounds,9\r\n", true, "9", std::nullopt},
      {"empty", "", true, std::nullopt, std::nullopt},
      {"another kind", std::string("\x89PNG\r\n\x1a\n\0\0\x81", 11), false, std::nullopt,
       std::nullopt},
      {"far too large", std::string(9U << 20U, 'x'), false, std::nullopt, std::nullopt},
  };
  for (const Row& row : rows) {
    FakeStore store;
    store.SaveSetting("Timer", "nRounds", "4");
    store.SaveSetting("Timer01", "Name", "old");
    EXPECT_EQ(ImportSettings(row.file, store), row.whole) << row.name;
    EXPECT_EQ(store.GetSetting("Timer", "nRounds"), row.rounds) << row.name;
    EXPECT_EQ(store.GetSetting("Timer05", "Name"), row.name5) << row.name;
    EXPECT_EQ(store.GetSetting("Timer01", "Name"), std::nullopt) << row.name;
  }
}

TEST(ImportSettingsTest, ReadsAllThreeEncodings) {
  for (const std::string& e : {std::string("\xE9"), std::string("é")}) {
    for (const std::string& mark : {std::string(), std::string("\xEF\xBB\xBF")}) {
      if (!mark.empty() && e.size() == 1) continue;
      FakeStore store;
      ASSERT_TRUE(ImportSettings(mark + "\"[Timer]\",0\r\n\"Header\",\"Caf" + e + "\"\r\n", store));
      EXPECT_EQ(store.GetSetting("Timer", "Header"), "Café");
    }
  }
}

TEST(ImportSettingsTest, AFullStoreMakesTheRoundTrip) {
  FakeStore store;
  std::mt19937 random(11);
  const auto fill = [&](const std::string& section, auto keys) {
    for (const auto& key : keys) {
      store.SaveSetting(section, key.key, "Wert, " + std::to_string(random()) + " 'ü'");
    }
  };
  for (int entry = 0; entry <= kFavourites; ++entry) fill(SectionOfSet(entry), SetKeys());
  fill(SectionOfSet(0), OptionKeys());
  for (int element = 0; element < kElements; ++element)
    fill(SectionOfElement(element), ElementKeys());
  FakeStore again;
  again.SaveSetting("Timer07", "Stale", "x");
  ASSERT_TRUE(ImportSettings(ExportSettings(store).bytes, again));
  for (int entry = 0; entry <= kFavourites; ++entry) {
    EXPECT_EQ(again.GetAllSettings(SectionOfSet(entry)), store.GetAllSettings(SectionOfSet(entry)));
  }
  for (int element = 0; element < kElements; ++element) {
    EXPECT_EQ(again.GetAllSettings(SectionOfElement(element)),
              store.GetAllSettings(SectionOfElement(element)));
  }
}

TEST(ImportSettingsTest, NoBytesDoHarm) {
  std::mt19937 random(5);
  const std::string alphabet = "\"\"[],0Timer\r\n\xE9\xC3\x81 ";
  for (int i = 0; i < 5000; ++i) {
    std::string bytes;
    for (unsigned long n = random() % 60; n > 0; --n) bytes += alphabet[random() % alphabet.size()];
    FakeStore store;
    ImportSettings(bytes, store);
  }
}

class SettingsMenuTest : public testing::Test, public FavouritesBench, public FileAccess {
 protected:
  SettingsMenuTest() { table.GetDefaults(ClockTime()); }
  Result<std::string> ReadFile(const std::string& path) override {
    if (!files.contains(path)) return Error{53, path + ": not found"};
    return files[path];
  }
  Result<bool> WriteFile(const std::string& path, const std::string& bytes) override {
    if (path.starts_with("/full")) return Error{61, "Disk full"};
    files[path] = bytes;
    return true;
  }

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
  EXPECT_TRUE(listed.empty());
  menu.mnuSettingsUndoImport_Click();
  EXPECT_EQ(session.settings.nRounds, 5);
  EXPECT_EQ(listed, std::vector<std::string>{"Friday"});
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
