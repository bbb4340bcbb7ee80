#pragma once

#include "base/TextRange.h"

#include <string_view>
#include <vector>

namespace zem::problems {

/// A block "define timer <...>", which no editor knows. Ranges are of the text that it stands in.
struct TimerBlock {
    TextRange name;
    std::vector<TextRange> intervals; // what stands in their brackets
    std::vector<TextRange> scripts;
    std::vector<TextRange> others; // lines that are neither, which mean something to a library at most
};

/// The timers in the text of blocks that Zem does not know.
std::vector<TimerBlock> TimerBlocksIn(std::string_view blocks);

} // namespace zem::problems
