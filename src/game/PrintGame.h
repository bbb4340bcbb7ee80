#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <string>

namespace zem {

/// The whole game as readable text, LF line ends, its scripts in plain English and internal procedures in the
/// place where they are called.
std::string PrintGame(const GameModel& game, const CommandLookup& commands);

} // namespace zem
