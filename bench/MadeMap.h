#pragma once

#include "map/Geometry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zem::bench {

/// A game that looks like a map, and where its rooms truly are.
struct MadeMap {
    struct Place {
        int block = 0; // blocks are islands and floors: places in two of them do not compare
        map::Cell cell;
    };
    std::string file;         // a whole game
    std::vector<Place> truth; // of the rooms, in the order of the file
};

struct MadeMapKind {
    int rooms = 200;
    double untrue = 0;         // per cent of the exits that do not lead where they say
    double joinedByPlaces = 0; // per cent of the rooms that no compass exit reaches
    std::uint32_t seed = 1;
};

/// Makes regions (corridors, houses, towns with loops, caves and wilderness with diagonals, towers), joins
/// them by roads, islands and floors by places only; then makes a share of the exits untrue.
MadeMap MakeMap(const MadeMapKind& kind);

} // namespace zem::bench
