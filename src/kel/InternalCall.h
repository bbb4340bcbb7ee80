#pragma once

#include "model/GameModel.h"

#include <string>
#include <string_view>

namespace zem {

/// The name of the internal procedure that a script does nothing but call; empty for any other script. A part
/// of the script.
std::string_view CalledInternalName(std::string_view script);

/// The internal procedure that a script is a call of, whatever its capitals, from 1; 0 when it is none.
int CalledInternalProcedure(const GameModel& game, const std::string& script);

} // namespace zem
