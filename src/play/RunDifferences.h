#pragma once

#include "play/RecordedRuns.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zem::play {

/// Where a run is told otherwise than its author approved: the lines of the story after one line of input
/// that differ. Lines before and behind them that are the same are left out.
struct StoryDifference {
    std::size_t line = 0; // of the file of runs, from 1, where the first of them stands or would stand
    std::string after;    // the line of input, as written; empty for the beginning
    std::vector<std::string> approved;
    std::vector<std::string> printed;
};

/// One for each step that is told otherwise, as far as the run was played.
std::vector<StoryDifference> CompareRuns(const RecordedRun& approved, const RecordedRun& played);

/// The number of the first character, from 0, in which two lines of UTF-8 differ.
std::size_t FirstDifferentCharacter(std::string_view a, std::string_view b);

} // namespace zem::play
