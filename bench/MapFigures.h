#pragma once

#include "map/MapGraph.h"

#include <vector>

namespace zem::bench {

/// What can be measured of a map from outside: from the game and the cells alone.
struct MapFigures {
    double exact = 0;  // per cent of the compass exits to another room that run exactly in their direction
    double within = 0; // and that are at most 22.5 degrees off
    int exits = 0;
    int missed = 0;       // exits more than 22.5 degrees off
    int straightOver = 0; // rooms run over by connections that are exact
    int allOver = 0;      // and by all connections
    int straightCrossings = 0;
    int allCrossings = 0;
    double meanLength = 0; // of the exits, in cells
    int maxLength = 0;
    double cellsPerRoom = 0; // of the smallest rectangle around everything
    int overlaps = 0;        // rooms that share a cell with another
    int docked = 0;          // rooms that no compass exit reaches
    int dockedNear = 0;      // of them, within 2 cells of the room that reaches them first
};

/// @param blocks  for each room the plane that it lies on; connections between two planes do not count, and
///                nothing of two planes crosses. Empty for one plane.
MapFigures Measure(const map::MapGraph& graph, const std::vector<map::Cell>& cells,
                   const std::vector<int>& blocks = {});

} // namespace zem::bench
