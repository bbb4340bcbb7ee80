#pragma once

#include "map/MapGraph.h"

#include <functional>
#include <optional>
#include <vector>

namespace zem::map {

/// How long a layout may take, and who is told of it; for a worker thread all of it is optional.
struct LayoutControl {
    std::function<bool()> stop;                                 // asked often; true ends the work at once
    std::function<void(const std::vector<Cell>&)> firstPicture; // gets cells that will still move
    std::optional<std::int64_t>
        steps; // what work may be done, of about ten nanoseconds each; else what suits
};

/// A cell for each room of the game: no two rooms in one cell, pinned rooms where their pins are. The same
/// for the same game on every machine, unless it was stopped; then it is the best so far.
std::vector<Cell> LayOut(const MapGraph& graph, const LayoutControl& control = {});

} // namespace zem::map
