#pragma once

#include "routing/Boxes.h"

namespace zem::routing {

/// Lines longer than this many cells are drawn as stubs.
inline constexpr int LongestLine = 12;

/// The lines that a map has, without their paths: each exit with its opposite, else with one that comes back
/// by another direction, else alone; each place or "out" with its way back. The shape is what the line would
/// like to be.
std::vector<MapLine> WishesOf(const map::MapGraph& graph, const Boxes& boxes);

/// What shape the line would like to have where its rooms stand.
LineShape WishedShape(const MapLine& line, const Boxes& boxes);

/// The rooms that are drawn small: no exit leads from or to them, places or "out" join them to one other
/// room.
std::vector<char> DockedRooms(const map::MapGraph& graph);

} // namespace zem::routing
