#pragma once

#include "play/Outcome.h"
#include "play/World.h"

#include <string>

namespace zem::play {

/// What a player reads when he comes into a room for the first time, as the game begins. Nothing for a name
/// that no room has.
Outcome PreviewRoom(const World& world, const std::string& room);

/// What a player reads when he looks at a thing, in the room where it begins.
/// @param thing  its ThingKey
Outcome PreviewThing(const World& world, const std::string& room, const std::string& thing);

} // namespace zem::play
