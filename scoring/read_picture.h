#pragma once

#include <map>
#include <string>
#include <vector>

#include "scoring/jet/table_definition.h"
#include "scoring/scoring_picture.h"

namespace corvanel {

/// Which rows of a table came from which page.
struct PageRows {
  uint32_t page = 0;
  size_t first = 0;  // in the picture's list
  size_t count = 0;
  bool kept = false;  // they serve again while the page's bytes stay the same

  bool operator==(const PageRows&) const = default;
};

/// A table as it was read: its columns, and which rows came from which page, ascending.
struct PagedTable {
  std::vector<jet::Column> columns;
  std::vector<PageRows> pages;
};

/// Tables that grow, by name.
using PagedTables = std::map<std::string, PagedTable, std::less<>>;

/// A scoring file as it was read, and what came of it, so that the next look need not go through
/// what has not changed.
struct ScoringContent {
  std::shared_ptr<const std::string> bytes;
  PicturePointer picture;
  PagedTables tables;
};

/// Parses the bytes of a scoring database that was last changed at `modified`. `last` may hold an
/// earlier state of the same file: what comes is what a first look would have found. Fails when the
/// bytes are no such database, or cut off, or not wholly written yet; a row that is damaged is left
/// out and counted. Takes at most a small multiple of the file's size in memory, and of time in
/// that proportion.
Result<ScoringContent> ReadScoringContent(std::string bytes, DateTime modified,
                                          const ScoringContent& last);

/// The same for who looks once.
Result<ScoringPicture> ReadScoringPicture(const std::string& bytes);

}  // namespace corvanel
