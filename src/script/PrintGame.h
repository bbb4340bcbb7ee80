#pragma once

#include "model/GameModel.h"

#include <string>

namespace zem {

/// The game as readable text, LF line ends: its properties, rooms with their exits, places and things.
std::string PrintGame(const GameModel& game);

} // namespace zem
