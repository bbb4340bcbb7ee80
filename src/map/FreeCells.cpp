#include "map/FreeCells.h"

#include <limits>

namespace zem::map {

Cell FreeCells::Nearest(Cell cell) {
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    Cell found = cell;
    const auto look = [&](Cell way) {
        const std::int64_t distance = std::int64_t{way.x} * way.x + std::int64_t{way.y} * way.y;
        if (distance < best && grid_.RoomAt(cell + way) == NoRoom) {
            best = distance;
            found = cell + way;
        }
    };
    int& full = full_[cell];
    // A ring of king's moves holds nothing nearer than its radius.
    for (int radius = full; std::int64_t{radius} * radius < best; ++radius) {
        for (int x = -radius; x <= radius; ++x) {
            look({x, -radius});
            look({x, radius});
        }
        for (int y = 1 - radius; y < radius; ++y) {
            look({-radius, y});
            look({radius, y});
        }
        if (best == std::numeric_limits<std::int64_t>::max())
            full = radius;
    }
    return found;
}

} // namespace zem::map
