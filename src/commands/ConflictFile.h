#pragma once

#include "merge/MergeGames.h"

#include <string>

namespace zem {

/// The conflicts of a merge as a JSON file that holds both sides of each, so that nothing is lost. The form
/// is described in docs/json.md.
/// @param path  what the game is called
std::string ConflictFile(const merge::MergeResult& result, const std::string& path);

/// What happened, on one line: "room Hall, description, line 2: both changed it; ours is kept".
std::string Sentence(const merge::Conflict& conflict);

} // namespace zem
