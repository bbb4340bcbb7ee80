#pragma once

#include "map/Layout.h"

namespace zem::map {

/// A map as its author knows it.
struct PlacedMap {
    MapGraph graph;
    std::vector<Cell> cells; // of its rooms
};

/// Lays out a game that was a little different before, so that its author finds everything where it was:
/// rooms that are new get the best free cell, exits that are new are made true where that moves few others,
/// and what was taken away leaves its cell empty. Pinned rooms stand where their pins are. No two rooms share
/// a cell.
///
/// Rooms are known by their names, a renamed one by its number; a game of which little is known is laid out
/// anew.
std::vector<Cell> LayOutAfterEdit(const PlacedMap& before, const MapGraph& graph,
                                  const LayoutControl& control = {});

} // namespace zem::map
