#pragma once

#include <vector>

#include "display/layout.h"

namespace corvanel {

/// Where the cells of the tables stand, in pixels of the grid.
struct TableGrid {
  std::vector<Place> letters;             // by section; empty when there is only one
  std::vector<std::vector<Place>> cells;  // by section and table
};

/// Places a cell for each table, all of one size and as large as the room allows. Few sections
/// begin a row each, with their letter before it; many follow one another. `tables`: how many each
/// section has. Nothing overlaps or reaches beyond the room.
TableGrid LayOutTables(const std::vector<size_t>& tables, double width, double height);

/// The share of a window's height that the grid of so many tables takes.
double GridShare(size_t tables);

}  // namespace corvanel
