#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "scoring/jet/row.h"

namespace corvanel::jet {

/// What came of reading a page of rows.
struct PageRead {
  size_t leftOut = 0;    // rows that could not be read
  bool itsOwn = true;    // every row lies on the page itself
  bool stopped = false;  // because who takes the rows wanted no more
};

/// What came of reading a table.
struct TableRead {
  bool whole = true;  // false: pages lack or are not written yet, as in a file that is being copied
  size_t leftOut = 0;  // rows that could not be read
};

/// Which rows of a table are wanted: by the whole number that stands in a column of fixed place.
struct WantedRows {
  int column = -1;
  std::function<bool(int32_t)> wants;
};

/// One table of a database.
class Table {
 public:
  Table(const File& file, uint32_t page) : file_(file), definition_(file, page) {}

  /// Whether its definition makes sense; else it has no columns and no rows.
  bool Sound() const { return definition_.Sound(); }
  const std::vector<Column>& Columns() const { return definition_.Columns(); }
  int Find(std::string_view column) const { return definition_.Find(column); }
  /// The pages of its rows, ascending; nothing when some lack or are not written yet.
  std::optional<std::vector<uint32_t>> Pages() const;
  /// Hands over every row of one of its pages until `take` returns false, rows that were moved from
  /// there to another page included.
  /// With `wanted` only such rows are looked at; the others, damaged or not, cost next to nothing.
  PageRead ReadPage(uint32_t page, const std::function<bool(const Row&)>& take,
                    const WantedRows* wanted = nullptr) const;
  /// The same for the whole table, in the order of the file. What stands in the table's head is not
  /// asked: it may say that there are no rows.
  TableRead ForEachRow(const std::function<bool(const Row&)>& take,
                       const WantedRows* wanted = nullptr) const;

 private:
  const File& file_;
  TableDefinition definition_;
};

/// The tables of a file.
class Database {
 public:
  /// `bytes` must outlive the database.
  explicit Database(std::span<const unsigned char> bytes);

  /// Whether it is such a database with a readable list of tables.
  bool Sound() const { return sound_; }
  const File& TheFile() const { return file_; }
  /// The names of its tables in the order of the list.
  const std::vector<std::string>& TableNames() const { return names_; }
  /// The table of a name, without regard to case; nothing when there is none.
  std::optional<Table> Find(std::string_view name) const;

 private:
  bool ReadTableList();

  File file_;
  std::vector<std::string> names_;
  std::vector<uint32_t> pages_;  // of their definitions
  bool sound_;
};

}  // namespace corvanel::jet
