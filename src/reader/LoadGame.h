#pragma once

#include "base/Host.h"
#include "model/GameModel.h"
#include "reader/SourceLines.h"

#include <string>

namespace zem {

/// Reads a ".kel" file into the game, which is reset first, and shows its stages in the host's progress
/// window, which stays open: the caller closes it when all that follows a load is done.
///
/// Returns false when the host has told the author why the path is no game file that can be read.
/// Throws KelError for a file that is a game but cannot be understood or read; its line number is that in the
/// file. After either, the game is empty and has no file name, so that a save cannot touch the file.
bool LoadGame(GameModel& game, const std::string& path, Host& host);

/// Reads the bytes of a game file into the game, which is reset first and has no file name afterwards. Throws
/// KelError as LoadGame does; the game is empty then.
/// @param lines  becomes the lines of the file where the game's records and fields stand; null for who does
///               not ask
void ReadGame(GameModel& game, std::string bytes, SourceLines* lines = nullptr);

} // namespace zem
