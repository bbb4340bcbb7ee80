#pragma once

#include "game/GameIndex.h"
#include "game/TextChanges.h"

#include <string>
#include <vector>

namespace zem {

/// Why changes of texts cannot be made: they would change what is named, what a script does, or would not
/// come back from a file. One sentence; empty when they can be made.
/// @param changes  all of one record, or of one field of the game's own; at least one
std::string WhyNot(const GameIndex& index, const std::vector<TextChange>& changes);

} // namespace zem
