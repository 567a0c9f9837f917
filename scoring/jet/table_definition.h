#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scoring/jet/page.h"

namespace corvanel::jet {

/// Types of columns; others occur and have no value here.
enum class ColumnType : unsigned char {
  Flag = 1,
  Byte = 2,
  Short = 3,
  Long = 4,
  Float = 6,
  Double = 7,
  Days = 8,
  Text = 10
};

struct Column {
  std::string name;
  ColumnType type{};
  uint32_t number = 0;    // counted over all columns that the table ever had
  uint32_t variable = 0;  // place among the columns of variable length
  bool fixed = false;
  size_t offset = 0;  // of a fixed one, behind the number of the row's columns
  size_t length = 0;

  bool operator==(const Column&) const = default;
};

/// What a table's rows are made of, and where they are.
class TableDefinition {
 public:
  /// `page`: where the definition begins; it may go on on others.
  TableDefinition(const File& file, uint32_t page);

  /// Whether it makes sense; else it has no columns.
  bool Sound() const { return !columns_.empty(); }
  const std::vector<Column>& Columns() const { return columns_; }
  /// The column of a name, without regard to case; -1 when there is none.
  int Find(std::string_view name) const;
  /// Where in a row a column of long whole numbers has them; nothing when it has no fixed place.
  std::optional<size_t> PlaceOfLong(int column) const;
  RowPointer Map() const { return map_; }
  uint32_t Page() const { return page_; }
  /// How long the fixed part of a row with so many columns is at least. Rows that were written
  /// before a column was added are shorter.
  size_t FixedLength(uint32_t columns) const {
    return fixedLengths_[std::min<size_t>(columns, fixedLengths_.size() - 1)];
  }
  /// Whether a row with so many columns has a part of variable length.
  bool HasVariable(uint32_t columns) const { return columns > firstVariable_; }

 private:
  std::vector<unsigned char> Collect(const File& file) const;
  bool ReadColumns(const View& bytes, const File& file);
  bool ReadNames(View names, const File& file);

  uint32_t page_;
  size_t head_;  // bytes of a row before its columns
  RowPointer map_;
  std::vector<Column> columns_;
  std::vector<size_t> fixedLengths_;  // by the number of columns
  uint32_t firstVariable_ = UINT32_MAX;
};

}  // namespace corvanel::jet
