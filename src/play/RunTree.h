#pragma once

#include "play/RecordedRuns.h"

#include <cstddef>
#include <vector>

namespace zem::play {

/// A stretch of lines that the same runs begin with. From its end they go different ways.
struct RunBranch {
    std::size_t run = 0;             // one that goes along it
    std::size_t begin = 0;           // its first line, from 0
    std::size_t end = 0;             // behind its last one
    std::vector<std::size_t> ending; // the runs that end with it, in the order of the file
    std::vector<RunBranch> branches; // in the order of the first run of each
};

/// The runs as trees of their common beginnings, one for each way in which they begin. Runs are on one branch
/// as long as they have the same lines and, where they have other seeds, are told the same.
std::vector<RunBranch> TreeOfRuns(const std::vector<RecordedRun>& runs);

} // namespace zem::play
