#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <string>
#include <vector>

namespace zem {

/// All names of the kind in the game, each once, in the order of the game. Variables, flags and timers are
/// those that its scripts use, by the catalogue's syntax, sorted.
std::vector<std::string> GameNames(const GameModel& game, NameKind kind, const CommandLookup& commands);

} // namespace zem
