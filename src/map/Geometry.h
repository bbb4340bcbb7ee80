#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Cells of the map and the eight directions of the compass.
namespace zem::map {

/// A cell of the map, or the way from one cell to another: x grows to the east, y to the south.
struct Cell {
    int x = 0;
    int y = 0;

    friend constexpr Cell operator+(Cell a, Cell b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr Cell operator-(Cell a, Cell b) { return {a.x - b.x, a.y - b.y}; }
    friend constexpr Cell operator-(Cell a) { return {-a.x, -a.y}; }
    friend constexpr Cell operator*(int k, Cell a) { return {k * a.x, k * a.y}; }
    friend constexpr bool operator==(Cell a, Cell b) = default;
    friend constexpr auto operator<=>(Cell a, Cell b) = default;
};

/// A direction of the compass, 0 to 7: north and on clockwise.
using Direction = int;
inline constexpr int DirectionCount = 8;

inline constexpr std::array<Cell, DirectionCount> Steps = {
    {{0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}}};

/// One cell in the direction.
constexpr Cell Step(Direction direction) {
    return Steps[static_cast<std::size_t>(direction)];
}

constexpr Direction Opposite(Direction direction) {
    return (direction + 4) % DirectionCount;
}

constexpr bool IsDiagonal(Direction direction) {
    return direction % 2 != 0;
}

/// The length of a way in king's moves: the larger of its two parts.
constexpr int Length(Cell way) {
    const int x = way.x < 0 ? -way.x : way.x;
    const int y = way.y < 0 ? -way.y : way.y;
    return x > y ? x : y;
}

/// True when the way runs exactly in the direction.
constexpr bool IsExact(Cell way, Direction direction) {
    const int length = Length(way);
    return length > 0 && way == length * Step(direction);
}

/// True when the way and the direction are at most 22.5 degrees apart.
constexpr bool IsWithin(Cell way, Direction direction) {
    const Cell step = Step(direction);
    const std::int64_t along = std::int64_t{way.x} * step.x + std::int64_t{way.y} * step.y;
    if (along <= 0)
        return false;
    std::int64_t across = std::int64_t{way.x} * step.y - std::int64_t{way.y} * step.x;
    across = across < 0 ? -across : across;
    return (across + along) * (across + along) <= 2 * along * along; // tan 22.5 degrees = sqrt 2 - 1
}

/// The angle between the way and the direction, 0 to 180 degrees, to about half a degree. Whole numbers
/// alone, so that it is the same on every machine. 180 for no way at all.
constexpr int Degrees(Cell way, Direction direction) {
    const Cell step = Step(direction);
    const std::int64_t along = std::int64_t{way.x} * step.x + std::int64_t{way.y} * step.y;
    std::int64_t across = std::int64_t{way.x} * step.y - std::int64_t{way.y} * step.x;
    across = across < 0 ? -across : across;
    const std::int64_t forward = along < 0 ? -along : along;
    if (along == 0 && across == 0)
        return 180;
    const std::int64_t small = across < forward ? across : forward;
    const std::int64_t large = across < forward ? forward : across;
    const std::int64_t r = small * 1024 / large;
    // The arc tangent of r, in degrees, is near 45 r + r (1 - r) (14.02 + 3.79 r).
    const std::int64_t bend = r * (1024 - r) / 1024 * (14356 + 3881 * r / 1024) / 1024;
    const auto octant = static_cast<int>((45 * r + bend + 512) / 1024);
    const int quadrant = across < forward ? octant : 90 - octant;
    return along < 0 ? 180 - quadrant : quadrant;
}

} // namespace zem::map
