#pragma once

#include "map/Shifter.h"

#include <vector>

namespace zem::map {

/// A first picture of a group: robust rays, rounded to cells.
std::vector<Cell> StartOfGroup(const Group& group, Effort& effort);

/// Lays out a group from its first picture: mends its terms, draws it together, and parts its crossing lines.
/// No two rooms share a cell, however little effort is left.
std::vector<Cell> LayOutGroup(const Group& group, const std::vector<Cell>& start, Effort& effort);

} // namespace zem::map
