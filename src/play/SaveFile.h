#pragma once

#include "play/State.h"
#include "play/World.h"

#include <string>
#include <string_view>
#include <vector>

/// A saved game: what differs from its beginning, by name, so that it can be opened in a changed game, too.
/// Saved games come from strangers: one that is damaged anywhere is refused whole.
namespace zem::play {

/// The bytes of a saved game.
std::string WriteSave(const World& world, const State& state);

/// Puts the state into that of a saved game. False for bytes that are no saved game; the state is as it was
/// then.
/// @param lost  gets, in plain words, what the game has no more
bool ReadSave(std::string_view bytes, const World& world, State& state, std::vector<std::string>& lost);

} // namespace zem::play
