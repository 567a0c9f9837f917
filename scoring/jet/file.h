#pragma once

#include "basics/code_pages.h"
#include "scoring/jet/view.h"

namespace corvanel::jet {

/// Where things stand in the pages of one version of the format: offsets and sizes in bytes.
struct Layout {
  size_t page;  // size of a page
  // Of a page of rows.
  size_t rowCount;
  // Of a table's definition.
  size_t columnCount;
  size_t indexCount;
  size_t map;  // row and page of the map of its pages
  size_t indexes;
  size_t indexEntry;
  size_t columnEntry;
  size_t nameLength;  // bytes of a name's length
  // Of a column's entry in it.
  size_t number;
  size_t variable;  // its place among those of variable length
  size_t flags;
  size_t fixedOffset;
  size_t length;
  // Of a row.
  size_t rowColumns;  // bytes of the number of its columns
};

/// The bytes of an Access database, of version 97 (Jet 3) or 2000 and later (Jet 4).
class File {
 public:
  /// `bytes` must outlive the file.
  explicit File(std::span<const unsigned char> bytes);

  /// Whether it begins as such a file does, and has whole pages.
  bool Sound() const { return layout_ != nullptr; }
  bool IsJet3() const { return jet3_; }
  const Layout& TheLayout() const { return *layout_; }
  uint32_t Pages() const { return pages_; }
  /// An empty view for a page that is not there.
  View Page(uint32_t number) const { return bytes_.Part(number * layout_->page, layout_->page); }
  /// What texts of single bytes are written in: the upper half of a code page.
  const UpperHalf& Characters() const { return *characters_; }

 private:
  View bytes_;
  const Layout* layout_ = nullptr;
  bool jet3_ = false;
  uint32_t pages_ = 0;
  const UpperHalf* characters_ = UpperHalfOf(1252);
};

}  // namespace corvanel::jet
