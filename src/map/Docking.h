#pragma once

#include "map/Shifter.h"

#include <vector>

namespace zem::map {

/// Gives the rooms that no exit reaches a place beside their hosts.
///
/// @param group  its rooms from number `base` on are such rooms; each has a term without a direction from its
///               host, which comes before it
/// @param cells  of the first `base` rooms
/// @returns the cells of all rooms; the first ones may have made room, but no true exit was given up for that
std::vector<Cell> Dock(const Group& group, int base, std::vector<Cell> cells, Effort& effort);

} // namespace zem::map
