#pragma once

#include "map/MapGraph.h"

#include <vector>

namespace zem::map {

/// For each room of the new game its number in the old one, or NoRoom: by its name (the first of that name by
/// the first, and so on), else by its number when neither of the two has another.
std::vector<int> KnownRooms(const MapGraph& before, const MapGraph& graph);

} // namespace zem::map
