#pragma once

#include "routing/RoutedMap.h"

#include <vector>

namespace zem::routing {

/// For each line of the map, which has none of its paths yet, the line of the map before that shows the same
/// between rooms that stand where they stood; -1 for a new one.
std::vector<int> KeptLines(const RoutedMap& before, const RoutedMap& map);

/// The rooms whose boxes stand where none of the same size stood before.
std::vector<int> NewBoxes(const RoutedMap& before, const RoutedMap& map);

} // namespace zem::routing
