#pragma once

#include "base/Host.h"
#include "model/GameModel.h"
#include "writer/OutputFile.h"

#include <string>

namespace zem {

/// Writes the game in the fixed layout of a ".kel" file, in one forward pass. `path` goes into the header
/// line. Throws KelError when the output fails.
void WriteGame(const GameModel& game, const std::string& path, Output& output);

/// Writes the game to the path itself and makes the path the game's file name, unmodified. Warns through the
/// host when the game has no start room, and goes on. Shows the host's progress window, which stays open: the
/// caller closes it when all that follows a save is done.
///
/// Throws KelError when the file cannot be written; what is there then may be half a file, and the game's
/// name and modified flag are as before (ReplaceFile protects what was there).
void SaveGame(GameModel& game, const std::string& path, Host& host);

/// SaveGame with the protection of ReplaceFile: the save of an author's file. The game's name and modified
/// flag change only when the new version is on the disk, which SaveGame alone cannot know. Throws what
/// ReplaceFile throws.
void ReplaceGame(GameModel& game, const std::string& path, Host& host);

} // namespace zem
