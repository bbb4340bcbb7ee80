#include "map/Rounding.h"

#include "map/FreeCells.h"

#include <algorithm>
#include <cmath>

namespace zem::map {

namespace {

/// Keeps a map of contradictions within what cells can count.
constexpr double Farthest = 100000;

int Whole(double value) {
    return static_cast<int>(std::floor(std::clamp(value, -Farthest, Farthest) + 0.5));
}

} // namespace

std::vector<Cell> Rounded(const Group& group, const std::vector<Point>& points) {
    std::vector<Cell> cells(group.Size());
    Grid taken;
    FreeCells free(taken);
    const auto place = [&](int room, Cell wanted) {
        cells[room] = free.Nearest(wanted);
        taken.At(cells[room]).room = room;
    };
    for (int room = 0; room < group.Size(); ++room)
        if (group.pins[room])
            place(room, *group.pins[room]);
    for (int room = 0; room < group.Size(); ++room)
        if (!group.pins[room])
            place(room, {Whole(points[room].x), Whole(points[room].y)});
    return cells;
}

} // namespace zem::map
