#include "settings/settings_files.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "settings/settings_table.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

TEST(SettingsFilesTest, AQuoteInAKeyIsWrittenSoThatItCanBeReadAgain) {
  FakeStore store;
  store.SaveSetting("Timer", "Arthur\"s key", "1");
  const ExportOutcome outcome = ExportSettings(store);
  EXPECT_EQ(outcome.changed.size(), 1U);
  EXPECT_TRUE(ImportSettings(outcome.bytes, store));
  EXPECT_EQ(store.GetSetting("Timer", "Arthur's key"), "1");
}

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
      {"with a section of another program",
       "\"[Elsewhere]\",0\r\n\"nRounds\",\"8\"\r\n\"[TIMER]\",0\r\n\"nRounds\",\"9\"\r\n", true,
       "9", std::nullopt},
      {"empty", "", false, std::nullopt, std::nullopt},
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
    EXPECT_TRUE(store.GetAllSettings("Elsewhere").empty()) << row.name;
  }
}

constexpr const char* kOfThisComputer[] = {"NetworkOn", "NetworkRoom", "NetworkBroker",
                                           "NetworkBrokerPassword"};

TEST(ImportSettingsTest, NoFileOpensThisComputerToItsNetworkOrTellsItsSecrets) {
  for (const char* key : kOfThisComputer) {
    for (const char* own : {"True", "False", ""}) {
      FakeStore store;
      if (*own != '\0') store.SaveSetting("Timer", key, own);
      ASSERT_TRUE(ImportSettings(
          fmt::format("\"[Timer]\",0\r\n\"{}\",\"x\"\r\n\"NetworkPort\",\"9000\"\r\n", key),
          store));
      EXPECT_EQ(store.GetSetting("Timer", key).value_or(""), own) << key;
      EXPECT_EQ(store.GetSetting("Timer", "NetworkPort"), "9000");
      EXPECT_EQ(ExportSettings(store).bytes.find(key), std::string::npos) << key;
    }
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

TEST(ImportSettingsTest, ReadsAndWritesTheUpperCharactersOfTheCodePage) {
  FakeStore store;
  ASSERT_TRUE(
      ImportSettings("\"[Timer]\",0\r\n\"Header\",\"\x80\x85\x8E\x96\x9F\xFF\"\r\n", store));
  EXPECT_EQ(store.GetSetting("Timer", "Header"), "€…Ž–Ÿÿ");
  EXPECT_NE(ExportSettings(store).bytes.find("\"\x80\x85\x8E\x96\x9F\xFF\""), std::string::npos);
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
  for (const char* key : kOfThisComputer) {
    again.SaveSetting("Timer", key, *store.GetSetting("Timer", key));
  }
  ASSERT_TRUE(ImportSettings(ExportSettings(store).bytes, again));
  const auto sorted = [](KeysAndValues values) {
    std::sort(values.begin(), values.end());
    return values;
  };
  for (int entry = 0; entry <= kFavourites; ++entry) {
    EXPECT_EQ(sorted(again.GetAllSettings(SectionOfSet(entry))),
              sorted(store.GetAllSettings(SectionOfSet(entry))));
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

}  // namespace
}  // namespace corvanel
