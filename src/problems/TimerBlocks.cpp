#include "problems/TimerBlocks.h"

#include "base/LineText.h"
#include "kel/ScriptLine.h"

#include <algorithm>

namespace zem::problems {

namespace {

constexpr std::string_view TimerHead = "define timer ";
constexpr std::string_view ActionKeyword = "action ";
constexpr std::string_view IntervalKeyword = "interval ";

/// What stands in the first brackets of the line; an empty range at its end for none.
TextRange InBrackets(std::string_view text, TextRange line) {
    const std::size_t open = std::min(text.find('<', line.begin), line.end);
    const std::size_t begin = std::min(open + 1, line.end);
    return {begin, std::min(text.find('>', begin), line.end)};
}

} // namespace

std::vector<TimerBlock> TimerBlocksIn(std::string_view blocks) {
    std::vector<TimerBlock> timers;
    bool isInTimer = false;
    ForEachLine(blocks, [&](TextRange range, int) {
        const std::string_view line = range.Of(blocks);
        if (BeginsWith(line, TimerHead)) {
            isInTimer = true;
            timers.push_back({InBrackets(blocks, range), {}, {}, {}});
        } else if (BeginsWith(line, "end define")) {
            isInTimer = false;
        } else if (isInTimer && BeginsWith(line, ActionKeyword)) {
            timers.back().scripts.push_back({range.begin + ActionKeyword.size(), range.end});
        } else if (isInTimer && BeginsWith(line, IntervalKeyword)) {
            timers.back().intervals.push_back(InBrackets(blocks, range));
        } else if (isInTimer && !Trim(line).empty() && !line.starts_with('\'')) {
            timers.back().others.push_back(range);
        }
    });
    return timers;
}

} // namespace zem::problems
