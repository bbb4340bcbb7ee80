#pragma once

#include "model/Fields.h"

#include <string>
#include <string_view>
#include <vector>

namespace zem::merge {

/// What becomes of a conflict.
enum class Take { Ours, Theirs, Both };

/// Lines that both versions changed in different ways.
struct LineConflict {
    std::string base;
    std::string ours;
    std::string theirs;
    int line = 0; // of the merged text where ours begins, from 1
};

struct MergedLines {
    std::string text;
    std::vector<LineConflict> conflicts;
};

/// Merges a text of several lines. Changes of different lines are both taken; where the same lines changed in
/// different ways, or both added other lines in the same spot, it is a conflict. Raw lines of different
/// keywords that were added in the same spot are both kept: they are a set.
/// @param kind     what stands in the text
/// @param choices  what becomes of the conflicts in their order; ours where there are fewer
MergedLines MergeLines(std::string_view base, std::string_view ours, std::string_view theirs, FieldKind kind,
                       const std::vector<Take>& choices = {});

} // namespace zem::merge
