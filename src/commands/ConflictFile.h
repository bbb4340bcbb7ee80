#pragma once

#include "merge/MergeGames.h"

#include <string>

namespace zem {

/// The conflicts of a merge as a JSON file that holds both sides of each, and the whole of all three
/// versions, so that nothing is lost and each conflict can be settled later. The form is described in
/// docs/json.md.
/// @param path  what the game is called
std::string ConflictFile(const merge::MergeResult& result, const merge::MergeVersions& versions,
                         const std::string& path);

/// The versions that a file of conflicts holds. Throws KelError when it is none, is damaged, or is of a merge
/// that did not keep them.
/// @param messages  the error messages of the catalogue, which every game needs
merge::MergeVersions ReadConflictFile(const std::string& bytes, const Table<ErrorMessage>& messages);

/// What happened, on one line: "room Hall, description, line 2: both changed it; ours is kept".
std::string Sentence(const merge::Conflict& conflict);

} // namespace zem
