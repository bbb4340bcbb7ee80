#pragma once

#include "reader/LoadGame.h"

namespace zem {

/// Reads the bytes of a game file into the game, which is reset first. False when the host has told the
/// author what is wrong. Throws KelError as LoadGame does; the game is empty then.
/// @param path   for what is told; the file is not touched
/// @param lines  as for ReadGame
bool ReadWholeGame(GameModel& game, std::string bytes, const std::string& path, Host& host,
                   SourceLines* lines = nullptr);

} // namespace zem
