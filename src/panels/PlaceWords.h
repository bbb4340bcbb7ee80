#pragma once

#include "model/GameModel.h"
#include "model/Place.h"

#include <QString>

namespace zem {

/// What a list of places groups its rows by: the room, or the list of the game, in which the place stands.
/// @param place  as its owner's, where it stands in an internal procedure
QString GroupOf(const GameModel& game, const Place& place);

} // namespace zem
