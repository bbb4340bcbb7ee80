#pragma once

#include "game/Rename.h"
#include "play/RecordedRuns.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Recorded runs after something in the game got another name.
namespace zem::play {

struct RunsAfterRename {
    std::vector<RecordedRun> runs;
    bool isChanged = false;
    // Runs in which more is told differently than the name, or that did not come to their end.
    std::vector<std::string> astray;
};

/// Follows renames: players type the new name where the old one is typed, if more of the story is told as
/// before then, and what is told with the new name and otherwise as it was approved is approved again. What
/// is told differently for another reason stays as it was approved, so that it is noticed.
/// @param world   the game with the new names
/// @param names   in the order in which they changed
/// @param goesOn  asked before each line; runs that end by it stay as they are
RunsAfterRename RenameInRuns(const std::vector<RecordedRun>& runs, const std::shared_ptr<const World>& world,
                             const std::vector<NameChange>& names, const std::function<bool()>& goesOn = {});

} // namespace zem::play
