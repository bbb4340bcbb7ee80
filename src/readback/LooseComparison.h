#pragma once

#include "model/GameModel.h"

namespace zem {

/// True when both games are the same to the author, although a file may hold them with other blanks at the
/// ends of lines, other blank lines in scripts and tags, and a list of one nameless item for no item.
/// @param game  as it was saved
/// @param back  as it was read
bool IsSameInFile(const GameModel& game, const GameModel& back);

} // namespace zem
