#include "scoring/jet/table_definition.h"

#include "basics/numbers.h"
#include "scoring/jet/text.h"

namespace corvanel::jet {
namespace {

constexpr size_t kMostColumns = 255;
constexpr size_t kMostIndexes = 1000;
constexpr size_t kMostPages = 64;  // of a definition
constexpr size_t kNextPage = 4;
constexpr size_t kContinued = 8;  // where a further page goes on
constexpr uint32_t kFixed = 1;    // in a column's flags

}  // namespace

TableDefinition::TableDefinition(const File& file, uint32_t page)
    : page_(page), head_(file.TheLayout().rowColumns) {
  if (page == 0 || KindOf(file.Page(page)) != PageKind::Definition) return;
  const std::vector<unsigned char> bytes = Collect(file);
  if (!ReadColumns(View(bytes), file)) columns_.clear();
}

/// Its pages as one stretch of bytes; what lacks is zero.
std::vector<unsigned char> TableDefinition::Collect(const File& file) const {
  std::vector<unsigned char> bytes;
  uint32_t page = page_;
  for (size_t pages = 0; pages < kMostPages; ++pages) {
    const View part = file.Page(page);
    if (KindOf(part) != PageKind::Definition) break;
    const auto there = (pages == 0 ? part : part.From(kContinued)).Bytes();
    bytes.insert(bytes.end(), there.begin(), there.end());
    page = part.Number(kNextPage, 4);
    if (page == 0) break;
  }
  return bytes;
}

bool TableDefinition::ReadColumns(const View& bytes, const File& file) {
  const Layout& layout = file.TheLayout();
  const size_t count = bytes.Number(layout.columnCount, 2);
  const size_t indexes = bytes.Number(layout.indexCount, 4);
  if (count == 0 || count > kMostColumns || indexes > kMostIndexes) return false;
  map_ = RowPointer::Of(bytes.Number(layout.map, 4));
  fixedLengths_.assign(kMostColumns + 1, 0);
  const size_t first = layout.indexes + indexes * layout.indexEntry;
  for (size_t i = 0; i < count; ++i) {
    const View entry = bytes.Part(first + i * layout.columnEntry, layout.columnEntry);
    Column column;
    column.type = static_cast<ColumnType>(entry.Number(0, 1));
    column.number = entry.Number(layout.number, 2);
    column.variable = entry.Number(layout.variable, 2);
    column.fixed = (entry.Number(layout.flags, 1) & kFixed) != 0;
    column.offset = entry.Number(layout.fixedOffset, 2);
    column.length = entry.Number(layout.length, 2);
    if (entry.Empty() || column.number >= kMostColumns) return false;
    if (column.type == ColumnType::Flag) column.length = 0;  // its value is its null bit
    if (column.fixed) {
      size_t& length = fixedLengths_[column.number + 1];
      length = std::max(length, column.offset + column.length);
      if (length > layout.page) return false;
    } else {
      firstVariable_ = std::min(firstVariable_, column.number);
    }
    columns_.push_back(std::move(column));
  }
  for (size_t i = 1; i < fixedLengths_.size(); ++i) {
    fixedLengths_[i] = std::max(fixedLengths_[i], fixedLengths_[i - 1]);
  }
  return ReadNames(bytes.From(first + count * layout.columnEntry), file);
}

bool TableDefinition::ReadNames(View names, const File& file) {
  const size_t width = file.TheLayout().nameLength;
  for (Column& column : columns_) {
    const size_t length = names.Number(0, width);
    const View name = names.Part(width, length);
    if (name.Empty()) return false;
    column.name = TextOf(name, file);
    names = names.From(width + length);
  }
  return true;
}

int TableDefinition::Find(std::string_view name) const {
  const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const Column& column) {
    return SameName(column.name, name);
  });
  return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

std::optional<size_t> TableDefinition::PlaceOfLong(int column) const {
  if (column < 0) return std::nullopt;
  const Column& wanted = columns_[static_cast<size_t>(column)];
  if (!wanted.fixed || wanted.type != ColumnType::Long) return std::nullopt;
  return head_ + wanted.offset;
}

}  // namespace corvanel::jet
