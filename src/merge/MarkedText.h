#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zem::merge {

/// A piece of a text of which two versions are shown in one.
struct MarkedPiece {
    enum Kind { Same, Removed, Added, LeftOut };
    Kind kind = Same;
    std::string text; // of LeftOut, what stands there and need not be shown
};

/// One line of a changed text.
struct MarkedLine {
    std::size_t line =
        0; // where it stands in the second version, or stood in the first if it is gone; from 1
    std::vector<MarkedPiece> pieces;
};

/// The lines in which two versions of a text differ, each with its words marked. Long stretches of a line
/// that are the same are left out, but for a few words around each change.
std::vector<MarkedLine> MarkChanges(std::string_view from, std::string_view to);

} // namespace zem::merge
