#pragma once

#include "map/Grid.h"

#include <map>

namespace zem::map {

/// The nearest free cells of a grid that only fills up. Remembers how far it is full around each cell, so
/// that thousands of rooms around one take no longer than thousands around thousands.
class FreeCells {
public:
    explicit FreeCells(const Grid& grid) : grid_(grid) {}

    /// The free cell nearest to this one.
    Cell Nearest(Cell cell);

private:
    const Grid& grid_;
    std::map<Cell, int> full_; // a ring of king's moves inside of which no cell is free
};

} // namespace zem::map
