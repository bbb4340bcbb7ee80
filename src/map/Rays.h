#pragma once

#include "map/Effort.h"
#include "map/Terms.h"

#include <vector>

namespace zem::map {

/// A point of the plane, in cells.
struct Point {
    double x = 0;
    double y = 0;
};

/// Finds places at which as many terms as possible are nearly true, rooms free to overlap: each term pulls
/// its rooms onto a ray in its direction, and a term that stays far from its ray loses its say round by
/// round. A very large group gets fewer rounds. The sums have a fixed order, so that the result is the same
/// on every machine. Stops when the effort is over.
std::vector<Point> RobustRays(const Group& group, Effort& effort);

} // namespace zem::map
