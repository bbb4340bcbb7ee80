#pragma once

#include "model/GameModel.h"

#include <string>

namespace zem {

/// The internal procedure that a script is a call of, whatever its capitals, from 1; 0 when it is none.
int CalledInternalProcedure(const GameModel& game, const std::string& script);

} // namespace zem
