#pragma once

#include "map/Terms.h"

#include <vector>

namespace zem::map {

/// Where the rooms belong that no exit reaches.
struct Hosts {
    std::vector<int> hostOf; // for each room of the game the room beside which it stands, or NoRoom
    std::vector<int> docked; // the rooms that have a host, hosts before those that they host
    std::vector<int> roots;  // rooms without a host that others hang on: each begins a group of its own
    std::vector<int> lonely; // rooms that nothing leads to or from
};

/// A room that no term reaches gets as host the room that reaches it first, level by level from all others:
/// by its "out", else by a place that leads to it, else by a place of its own.
Hosts FindHosts(const MapGraph& graph, const std::vector<Group>& groups);

} // namespace zem::map
