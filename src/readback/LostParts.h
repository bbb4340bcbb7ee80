#pragma once

#include "readback/ReadBack.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace zem {

/// A place that is lost, told in a sentence.
/// @param reason  what happens to it, without a point
LostPlace Lost(const GameModel& game, const Place& place, const std::string& reason);

/// Takes a game apart to find what does not come back from its file, and why: each part is tried alone, in a
/// game of nothing else.
/// @param comesBack  whether another game comes back from its own file
/// @param most  how many places are enough
std::vector<LostPlace> FindLostParts(const GameModel& game, const std::function<bool(GameModel)>& comesBack,
                                     std::size_t most);

} // namespace zem
