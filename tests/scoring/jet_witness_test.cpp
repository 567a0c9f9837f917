// What our own reader makes of a database, value for value beside what another reads in it.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "basics/date_time.h"
#include "basics/numbers.h"
#include "scoring/jet/database.h"
#include "tests/support/mdb_export.h"

namespace corvanel {
namespace {

/// A value as the witness writes it; null is empty.
std::string Shown(const jet::Row& row, int column, jet::ColumnType type) {
  const auto number = row.Number(column);
  const auto days = row.Days(column);
  switch (type) {
    case jet::ColumnType::Flag:
      return row.Flag(column) ? "1" : "0";
    case jet::ColumnType::Byte:
    case jet::ColumnType::Short:
    case jet::ColumnType::Long:
      return number ? std::to_string(*number) : "";
    case jet::ColumnType::Days:
      return days ? IsoText(DateTime::FromDays(*days).value_or(DateTime())) : "";
    case jet::ColumnType::Float:
    case jet::ColumnType::Double:
      return days ? fmt::format("{:.6g}", *days) : "";
    case jet::ColumnType::Text:
      return row.Text(column);
  }
  return "";
}

bool IsFraction(jet::ColumnType type) {
  return type == jet::ColumnType::Float || type == jet::ColumnType::Double;
}

/// Compares a table; the number of the values that were compared.
size_t Compare(const std::filesystem::path& file, const jet::Table& table,
               const std::string& name) {
  SCOPED_TRACE(name);
  const Exported expected = Export(file, name);
  size_t rows = 0;
  size_t values = 0;
  table.ForEachRow([&](const jet::Row& row) {
    if (rows == expected.size()) return ++rows, false;
    for (size_t c = 0; c < table.Columns().size(); ++c) {
      const jet::Column& column = table.Columns()[c];
      std::string key = column.name;
      for (char& letter : key)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
      std::string value = expected[rows].at(key);
      if (IsFraction(column.type) && !value.empty()) {
        value = fmt::format("{:.6g}", std::stod(value));
      }
      EXPECT_EQ(Shown(row, static_cast<int>(c), column.type), value)
          << column.name << " of row " << rows;
      ++values;
    }
    ++rows;
    return true;
  });
  EXPECT_EQ(rows, expected.size());
  return values;
}

TEST(JetWitnessTest, EveryValueOfEveryTableIsWhatTheWitnessReads) {
  if (!MdbExportIsThere()) GTEST_SKIP() << "no mdb-export";
  std::map<std::string, size_t> compared;
  for (const auto& file : EveryScoringFile()) {
    SCOPED_TRACE(file);
    const std::string bytes = BytesOf(file);
    const jet::Database database(
        {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    ASSERT_TRUE(database.Sound());
    for (const char* name : {"Clients", "Session", "Events", "Section", "RoundData", "ReceivedData",
                             "PlayerNumbers", "PlayerNames", "Settings"}) {
      if (const auto table = database.Find(name); table) {
        compared[name] += Compare(file, *table, name);
      }
    }
  }
  EXPECT_EQ(compared.size(), 9U);
  for (const auto& [table, values] : compared) EXPECT_GE(values, 5U) << table;
  EXPECT_GT(compared["ReceivedData"], 20'000U);
}

}  // namespace
}  // namespace corvanel
