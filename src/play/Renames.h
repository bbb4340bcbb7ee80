#pragma once

#include "model/GameModel.h"
#include "play/Session.h"

#include <vector>

namespace zem::play {

/// Which rooms, things, items and collectables got another name between two versions of a game: those that
/// stand where another name stood, in lists that are as long as they were.
std::vector<Renamed> FindRenames(const GameModel& before, const GameModel& after);

} // namespace zem::play
