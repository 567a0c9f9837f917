#pragma once

#include "scoring/jet/file.h"

namespace corvanel::jet {

/// Kinds of pages, by their first byte.
enum class PageKind : unsigned char { Unwritten = 0, Rows = 1, Definition = 2, Map = 5 };

PageKind KindOf(const View& page);

/// Where a row lies: four bytes, the row's number within its page first.
struct RowPointer {
  uint32_t page = 0;
  uint32_t row = 0;

  static RowPointer Of(uint32_t number) { return {number >> 8U, number & 0xFFU}; }
};

/// What a page of rows has in one of its places. Deleted rows stay where they were, or lose their
/// bytes too; a row that grew may have left only a pointer to where it lies now.
struct Slot {
  View bytes;  // none where page and place disagree
  bool deleted = false;
  bool moved = false;
};

/// A page that holds rows of one table.
class RowPage {
 public:
  RowPage(const File& file, uint32_t number);

  PageKind Kind() const { return KindOf(page_); }
  /// The page of its table's definition.
  uint32_t Owner() const { return page_.Number(4, 4); }
  /// How many places it has.
  uint32_t Rows() const { return rows_; }
  Slot At(uint32_t row) const;

 private:
  uint32_t Entry(uint32_t row) const { return page_.Number(entries_ + 2 * size_t{row}, 2); }
  size_t EndOf(uint32_t row, size_t start) const;

  View page_;
  size_t entries_;  // where the list of its places begins
  uint32_t rows_;
};

}  // namespace corvanel::jet
