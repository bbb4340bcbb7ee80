#pragma once

#include "model/GameModel.h"

#include <string>
#include <string_view>

/// A whole game as bytes that give it back exactly, which a game file cannot promise: what the editor keeps
/// for itself.
namespace zem {

/// All fields of the game, with the file name and the modified flag.
std::string WriteSnapshot(const GameModel& game);

/// Throws KelError for bytes that are no whole snapshot.
GameModel ReadSnapshot(std::string_view bytes);

} // namespace zem
