#pragma once

#include "model/GameModel.h"

#include <QString>

namespace zem {

/// Reads a version of a game from a file, whatever it is called, on any thread. Throws KelError when it
/// cannot be read or is no game.
/// @param like  another version of the game, whose catalogue of error messages it gets
GameModel ReadVersionFile(const QString& path, const GameModel& like);

} // namespace zem
