#include "display/table_grid.h"

#include <algorithm>
#include <cmath>

namespace corvanel {
namespace {

constexpr double kWidestCell = 1.7;  // width of a cell for its height
constexpr size_t kSectionRows = 10;  // more sections than this do not begin a row each

/// A way of placing: so many columns, and the rows that come of it.
struct Shape {
  size_t columns = 1;
  size_t rows = 1;
  bool rowPerSection = false;
};

size_t Slots(size_t tables, bool letter) {
  return tables + (letter ? 1 : 0);
}

size_t RowsFor(const std::vector<size_t>& tables, size_t columns, bool letters, bool perSection) {
  size_t rows = 0;
  size_t all = 0;
  for (const size_t count : tables) {
    // The letter stands before the first row; further rows keep its column free.
    const size_t inRow = std::max<size_t>(columns - (letters ? 1 : 0), 1);
    rows += (count + inRow - 1) / inRow;
    all += Slots(count, letters);
  }
  return std::max<size_t>(perSection ? rows : (all + columns - 1) / columns, 1);
}

double CellHeight(const Shape& shape, double width, double height) {
  return std::min(height / static_cast<double>(shape.rows),
                  width / static_cast<double>(shape.columns) / kWidestCell * 1.35);
}

}  // namespace

double GridShare(size_t tables) {
  constexpr double kFewest = 0.15;
  constexpr double kMost = 0.4;
  return std::clamp(0.09 + 0.022 * std::sqrt(static_cast<double>(tables)) * 1.4, kFewest, kMost);
}

TableGrid LayOutTables(const std::vector<size_t>& tables, double width, double height) {
  const bool letters = tables.size() > 1;
  size_t all = 0;
  for (const size_t count : tables) all += Slots(count, letters);
  TableGrid grid;
  if (all == 0) return grid;
  const bool perSection = letters && tables.size() <= kSectionRows;
  Shape best;
  for (size_t columns = letters ? 2 : 1; columns <= std::max<size_t>(all, 2); ++columns) {
    const Shape shape{columns, RowsFor(tables, columns, letters, perSection), perSection};
    if (columns == (letters ? 2U : 1U) ||
        CellHeight(shape, width, height) > CellHeight(best, width, height)) {
      best = shape;
    }
  }
  const double cellHeight = CellHeight(best, width, height);
  const double cellWidth =
      std::min(width / static_cast<double>(best.columns), cellHeight * kWidestCell);
  const double left = (width - cellWidth * static_cast<double>(best.columns)) / 2;
  const double top = (height - cellHeight * static_cast<double>(best.rows)) / 2;
  const auto slot = [&](size_t row, size_t column) {
    return Place{left + cellWidth * static_cast<double>(column),
                 top + cellHeight * static_cast<double>(row), cellWidth, cellHeight};
  };
  size_t row = 0;
  size_t column = 0;
  const auto next = [&] {
    if (column == best.columns) {
      ++row;
      column = perSection ? 1 : 0;
    }
    return slot(row, column++);
  };
  for (const size_t count : tables) {
    if (letters) grid.letters.push_back(next());
    auto& cells = grid.cells.emplace_back();
    for (size_t i = 0; i < count; ++i) cells.push_back(next());
    if (perSection) {
      ++row;
      column = 0;
    }
  }
  return grid;
}

}  // namespace corvanel
