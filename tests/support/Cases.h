#pragma once

#include <tuple>
#include <vector>

namespace zem::test {

/// The rows of a table that a test goes through: for (const auto& [input, outcome] : Cases<int, int>{...})
template <class... Columns>
using Cases = std::vector<std::tuple<Columns...>>;

} // namespace zem::test
