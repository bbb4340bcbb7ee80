#pragma once

#include "map/Rays.h"

namespace zem::map {

/// Puts each room into the free cell nearest to its point; pinned rooms stand where their pins say, the
/// second of two on one cell in the nearest free one.
std::vector<Cell> Rounded(const Group& group, const std::vector<Point>& points);

} // namespace zem::map
