#pragma once

#include "game/Rename.h"
#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <vector>

namespace zem {

/// Gives what a piece defines other names where they are taken in a game, whatever their capitals: "Pantry 2"
/// for "Pantry". All references inside the piece follow. An object and the item of its name stay one thing to
/// the player. Characters and objects have one space of names, because scripts may mean either.
/// @return  the names that are different now
std::vector<NameChange> MakeNamesFree(GameModel& piece, const GameModel& game, const CommandLookup& commands);

} // namespace zem
