#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <map>

#include "basics/numbers.h"
#include "scoring/read_picture.h"
#include "system/scoring_files.h"
#include "tests/support/mdb_export.h"

namespace corvanel {
namespace {

namespace fs = std::filesystem;

const fs::path kFixtures = CORVANEL_FIXTURES;

/// A number as the tool writes it; null and a missing column are 0.
int Number(const std::map<std::string, std::string>& row, const std::string& column) {
  const auto value = row.find(column);
  return value == row.end() || value->second.empty() ? 0 : std::stoi(value->second);
}

std::string Text(const std::map<std::string, std::string>& row, const std::string& column) {
  const auto value = row.find(column);
  return value == row.end() ? "" : value->second;
}

void CompareMovement(const fs::path& file, const ScoringPicture& picture) {
  const Exported sections = Export(file, "Section");
  ASSERT_EQ(picture.sections.size(), sections.size());
  for (size_t i = 0; i < sections.size(); ++i) {
    const auto& row = sections[i];
    EXPECT_EQ(picture.sections[i],
              (SectionRow{static_cast<int16_t>(Number(row, "id")), Text(row, "letter"),
                          static_cast<int16_t>(Number(row, "tables")),
                          static_cast<int16_t>(Number(row, "missingpair")),
                          static_cast<int16_t>(Number(row, "ewmovebeforeplay"))}));
  }
  const Exported rounds = Export(file, "RoundData");
  ASSERT_EQ(picture.rounds.size(), rounds.size());
  for (size_t i = 0; i < rounds.size(); ++i) {
    const auto value = [&](const char* name) {
      return static_cast<int16_t>(Number(rounds[i], name));
    };
    EXPECT_EQ(picture.rounds[i], (RoundRow{value("section"), value("table"), value("round"),
                                           value("nspair"), value("ewpair"), value("lowboard"),
                                           value("highboard"), Text(rounds[i], "customboards")}));
  }
}

void CompareResults(const fs::path& file, const ScoringPicture& picture) {
  const Exported received = Export(file, "ReceivedData");
  ASSERT_EQ(picture.received.size(), received.size());
  for (size_t i = 0; i < received.size(); ++i) {
    const auto& row = received[i];
    const ResultRow& result = picture.received[i];
    const std::vector<int> numbers = {result.ID,     result.Section,  result.Table,
                                      result.round,  result.Board,    result.PairNS,
                                      result.PairEW, result.Declarer, -result.Erased};
    size_t n = 0;
    for (const char* name :
         {"id", "section", "table", "round", "board", "pairns", "pairew", "declarer", "erased"}) {
      EXPECT_EQ(numbers[n++], Number(row, name)) << name << " of row " << i;
    }
    EXPECT_EQ(result.NS_EW, Text(row, "ns/ew"));
    EXPECT_EQ(result.Contract, Text(row, "contract"));
    EXPECT_EQ(result.Result, Text(row, "result"));
    EXPECT_EQ(result.LeadCard, Text(row, "leadcard"));
    EXPECT_EQ(result.Remarks, Text(row, "remarks"));
    const std::string stamp = Text(row, "datelog").substr(0, 10) + Text(row, "timelog").substr(10);
    EXPECT_EQ(IsoText(result.stamp), stamp) << i;
  }
}

void ComparePlayers(const fs::path& file, const ScoringPicture& picture) {
  std::map<std::string, std::string> members;
  for (const auto& row : Export(file, "PlayerNames")) {
    members.emplace(Text(row, "id"), Text(row, "name"));
  }
  const Exported seats = Export(file, "PlayerNumbers");
  ASSERT_EQ(picture.players.size(), seats.size());
  for (size_t i = 0; i < seats.size(); ++i) {
    const PlayerRow& seat = picture.players[i];
    EXPECT_EQ(seat.Table, Number(seats[i], "table"));
    EXPECT_EQ(seat.Direction, Text(seats[i], "direction"));
    EXPECT_EQ(seat.Number, Text(seats[i], "number"));
    const bool lookedUp = picture.nameSource == 0 && Val(seat.Number) > 0;
    const auto member = members.find(seat.Number);
    EXPECT_EQ(seat.Name, !lookedUp                 ? Text(seats[i], "name")
                         : member == members.end() ? ""
                                                   : member->second);
  }
}

TEST(ScoringReaderTest, EveryFileReadsAsTheLibrarysOwnToolShowsIt) {
  if (!MdbExportIsThere()) GTEST_SKIP() << "no mdb-export";
  const std::vector<fs::path> files = EveryScoringFile();
  EXPECT_GE(files.size(), 10U);
  for (const fs::path& file : files) {
    SCOPED_TRACE(file);
    const auto picture = ReadScoringPicture(BytesOf(file));
    if (file.stem() == "no-section-table") {
      EXPECT_FALSE(picture);
      continue;
    }
    ASSERT_TRUE(picture) << picture.Failure().description;
    CompareMovement(file, picture.Value());
    CompareResults(file, picture.Value());
    ComparePlayers(file, picture.Value());
  }
}

TEST(ScoringReaderTest, HeadersAreFound) {
  struct Row {
    const char* file;
    const char* unit;
    const char* name;
    const char* start;  // empty: the file's own date
    const char* computer;
    int nameSource;
  };
  const Row rows[] = {
      {"friday", "Bridgemate", "Friday pairs", "2026-11-20T19:30:00", "SCORING-PC", 0},
      {"bridgetab", "BridgeTab", "CLUB-2026-47", "", "SCORING-PC", 0},
      {"null-start", "Bridgemate", "", "", "SCORING-PC", 0},
      {"older-columns", "Bridgemate", "Friday pairs", "2026-11-20T19:30:00", "", 0},
      {"names-on-units", "Bridgemate", "Łódź – Müller pairs", "2026-11-20T19:30:00", "SCORING-PC",
       2},
  };
  for (const Row& row : rows) {
    const auto picture = ReadScoringPicture(BytesOf(kFixtures / (std::string(row.file) + ".bws")));
    ASSERT_TRUE(picture) << row.file;
    const ScoringPicture& p = picture.Value();
    EXPECT_EQ(p.unit, row.unit);
    EXPECT_EQ(p.sessionName, row.name);
    EXPECT_EQ(p.sessionDate ? IsoText(*p.sessionDate) : "", row.start) << row.file;
    EXPECT_EQ(p.computer, row.computer) << row.file;
    EXPECT_EQ(p.nameSource, row.nameSource) << row.file;
  }
}

constexpr size_t kPage = 4096;

uint32_t Number32(const std::string& bytes, size_t place, size_t width) {
  uint32_t value = 0;
  for (size_t i = width; i-- > 0;)
    value = value << 8U | static_cast<unsigned char>(bytes[place + i]);
  return value;
}

void Write32(std::string& bytes, size_t place, size_t width, uint32_t value) {
  for (size_t i = 0; i < width; ++i) bytes[place + i] = static_cast<char>(value >> (8 * i));
}

/// The pages that hold results: those of the table whose rows are the most.
std::vector<size_t> ResultPages(const std::string& bytes, size_t results) {
  std::map<uint32_t, std::pair<size_t, std::vector<size_t>>> owners;
  for (size_t page = kPage; page < bytes.size(); page += kPage) {
    if (bytes[page] != 1) continue;
    auto& [rows, pages] = owners[Number32(bytes, page + 4, 4)];
    rows += Number32(bytes, page + 12, 2);
    pages.push_back(page);
  }
  for (const auto& [owner, rowsAndPages] : owners) {
    if (rowsAndPages.first == results) return rowsAndPages.second;
  }
  return {};
}

TEST(ScoringReaderTest, RowsThatWereMovedOrDeletedAreFollowed) {
  std::string bytes = BytesOf(kFixtures / "friday.bws");
  const auto before = ReadScoringPicture(bytes);
  const std::vector<size_t> pages = ResultPages(bytes, before.Value().received.size());
  ASSERT_GE(pages.size(), 2U);
  // The first row of the first page goes to the free room of the last page, marked as deleted
  // there; four bytes in its old place say where it is.
  const size_t from = pages.front();
  const size_t to = pages.back();
  const uint32_t start = Number32(bytes, from + 14, 2);
  const std::string row = bytes.substr(from + start, kPage - start);
  const uint32_t rows = Number32(bytes, to + 12, 2);
  const uint32_t end = Number32(bytes, to + 14 + 2 * (rows - 1), 2) & 0x1FFFU;
  const auto place = static_cast<uint32_t>(end - row.size());
  ASSERT_GT(place, 14 + 2 * (rows + 1));
  bytes.replace(to + place, row.size(), row);
  Write32(bytes, to + 14 + 2 * rows, 2, place | 0x8000U);
  Write32(bytes, to + 12, 2, rows + 1);
  Write32(bytes, from + start, 4, static_cast<uint32_t>(to / kPage) << 8U | rows);
  Write32(bytes, from + 14, 2, start | 0x4000U);
  const auto moved = ReadScoringPicture(bytes);
  ASSERT_TRUE(moved) << moved.Failure().description;
  EXPECT_EQ(moved.Value().received, before.Value().received);
  Write32(bytes, from + 14, 2, start | 0x8000U);
  const auto deleted = ReadScoringPicture(bytes);
  ASSERT_TRUE(deleted);
  EXPECT_EQ(deleted.Value().received.size() + 1, before.Value().received.size());
}

/// A page of rows as the database engine leaves it when its first rows were deleted: their places
/// remain, without a length, at the end of the page. False when the page has no room for one more.
bool PutDeletedRowFirst(std::string& bytes, size_t page, size_t size, size_t count) {
  const uint32_t rows = Number32(bytes, page + count, 2);
  const size_t entries = page + count + 2;
  const uint32_t last = Number32(bytes, entries + 2 * size_t{rows} - 2, 2) & 0x1FFFU;
  if (rows == 0 || page + last < entries + 2 * size_t{rows} + 2) return false;
  bytes.replace(entries + 2, 2 * size_t{rows}, bytes.substr(entries, 2 * size_t{rows}));
  Write32(bytes, entries, 2, 0xC000U | static_cast<uint32_t>(size));
  Write32(bytes, page + count, 2, rows + 1);
  return true;
}

/// Such pages in every table and in the list of the tables.
void ExpectReadWithDeletedRows(const fs::path& file) {
  SCOPED_TRACE(file);
  const std::string whole = BytesOf(file);
  const bool jet3 = whole[0x14] == 0;
  const size_t size = jet3 ? 2048 : 4096;
  const auto before = ReadScoringPicture(whole);
  ASSERT_TRUE(before);
  int changed = 0;
  for (size_t page = size; page < whole.size(); page += size) {
    const size_t owner = size * Number32(whole, page + 4, 4);
    const bool ofTable = whole[page] == 1 && owner < whole.size() && whole[owner] == 2;
    std::string bytes = whole;
    if (!ofTable || !PutDeletedRowFirst(bytes, page, size, jet3 ? 8 : 12)) continue;
    ++changed;
    const auto after = ReadScoringPicture(bytes);
    ASSERT_TRUE(after) << page;
    EXPECT_EQ(after.Value(), before.Value()) << page;
  }
  EXPECT_GE(changed, 8);
}

TEST(ScoringReaderTest, APageWhoseFirstRowsAreGoneIsReadInEveryTable) {
  ExpectReadWithDeletedRows(kFixtures / "friday.bws");
  ExpectReadWithDeletedRows(kFixtures / "two-sections.bws");
}

TEST(ScoringReaderTest, AnAccess97FileIsReadWithSuchPagesToo) {
  const char* more = std::getenv("CORVANEL_MORE_FIXTURES");
  const fs::path file = fs::path(more == nullptr ? "" : more) / "access97.bws";
  if (!fs::exists(file)) GTEST_SKIP() << "no access97.bws in $CORVANEL_MORE_FIXTURES";
  const auto picture = ReadScoringPicture(BytesOf(file));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture.Value().format, "Jet3");
  EXPECT_EQ(picture.Value().received.size(), 288U);
  ExpectReadWithDeletedRows(file);
}

// A row whose parts cannot be where they say costs that row; a table that only says more about the
// evening costs that table.
TEST(ScoringReaderTest, WhatIsDamagedIsLeftOutAndCounted) {
  const std::string whole = BytesOf(kFixtures / "friday.bws");
  const auto before = ReadScoringPicture(whole);
  const size_t page = ResultPages(whole, before.Value().received.size()).front();
  std::string bytes = whole;
  const uint32_t row = Number32(bytes, page + 14, 2);
  Write32(bytes, page + row, 2, 0xFFFF);  // so many columns
  const auto damaged = ReadScoringPicture(bytes);
  ASSERT_TRUE(damaged);
  EXPECT_EQ(damaged.Value().rowsLeftOut, 1);
  EXPECT_EQ(damaged.Value().received.size() + 1, before.Value().received.size());
  bytes = whole;
  for (size_t at = kPage; at < whole.size(); at += kPage) {
    if (whole[at] != 2) continue;
    // A column of the definition named as one of PlayerNames' alone is.
    if (whole.substr(at, kPage).find(std::string("s\0t\0r\0I\0D\0", 10)) != std::string::npos) {
      Write32(bytes, at + 45, 2, 0);  // no columns
    }
  }
  const auto without = ReadScoringPicture(bytes);
  ASSERT_TRUE(without);
  EXPECT_EQ(without.Value().tablesLeftOut, std::vector<std::string>{"PlayerNames"});
  EXPECT_EQ(without.Value().received, before.Value().received);
}

// A later look at a file goes through what has changed alone, and finds what a first look would,
// whatever the two have in common.
TEST(ScoringReaderTest, ALaterLookFindsWhatAFirstOneWould) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(kFixtures / "live")) files.push_back(entry);
  std::sort(files.begin(), files.end());
  for (const char* other :
       {"two-sections", "names-on-units", "friday", "older-columns", "friday"}) {
    files.push_back(kFixtures / (std::string(other) + ".bws"));
  }
  ScoringContent last;
  for (const fs::path& file : files) {
    const std::string bytes = BytesOf(file);
    auto content = ReadScoringContent(bytes, {}, last);
    ASSERT_TRUE(content) << file;
    EXPECT_EQ(*content.Value().picture, ReadScoringPicture(bytes).Value()) << file;
    last = std::move(content.Value());
  }
  // A letter of a name in the member list.
  std::string renamed = *last.bytes;
  const std::string& name = last.picture->players.front().Name;
  const size_t list = last.tables.at("PlayerNames").pages.front().page * kPage;
  std::string pairs;  // of bytes, as the file has them
  for (const char c : name) pairs += {c, '\0'};
  const size_t place = renamed.find(pairs, list) + 2;
  ASSERT_LT(place, renamed.size());
  renamed[place] = '#';
  const auto content = ReadScoringContent(renamed, {}, last);
  ASSERT_TRUE(content);
  EXPECT_EQ(*content.Value().picture, ReadScoringPicture(renamed).Value());
  EXPECT_EQ(content.Value().picture->players.front().Name,
            name.substr(0, 1) + '#' + name.substr(2));
}

// One table may be written before another: what is there is read.
TEST(ScoringReaderTest, ResultsWithoutAMovementAreRead) {
  std::string bytes = BytesOf(kFixtures / "friday.bws");
  const auto before = ReadScoringPicture(bytes);
  for (const size_t page : ResultPages(bytes, before.Value().rounds.size())) {
    Write32(bytes, page + 12, 2, 0);
  }
  const auto after = ReadScoringPicture(bytes);
  ASSERT_TRUE(after);
  EXPECT_TRUE(after.Value().rounds.empty());
  EXPECT_EQ(after.Value().received, before.Value().received);
}

TEST(ScoringReaderTest, AFileCutOffOrHalfWrittenIsNoPicture) {
  const std::string whole = BytesOf(kFixtures / "friday.bws");
  EXPECT_FALSE(ReadScoringPicture(""));
  EXPECT_FALSE(ReadScoringPicture(std::string(100000, '\0')));
  EXPECT_FALSE(ReadScoringPicture("[Timer],0\r\n" + std::string(9000, 'x')));
  for (size_t cut = 1; cut < whole.size(); cut += 3001) {
    EXPECT_FALSE(ReadScoringPicture(whole.substr(0, cut))) << cut;
  }
  const size_t results = ReadScoringPicture(whole).Value().received.size();
  for (const size_t page : ResultPages(whole, results)) {
    std::string holed = whole;
    holed.replace(page, kPage, kPage, '\0');
    EXPECT_FALSE(ReadScoringPicture(holed)) << page;
    EXPECT_FALSE(ReadScoringPicture(whole.substr(0, page)));
  }
}

}  // namespace
}  // namespace corvanel
