#pragma once

#include <cstddef>
#include <numeric>
#include <vector>

namespace zem {

/// Numbers from 0 in sets that are joined.
class Sets {
public:
    explicit Sets(std::size_t size) : parent_(size) { std::iota(parent_.begin(), parent_.end(), 0); }

    /// A number that stands for the whole set.
    int Find(int entry) {
        while (parent_[static_cast<std::size_t>(entry)] != entry) {
            int& parent = parent_[static_cast<std::size_t>(entry)];
            parent = parent_[static_cast<std::size_t>(parent)];
            entry = parent;
        }
        return entry;
    }
    void Join(int a, int b) { parent_[static_cast<std::size_t>(Find(a))] = Find(b); }

private:
    std::vector<int> parent_;
};

} // namespace zem
