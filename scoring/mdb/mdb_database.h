#pragma once

#include <glib.h>  // before the library, which would include it as C
#include <mdbtools.h>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanel {

constexpr size_t kMostColumns = 255;  // that a table of such a file can have

/// How much a read may take before it is given up: a hostile file can make few bytes look like
/// many rows.
class ReadBudget {
 public:
  ReadBudget(size_t bytes, std::chrono::milliseconds time)
      : bytes_(bytes), end_(std::chrono::steady_clock::now() + time) {}
  /// Takes memory off the budget. False when that or the time is spent.
  bool Spend(size_t bytes);

 private:
  size_t bytes_;
  std::chrono::steady_clock::time_point end_;
};

/// One row of a table, to be read while ForEachRow is at it.
class MdbRow {
 public:
  MdbRow(MdbHandle* file, const MdbTableDef* table, const MdbField* fields)
      : file_(file), table_(table), fields_(fields) {}

  /// `column` as MdbTable::Column returned it; a column that is not there is null everywhere.
  /// Whole numbers, whatever type the column has; nothing for null.
  std::optional<int32_t> Number(int column) const;
  /// The same as a 16-bit number; null and what does not fit is 0.
  int16_t Short(int column) const;
  /// Without the blanks that pad it; empty for null.
  std::string Text(int column) const;
  /// Days since 1899-12-30.
  std::optional<double> Days(int column) const;
  bool Flag(int column) const;

 private:
  const MdbField* Field(int column, int least) const;
  int Type(int column) const;

  MdbHandle* file_;
  const MdbTableDef* table_;
  const MdbField* fields_;
};

/// One table of a database.
class MdbTable {
 public:
  MdbTable(MdbHandle* file, uint32_t page, uint32_t pages);
  ~MdbTable();
  MdbTable(const MdbTable&) = delete;
  MdbTable& operator=(const MdbTable&) = delete;

  /// Whether its definition makes sense; else it has no columns and no rows can be read.
  bool Sound() const { return table_ != nullptr; }
  /// The column of a name, without regard to case; -1 when there is none.
  int Column(std::string_view name) const;
  /// Hands over every row that is there, in the order of the file, rows that were moved to
  /// another page included. False when the table is damaged or `take` returned false.
  bool ForEachRow(const std::function<bool(const MdbRow&)>& take);

 private:
  bool ReadPage(uint32_t page, const std::function<bool(const MdbRow&)>& take);
  bool ReadRow(uint32_t page, unsigned row, const std::function<bool(const MdbRow&)>& take);

  MdbHandle* file_;
  uint32_t pages_;
  MdbCatalogEntry entry_{};
  MdbTableDef* table_ = nullptr;
};

/// An Access database that lies in memory. Only those routines of the library are used that stay
/// within their pages whatever these hold; the rest of what a page can claim is checked here.
class MdbDatabase {
 public:
  /// `bytes` of the file must outlive the database.
  explicit MdbDatabase(const std::string& bytes);
  ~MdbDatabase();
  MdbDatabase(const MdbDatabase&) = delete;
  MdbDatabase& operator=(const MdbDatabase&) = delete;

  /// Whether this is such a database, whole pages and a readable list of tables.
  bool Sound() const { return sound_; }
  bool IsJet3() const { return file_->f->jet_version == MDB_VER_JET3; }
  /// The names of its tables in the order of the list.
  const std::vector<std::string>& TableNames() const { return names_; }
  /// The table of a name, without regard to case; null when there is none.
  std::unique_ptr<MdbTable> Table(std::string_view name) const;

 private:
  bool ReadTableList();

  MdbHandle* file_ = nullptr;
  uint32_t pages_ = 0;
  bool sound_ = false;
  std::vector<std::string> names_;
  std::vector<uint32_t> tablePages_;
};

}  // namespace corvanel
