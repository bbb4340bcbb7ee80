#pragma once

#include "game/Find.h"

#include <optional>
#include <string>

namespace zem {

class ScriptEditing;

/// The first procedure, item, text block, menu or room that the script, or a branch of it, names and the game
/// with its open drafts does not have. Names made of variables are left out.
std::optional<NamedThing> FirstMissingName(const ScriptEditing& scripts, const std::string& script);

} // namespace zem
