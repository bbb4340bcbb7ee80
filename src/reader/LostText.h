#pragma once

#include "reader/SourceText.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zem {

enum class LostTextKind {
    BehindExit,      // A script behind an exit that leads to a room: it never runs.
    SecondLine,      // An earlier line of a keyword of which the last counts; the text is the keyword.
    MenuLine,        // A line that menus do not have.
    OutsideBlocks,   // A line that stands in no block.
    OutsideBrackets, // Letters between a keyword and its brackets, or behind them.
    StartItem        // Nothing lost: an entry of the start items, for who knows the items.
};

/// Text of a file that a game read from it does not have, for a reason that its author cannot see.
struct LostText {
    LostTextKind kind;
    std::size_t line = 0; // Counted from 1.
    std::string text;
};

/// Finds such text in a source whose lines are trimmed and whose blocks have their kinds. Comments, and
/// blocks that are not read at all, are not told.
std::vector<LostText> FindLostText(const SourceText& source);

} // namespace zem
