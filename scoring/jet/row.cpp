#include "scoring/jet/row.h"

#include <bit>
#include <cmath>

#include "basics/numbers.h"
#include "scoring/jet/text.h"

namespace corvanel::jet {

Row::Row(const File& file, const TableDefinition& table, const View& bytes)
    : file_(file), table_(table), bytes_(bytes), sound_(Measure()) {}

/// A row: the number of its columns, the fixed ones, those of variable length, their places from
/// the last to the first, how many they are, and a bit for each column that is not null.
bool Row::Measure() {
  const size_t head = file_.TheLayout().rowColumns;
  columns_ = bytes_.Number(0, head);
  const size_t maskLength = (columns_ + 7) / 8;
  if (columns_ == 0 || head + table_.FixedLength(columns_) + maskLength > bytes_.Size()) {
    return false;
  }
  mask_ = bytes_.Size() - maskLength;
  if (!table_.HasVariable(columns_)) return true;
  if (file_.IsJet3()) return MeasureJet3();
  if (mask_ < head + 4) return false;
  variables_ = bytes_.Number(mask_ - 2, 2);
  starts_ = mask_ - 4;
  return 2 * variables_ <= starts_;
}

/// Places are single bytes here. Beyond 255 they begin anew, and a list behind them has for each
/// time the number of the first column that is concerned; the last entry may be without meaning.
bool Row::MeasureJet3() {
  if (mask_ < 2) return false;
  variables_ = bytes_.Number(mask_ - 1, 1);
  jumps_ = (bytes_.Size() - 1) / 256;
  if (mask_ < 2 + jumps_ + variables_) return false;
  starts_ = mask_ - 2 - jumps_;
  if (jumps_ > 0 && (starts_ - variables_) / 256 < jumps_) --jumps_;
  return true;
}

size_t Row::VariableStart(size_t place) const {
  if (!file_.IsJet3()) return bytes_.Number(starts_ - 2 * place, 2);
  size_t beyond = 0;
  while (beyond < jumps_ && bytes_.Number(mask_ - 2 - beyond, 1) <= place) ++beyond;
  return bytes_.Number(starts_ - place, 1) + beyond * 256;
}

bool Row::Marked(const Column& column) const {
  return sound_ && column.number < columns_ &&
         (bytes_.Number(mask_ + column.number / 8, 1) >> (column.number % 8) & 1U) != 0;
}

/// The bytes of a value that is there and at least so long; else none.
View Row::Field(int column, size_t least) const {
  if (column < 0 || !Marked(At(column))) return {};
  const Column& wanted = At(column);
  View field;
  if (wanted.fixed) {
    field = bytes_.Part(file_.TheLayout().rowColumns + wanted.offset, wanted.length);
  } else if (wanted.variable < variables_) {
    const size_t start = VariableStart(wanted.variable);
    const size_t end = VariableStart(wanted.variable + 1);
    if (start < end && end <= starts_) field = bytes_.Part(start, end - start);
  }
  return field.Size() < least ? View() : field;
}

std::optional<int32_t> Row::Number(int column) const {
  const View field = Field(column, 1);
  if (field.Empty()) return std::nullopt;
  switch (At(column).type) {
    case ColumnType::Byte:
      return static_cast<int32_t>(field.Number(0, 1));
    case ColumnType::Short:
      if (field.Size() < 2) return std::nullopt;
      return static_cast<int16_t>(field.Number(0, 2));
    case ColumnType::Long:
      if (field.Size() < 4) return std::nullopt;
      return static_cast<int32_t>(field.Number(0, 4));
    case ColumnType::Float:
    case ColumnType::Double:
    case ColumnType::Text: {
      const bool text = At(column).type == ColumnType::Text;
      const double number = text ? Val(Text(column)) : Days(column).value_or(0);
      if (!(std::abs(number) <= INT32_MAX)) return std::nullopt;
      return static_cast<int32_t>(number);
    }
    default:
      return std::nullopt;
  }
}

int16_t Row::Short(int column) const {
  // Most columns are of this type.
  if (column >= 0 && At(column).type == ColumnType::Short) {
    return static_cast<int16_t>(Field(column, 2).Number(0, 2));
  }
  const int32_t number = Number(column).value_or(0);
  return number == static_cast<int16_t>(number) ? static_cast<int16_t>(number) : int16_t{0};
}

std::string Row::Text(int column) const {
  const View field = Field(column, 1);
  if (field.Empty() || At(column).type != ColumnType::Text) return {};
  std::string text = TextOf(field, file_);
  const auto solid = [](char c) { return static_cast<unsigned char>(c) > ' '; };
  if (!text.empty() && solid(text.front()) && solid(text.back())) return text;
  return std::string(Trimmed(text));
}

std::optional<double> Row::Days(int column) const {
  const View field = Field(column, 4);
  if (field.Empty()) return std::nullopt;
  switch (At(column).type) {
    case ColumnType::Float:
      return std::bit_cast<float>(field.Number(0, 4));
    case ColumnType::Double:
    case ColumnType::Days:
      if (field.Size() < 8) return std::nullopt;
      return std::bit_cast<double>(field.Number(0, 4) | uint64_t{field.Number(4, 4)} << 32U);
    default:
      return std::nullopt;
  }
}

bool Row::Flag(int column) const {
  if (column < 0) return false;
  // A yes/no column has no bytes of its own: it is kept as "not null".
  if (At(column).type == ColumnType::Flag) return Marked(At(column));
  return Number(column).value_or(0) != 0;
}

}  // namespace corvanel::jet
