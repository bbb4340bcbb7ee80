#pragma once

#include "model/GameModel.h"

#include <string>

namespace zem {

/// The name of a step of the history that also says what it was done to: "add room" becomes "add room
/// Pantry", "edit room" becomes "edit room Kitchen: description", "edit procedures" becomes "edit procedures:
/// ring". A name that says it already, or of which nothing more is known, stays.
/// @param command  as a menu would say it
std::string NameStep(const std::string& command, const GameModel& before, const GameModel& after);

} // namespace zem
