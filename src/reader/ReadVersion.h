#pragma once

#include "model/GameModel.h"

#include <string>

namespace zem {

/// Reads the bytes of a game file to compare the game with another one, whatever the file is called. The game
/// is reset first, has no file name afterwards, and is empty for no bytes.
///
/// Throws KelError as LoadGame does, and for what opens but is no version of a game: a file without a block,
/// and one with the marks of a conflict that git left.
void ReadVersion(GameModel& game, std::string bytes);

} // namespace zem
