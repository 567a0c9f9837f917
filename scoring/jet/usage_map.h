#pragma once

#include <optional>

#include "scoring/jet/page.h"

namespace corvanel::jet {

/// Which pages belong to a table: a bit for each page, either beside the map's head for a stretch
/// of the file, or on pages of their own for the whole of it. Pages without a bit are stale.
class UsageMap {
 public:
  /// The map that lies in the row of that pointer.
  UsageMap(const File& file, RowPointer place);

  /// Whether it and its pages are there.
  bool Sound() const { return !map_.Empty(); }
  /// The first page after `page` that belongs to the table; it may lie beyond the end of a file
  /// that is cut off. Nothing when there is no more.
  std::optional<uint32_t> After(uint32_t page) const;

 private:
  /// The number of a page of bits; 0 for a stretch of the file without any.
  uint32_t MapPage(size_t index) const;
  bool HasItsPages() const;

  const File& file_;
  View map_;
};

}  // namespace corvanel::jet
