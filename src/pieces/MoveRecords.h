#pragma once

#include "model/GameModel.h"
#include "model/Place.h"

#include <vector>

namespace zem {

/// Moves characters and objects to the end of those of a room, in their order; those that are there already
/// stay where they are. Gives the places that they have then, in the order of `things`.
/// @param room  from 1
std::vector<Place> MoveThings(GameModel& game, const std::vector<Place>& things, int room);

/// Takes the records at the places out of the game, whatever their order. References to them stay.
void RemoveRecords(GameModel& game, const std::vector<Place>& places);

} // namespace zem
