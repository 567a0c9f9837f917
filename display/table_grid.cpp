#include "display/table_grid.h"

#include <algorithm>
#include <cmath>

namespace corvanel {
namespace {

// Shares of the window's height.
constexpr double kTallestCell = 0.105;
constexpr double kAllCells = 0.21;
constexpr double kLists = 0.2;
constexpr double kTallestNumber = 0.075;

constexpr double kWidestCell = 2.2;     // width of a cell for its height
constexpr double kNarrowestCell = 1.1;  // the same, below which its texts shrink
constexpr double kLetter = 0.5;         // width of a section's letter for that of a cell
constexpr double kNumber = 1.45;        // width of a number's place in a list for its height
constexpr double kMoreRowsPay = 1.2;    // a further row must let the cells grow by this
constexpr size_t kSectionRows = 10;     // more sections than this do not begin a row each
constexpr double kInBox = 0.62;         // of a box's height, for its rows
constexpr double kBoxGap = 0.012;       // between boxes, of the width

/// A way of placing: so many columns, and the rows that come of it.
struct Shape {
  size_t columns = 1;
  size_t rows = 1;
  bool rowPerSection = false;
};

size_t DividedUp(size_t count, size_t by) {
  return (count + by - 1) / by;
}

/// Everything one after the other, in so many rows; or each section from a row of its own.
Shape ShapeOf(const std::vector<size_t>& tables, size_t columns, bool perSection) {
  const size_t letter = tables.size() > 1 ? 1 : 0;
  size_t slots = 0;
  size_t rows = 0;
  for (const size_t count : tables) {
    slots += count + letter;
    // The letter stands before the first row; further rows keep its column free.
    rows += DividedUp(count, std::max<size_t>(columns - letter, 1));
  }
  return {columns, perSection ? rows : DividedUp(slots, columns), perSection};
}

/// How many cells a row is wide: a letter takes less than a cell, but where sections follow each
/// other over several rows.
double Across(const Shape& shape, size_t sections) {
  const auto columns = static_cast<double>(shape.columns);
  if (sections < 2 || (shape.rows > 1 && !shape.rowPerSection)) return columns;
  const size_t letters = shape.rowPerSection ? 1 : sections;
  return columns - (1 - kLetter) * static_cast<double>(letters);
}

double CellHeight(const Shape& shape, size_t sections, double width, double windowHeight) {
  return std::min({kTallestCell * windowHeight,
                   kAllCells * windowHeight / static_cast<double>(shape.rows),
                   width / Across(shape, sections) / kNarrowestCell});
}

/// The shape with the largest cells, of fewer rows where that is nearly as good.
Shape BestShape(const std::vector<size_t>& tables, double width, double windowHeight) {
  size_t slots = tables.size() > 1 ? tables.size() : 0;
  for (const size_t count : tables) slots += count;
  const bool perSection = tables.size() > 1 && tables.size() <= kSectionRows;
  Shape best{slots, 1, false};
  const auto height = [&](const Shape& shape) {
    return CellHeight(shape, tables.size(), width, windowHeight);
  };
  for (size_t columns = slots; columns >= (tables.size() > 1 ? 2U : 1U); --columns) {
    const Shape shape = ShapeOf(tables, columns, perSection);
    if (height(shape) > height(best) * (shape.rows > best.rows ? kMoreRowsPay : 1)) best = shape;
  }
  return best;
}

}  // namespace

std::vector<SectionCells> ShownTables(const std::vector<SectionCells>& sections) {
  size_t all = 0;
  for (const SectionCells& section : sections) all += section.cells.size();
  if (all <= kMostCells) return sections;
  std::vector<SectionCells> shown;
  for (SectionCells section : sections) {
    std::erase_if(section.cells, [](const TableCell& cell) {
      return cell.state == TableState::Finished || cell.state == TableState::NotPlaying ||
             cell.state == TableState::LeftOut;
    });
    if (!section.cells.empty()) shown.push_back(std::move(section));
  }
  return shown;
}

TableGrid LayOutTables(const std::vector<size_t>& tables, double width, double windowHeight) {
  TableGrid grid;
  if (tables.empty()) return grid;
  const bool letters = tables.size() > 1;
  const Shape best = BestShape(tables, width, windowHeight);
  const double cellHeight = CellHeight(best, tables.size(), width, windowHeight);
  const double across = Across(best, tables.size());
  const double cellWidth = std::min(width / across, cellHeight * kWidestCell);
  const double letterWidth =
      across < static_cast<double>(best.columns) ? kLetter * cellWidth : cellWidth;
  grid.height = cellHeight * static_cast<double>(best.rows);
  const double left = (width - cellWidth * across) / 2;
  double x = left;
  size_t row = 0;
  size_t column = 0;
  const auto next = [&](double wide) {
    if (column == best.columns) {
      ++row;
      column = best.rowPerSection ? 1 : 0;
      x = left + (best.rowPerSection ? letterWidth : 0);
    }
    ++column;
    x += wide;
    return Place{x - wide, cellHeight * static_cast<double>(row), wide, cellHeight};
  };
  for (const size_t count : tables) {
    if (letters) grid.letters.push_back(next(letterWidth));
    auto& cells = grid.cells.emplace_back();
    for (size_t i = 0; i < count; ++i) cells.push_back(next(cellWidth));
    if (best.rowPerSection) {
      ++row;
      column = 0;
      x = left;
    }
  }
  return grid;
}

TableGrid LayOutLists(const std::vector<size_t>& tables, double width, double windowHeight) {
  TableGrid grid;
  if (tables.empty()) return grid;
  grid.height = kLists * windowHeight;
  const size_t letter = tables.size() > 1 ? 1 : 0;
  const size_t most = *std::max_element(tables.begin(), tables.end());
  const double gap = kBoxGap * width;
  struct Lists {
    size_t across = 1;  // boxes
    size_t columns = 1;
    double number = 0;  // height
  } best;
  const auto box = [&](size_t across) {
    const auto down = static_cast<double>(DividedUp(tables.size(), across));
    const auto beside = static_cast<double>(across);
    return Place{0, 0, (width - gap * (beside - 1)) / beside,
                 (grid.height - gap * (down - 1)) / down};
  };
  for (size_t across = 1; across <= tables.size(); ++across) {
    for (size_t columns = 1; columns <= most; ++columns) {
      const Place one = box(across);
      const double number =
          std::min({kTallestNumber * windowHeight,
                    one.height * kInBox / static_cast<double>(DividedUp(most, columns)),
                    (one.width - gap) / static_cast<double>(columns + letter) / kNumber});
      if (number > best.number) best = {across, columns, number};
    }
  }
  const Place one = box(best.across);
  const double slot = best.number * kNumber;
  for (size_t s = 0; s < tables.size(); ++s) {
    const size_t column = s % best.across;
    const size_t row = s / best.across;
    const double x = (one.width + gap) * static_cast<double>(column);
    const double y = (one.height + gap) * static_cast<double>(row);
    grid.boxes.push_back({x, y, one.width, one.height});
    const auto rows = static_cast<double>(DividedUp(tables[s], best.columns));
    const double top = y + (one.height - rows * best.number) / 2;
    const auto place = [&](size_t across, size_t down) {
      return Place{x + gap / 2 + slot * static_cast<double>(across),
                   top + best.number * static_cast<double>(down), slot, best.number};
    };
    if (letter > 0) grid.letters.push_back(place(0, 0));
    auto& cells = grid.cells.emplace_back();
    for (size_t i = 0; i < tables[s]; ++i) {
      cells.push_back(place(letter + i % best.columns, i / best.columns));
    }
  }
  return grid;
}

}  // namespace corvanel
