#pragma once

#include "play/World.h"

#include <memory>

class QString;

namespace zem {

/// Reads a game with the libraries beside it, for players. Throws KelError with what the reader has to say
/// about a game that does not load or cannot begin.
std::shared_ptr<const play::World> ReadWorld(const QString& path);

} // namespace zem
