#pragma once

#include "game/Rename.h"
#include "kel/CommandLookup.h"

#include <functional>
#include <string>
#include <vector>

/// What lies beside a game and calls things by name follows when they get other names.
namespace zem {

/// Follows in the notes. Throws KelError, and leaves them as they are, when they cannot be read or written.
void FollowInNotes(const std::string& gamePath, const std::vector<NameChange>& names,
                   const CommandLookup& commands);

/// The file of the recorded runs of a game.
std::string RunsPath(const std::string& gamePath);

/// Follows in the recorded runs, by playing them in the game as it is in its file, which has the new names
/// already. Gives the names of those runs in which more is told differently than the names. Throws KelError,
/// and leaves the runs as they are, when they or the game cannot be read, or the runs not be written.
/// @param goesOn  asked before each line; a run that ends by it stays as it is
std::vector<std::string> FollowInRuns(const std::string& gamePath, const std::vector<NameChange>& names,
                                      const std::function<bool()>& goesOn = {});

} // namespace zem
