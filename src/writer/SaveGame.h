#pragma once

#include "base/Host.h"
#include "model/GameModel.h"
#include "writer/OutputFile.h"

#include <string>

namespace zem {

/// Writes the game in the fixed layout of a ".kel" file, in one forward pass. `path` goes into the header
/// line. Throws KelError when the output fails.
void WriteGame(const GameModel& game, const std::string& path, Output& output);

/// Writes the records of a game and none of its properties: those that stand in the block of the game as
/// lines of their own, then all blocks. Throws KelError when the output fails.
/// @param things  its characters and objects are written as blocks outside of rooms
void WriteRecords(const GameModel& game, const Room& things, Output& output);

/// Saves the game to the path, with the protection of ReplaceFile for what is there, and makes the path the
/// game's file name, unmodified, once the new version is on the disk. Warns through the host when the game
/// has no start room, and goes on. Shows the host's progress window, which stays open: the caller closes it
/// when all that follows a save is done.
///
/// Throws what ReplaceFile throws; the game's name and modified flag are then as before.
void SaveGame(GameModel& game, const std::string& path, Host& host);

} // namespace zem
