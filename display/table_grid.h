#pragma once

#include <vector>

#include "display/layout.h"
#include "session/progress_face.h"

namespace corvanel {

/// More tables than this are not all shown, only those that have not finished.
constexpr size_t kMostCells = 40;

/// The tables that a display shows: all of them, or those that still play, where there are too
/// many for players to find their own among them.
std::vector<SectionCells> ShownTables(const std::vector<SectionCells>& sections);

/// Where the cells of the tables stand, in pixels of the grid.
struct TableGrid {
  std::vector<Place> boxes;    // by section, of a list; empty when every table has a cell
  std::vector<Place> letters;  // by section; empty when there is only one
  std::vector<std::vector<Place>> cells;  // by section and table
  double height = 0;                      // of all
};

/// Places a cell for each table, all of one size, as large as is good in a window of this height,
/// `width` being that of the grid. Few tables stand in one row; few sections begin a row each, with
/// their letter before it; many follow one another. `tables`: how many each section has. Nothing
/// overlaps or reaches beyond the grid.
TableGrid LayOutTables(const std::vector<size_t>& tables, double width, double windowHeight);

/// Places the numbers of tables in a box for each section, whose height together is always the
/// same. A section without tables has no box.
TableGrid LayOutLists(const std::vector<size_t>& tables, double width, double windowHeight);

}  // namespace corvanel
