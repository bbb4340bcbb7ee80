#pragma once

#include "routing/RoutedMap.h"

#include <string>
#include <vector>

namespace zem {

/// Parts of a map that hang together closely.
struct MapRegions {
    struct Region {
        std::string name; // of the room in it that most lines lead to
        routing::Point middle;
        int size = 0; // in rooms
    };
    std::vector<int> regionOf; // for each room; -1 for none
    std::vector<Region> regions;
};

/// Finds the regions by cutting the map at long lines and at what is no exit. A map that is all one region
/// has none.
MapRegions FindRegions(const routing::RoutedMap& map);

} // namespace zem
