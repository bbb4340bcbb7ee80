#pragma once

#include "map/Terms.h"

#include <vector>

namespace zem::map {

/// Gives each room from number `base` on a cell of its own: as many as possible within NearHost cells of
/// their hosts and under no straight line, nearest cells first; the others the nearest free cell.
/// @param cells  of the first `base` rooms; the others are appended
void MatchDocks(const Group& group, int base, std::vector<Cell>& cells);

/// The cells within NearHost cells of this one, nearest first.
std::vector<Cell> CellsNear(Cell host);

} // namespace zem::map
