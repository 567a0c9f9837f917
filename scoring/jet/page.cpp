#include "scoring/jet/page.h"

#include <algorithm>

namespace corvanel::jet {
namespace {

constexpr uint32_t kDeleted = 0x8000;
constexpr uint32_t kMoved = 0x4000;
constexpr uint32_t kStart = 0x1FFF;
constexpr uint32_t kMostRows = 256;  // a pointer has one byte for a row's number

}  // namespace

PageKind KindOf(const View& page) {
  return static_cast<PageKind>(page.Number(0, 1));
}

RowPage::RowPage(const File& file, uint32_t number)
    : page_(file.Page(number)),
      entries_(file.TheLayout().rowCount + 2),
      rows_(std::min(page_.Number(file.TheLayout().rowCount, 2), kMostRows)) {}

/// Rows fill a page from its end: each ends where the one before it begins. Where a writer put them
/// in another order, at the next beginning of any.
size_t RowPage::EndOf(uint32_t row, size_t start) const {
  if (row == 0) return page_.Size();
  const size_t before = Entry(row - 1) & kStart;
  if (before >= start) return before;
  size_t end = page_.Size();
  for (uint32_t other = 0; other < Rows(); ++other) {
    const size_t begin = Entry(other) & kStart;
    if (begin > start) end = std::min(end, begin);
  }
  return end;
}

Slot RowPage::At(uint32_t row) const {
  if (row >= Rows()) return {};
  const uint32_t entry = Entry(row);
  const size_t start = entry & kStart;
  Slot slot{{}, (entry & kDeleted) != 0, (entry & kMoved) != 0};
  const size_t end = EndOf(row, start);
  if (start == end) slot.deleted = true;  // nothing is left of it
  if (start < end) slot.bytes = page_.Part(start, end - start);
  return slot;
}

}  // namespace corvanel::jet
