#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zem::walk {

/// Counts how often something was tried, up to 255. It takes the same few bytes however much is tried: what
/// falls on the same byte is counted together, which costs a walk a little sense and nothing else.
class TriedTable {
public:
    TriedTable() : counts_(Size) {}

    std::uint8_t Count(std::uint64_t what) const { return counts_[what % Size]; }
    void Add(std::uint64_t what) {
        std::uint8_t& count = counts_[what % Size];
        count = static_cast<std::uint8_t>(std::min(count + 1, 255));
    }

private:
    static constexpr std::size_t Size = std::size_t{1} << 24U;

    std::vector<std::uint8_t> counts_;
};

} // namespace zem::walk
