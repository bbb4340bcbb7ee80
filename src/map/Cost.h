#pragma once

#include "map/Terms.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zem::map {

/// What is paid for a drawing; small numbers that are only compared with each other.
inline constexpr int CostOfCell = 2; // of the length of a line beyond its first cell
inline constexpr int CostOfSlightTurn =
    135;                                  // a term off its direction by at most 22.5 degrees, and its angle
inline constexpr int CostOfTurn = 165;    // one that is farther off, and a third of its angle
inline constexpr int CostOverRoom = 160;  // a straight line over a room
inline constexpr int CostOfCrossing = 75; // two straight lines that cross

inline constexpr int CostOfFarHost = 80; // a room that is not near its host, and 2 a cell

/// A room that no exit reaches stands within so many cells of its host, if it can.
inline constexpr int NearHost = 2;

/// What a term costs whose rooms are so far from each other, for a weight of 1.
constexpr int ReckonTermCost(Cell way, Direction direction) {
    const int length = Length(way);
    if (direction == Anywhere)
        return CostOfCell * (length - 1) + (length > NearHost ? CostOfFarHost : 0);
    if (length > 0 && way == length * Step(direction))
        return CostOfCell * (length - 1);
    const int degrees = Degrees(way, direction);
    const int turn = IsWithin(way, direction) ? CostOfSlightTurn + degrees : CostOfTurn + degrees / 3;
    return turn + CostOfCell * length;
}

/// Ways of so many cells and less are looked up.
inline constexpr int NearWay = 16;
using NearCosts = std::array<std::int16_t, (2 * NearWay) * (2 * NearWay) * DirectionCount>;
extern const NearCosts CostsOfNearWays;

constexpr std::size_t NearIndex(Cell way, Direction direction) {
    return static_cast<std::size_t>(((way.y + NearWay) * 2 * NearWay + way.x + NearWay) * DirectionCount +
                                    direction);
}

/// The same, looked up where the rooms are near each other, as nearly all are.
inline int TermCost(Cell way, Direction direction) {
    const auto isNear = [](int distance) { return static_cast<unsigned>(distance + NearWay) < 2 * NearWay; };
    if (direction == Anywhere || !isNear(way.x) || !isNear(way.y))
        return ReckonTermCost(way, direction);
    return CostsOfNearWays[NearIndex(way, direction)];
}

/// Whether the map shows the term as it is meant.
constexpr bool IsTrue(Cell way, Direction direction) {
    return direction == Anywhere ? Length(way) <= NearHost : IsExact(way, direction);
}

} // namespace zem::map
