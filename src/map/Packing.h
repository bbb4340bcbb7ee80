#pragma once

#include "map/Terms.h"

#include <vector>

namespace zem::map {

/// A group that is laid out: its rooms move as one block.
struct Block {
    std::vector<int> rooms; // of the game
    std::vector<Cell> cells;
    std::vector<Term> terms; // between rooms by their numbers in the block
    bool pinned = false;     // stands where it stands
};

/// Puts the blocks side by side without a cell in common, each as near as its outline allows to the room that
/// a place or "out" joins it to; then the rooms that nothing leads to, in a block below.
/// @returns a cell for each room of the game
std::vector<Cell> Pack(const MapGraph& graph, const std::vector<Block>& blocks,
                       const std::vector<int>& lonely);

} // namespace zem::map
