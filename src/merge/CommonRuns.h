#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace zem::merge {

/// Pieces that two lists have in common: `count` of them from `a` on in one and from `b` on in the other.
struct CommonRun {
    std::size_t a = 0;
    std::size_t b = 0;
    std::size_t count = 0;

    bool operator==(const CommonRun&) const = default;
};

/// The longest runs in order that both lists share, the numbers of internal procedures aside. Lists that have
/// little in common are compared at their ends only, so that the time stays bounded.
std::vector<CommonRun> CommonRuns(const std::vector<std::string_view>& a,
                                  const std::vector<std::string_view>& b);

/// The lines of a text, which CR LF separates; none of an empty text.
std::vector<std::string_view> LinesOf(std::string_view text);

/// The words of a text, and what stands between them.
std::vector<std::string_view> WordsOf(std::string_view text);

} // namespace zem::merge
