#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zem::merge {

/// The texts that were merged into one with marks.
struct MarkedVersions {
    std::string base; // empty when the marks do not tell it
    std::string ours;
    std::string theirs;
};

/// Takes a text apart in which git left conflicts: "<<<<<<<", ours, perhaps "|||||||" and what both began as,
/// "=======", theirs, ">>>>>>>". Nothing when it holds no such marks, or not all of one.
std::optional<MarkedVersions> TakeMarksApart(std::string_view text);

} // namespace zem::merge
