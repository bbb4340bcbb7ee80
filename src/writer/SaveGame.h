#pragma once

#include "base/Host.h"
#include "model/GameModel.h"
#include "writer/OutputFile.h"

#include <string>

namespace zem {

/// Writes the game in the fixed layout of a ".kel" file, in one forward pass. `path` goes into the header
/// line. Throws KelError when the output fails.
void WriteGame(const GameModel& game, const std::string& path, Output& output);

/// Saves the game to the path, with the protection of ReplaceFile for what is there, and makes the path the
/// game's file name, unmodified, once the new version is on the disk. Warns through the host when the game
/// has no start room, and goes on. Shows the host's progress window, which stays open: the caller closes it
/// when all that follows a save is done.
///
/// Throws what ReplaceFile throws; the game's name and modified flag are then as before.
void SaveGame(GameModel& game, const std::string& path, Host& host);

} // namespace zem
