#pragma once

#include "merge/DiffGames.h"

#include <string>
#include <string_view>

/// The differences of two versions of a game, told.
namespace zem {

/// What the two versions are called, in UTF-8.
struct DiffNames {
    std::string before;
    std::string after;
};

/// Where a record went to: "moved here from room Hall", "moved behind Attic".
std::string MovedWords(const merge::GameDiff& diff, const merge::Difference& difference);

/// One difference as an entry of a list of terms: "<dt>...</dt><dd>...</dd>", in UTF-8.
std::string DifferenceAsHtml(const merge::GameDiff& diff, const merge::Difference& difference);

/// "added", "removed", "changed", "moved", "reordered".
const char* WordFor(merge::DifferenceKind kind);

/// A page of its own, without scripts and links, in UTF-8.
std::string DiffAsHtml(const merge::GameDiff& diff, const DiffNames& names);

/// In UTF-8. The form is described in docs/json.md. Applied to the first version in that way, it gives the
/// second one.
std::string DiffAsJson(const merge::GameDiff& diff, const DiffNames& names);

} // namespace zem
