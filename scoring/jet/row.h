#pragma once

#include <optional>
#include <string>

#include "scoring/jet/table_definition.h"

namespace corvanel::jet {

/// The values of one row. Columns are named as TableDefinition::Find returned them; one that is not
/// there is null everywhere.
class Row {
 public:
  Row(const File& file, const TableDefinition& table, const View& bytes);

  /// Whether its parts lie where its length says; else it has no values.
  bool Sound() const { return sound_; }
  /// Whole numbers, whatever type the column has; nothing for null, and for what does not fit.
  std::optional<int32_t> Number(int column) const;
  /// The same as a 16-bit number; null and what does not fit is 0.
  int16_t Short(int column) const;
  /// Without the blanks that pad it; empty for null.
  std::string Text(int column) const;
  /// Days since 1899-12-30, or a number with a fraction.
  std::optional<double> Days(int column) const;
  bool Flag(int column) const;

 private:
  bool Measure();
  bool MeasureJet3();
  /// Where the variable column at that place begins; that of the last one's successor is its end.
  size_t VariableStart(size_t place) const;
  /// Whether the row has a value there: rows that are older than a column have no bit for it.
  bool Marked(const Column& column) const;
  View Field(int column, size_t least) const;
  const Column& At(int column) const { return table_.Columns()[static_cast<size_t>(column)]; }

  const File& file_;
  const TableDefinition& table_;
  View bytes_;
  uint32_t columns_ = 0;  // that the table had when the row was written
  size_t mask_ = 0;       // where the bits of what is not null begin
  size_t variables_ = 0;  // how many columns of variable length it has
  size_t starts_ = 0;     // where the place of the first one stands; the others stand before it
  size_t jumps_ = 0;      // of Jet 3: how many of its places reach beyond 255 once more
  bool sound_ = false;
};

}  // namespace corvanel::jet
