#include "painting/Islands.h"

#include "painting/Sets.h"

#include <algorithm>
#include <unordered_map>

namespace zem {

namespace {

using zem::map::Cell;

/// The island on which each cell lies that a room or a straight line takes.
class IslandCells {
public:
    void Take(Cell cell, int island) { islands_.try_emplace(KeyOf(cell), cell, island); }

    QVector<QLineF> Outlines() const {
        QVector<QLineF> lines;
        for (const auto& [key, place] : islands_)
            for (map::Direction side = 0; side < map::DirectionCount; side += 2)
                if (IslandAt(place.first + map::Step(side)) != place.second)
                    lines.append(EdgeOf(place.first, map::Step(side)));
        return lines;
    }

private:
    static std::uint64_t KeyOf(Cell cell) {
        return std::uint64_t{static_cast<std::uint32_t>(cell.x)} << 32U | static_cast<std::uint32_t>(cell.y);
    }

    int IslandAt(Cell cell) const {
        const auto found = islands_.find(KeyOf(cell));
        return found == islands_.end() ? -1 : found->second.second;
    }

    static QLineF EdgeOf(Cell cell, Cell side) {
        const QPointF middle(cell.x * routing::CellWidth, cell.y * routing::CellHeight);
        const double halfWidth = routing::CellWidth / 2;
        const double halfHeight = routing::CellHeight / 2;
        const QPointF out(side.x * halfWidth, side.y * halfHeight);
        const QPointF along = side.x == 0 ? QPointF(halfWidth, 0) : QPointF(0, halfHeight);
        return {middle + out - along, middle + out + along};
    }

    std::unordered_map<std::uint64_t, std::pair<Cell, int>> islands_;
};

Sets SetsOf(const routing::RoutedMap& map) {
    Sets sets(map.rooms.size());
    for (const map::Exit& exit : map.graph.exits)
        for (const int target : exit.targets)
            sets.Join(exit.from, target);
    for (const routing::MapLine& line : map.lines) {
        if (line.to.room == map::NoRoom)
            continue;
        const bool docks = map.rooms[static_cast<std::size_t>(line.from.room)].docked ||
                           map.rooms[static_cast<std::size_t>(line.to.room)].docked;
        if (!line.IsTie() || docks)
            sets.Join(line.from.room, line.to.room);
    }
    return sets;
}

} // namespace

QVector<QLineF> IslandOutlines(const routing::RoutedMap& map) {
    Sets sets = SetsOf(map);
    std::vector<int> sizes(map.rooms.size(), 0);
    for (std::size_t room = 0; room < map.rooms.size(); ++room)
        ++sizes[static_cast<std::size_t>(sets.Find(static_cast<int>(room)))];
    const auto largest = std::max_element(sizes.begin(), sizes.end()) - sizes.begin();
    IslandCells cells;
    const auto isIsland = [&](int island) {
        return island != largest && sizes[static_cast<std::size_t>(island)] > 1;
    };
    for (std::size_t room = 0; room < map.rooms.size(); ++room)
        if (const int island = sets.Find(static_cast<int>(room)); isIsland(island))
            cells.Take(map.rooms[room].cell, island);
    for (const routing::MapLine& line : map.lines) {
        if (line.shape != routing::LineShape::Straight || line.IsTie())
            continue;
        const Cell from = map.rooms[static_cast<std::size_t>(line.from.room)].cell;
        const Cell way = map.rooms[static_cast<std::size_t>(line.to.room)].cell - from;
        const int length = map::Length(way);
        if (const int island = sets.Find(line.from.room); isIsland(island))
            for (int step = 1; step < length; ++step)
                cells.Take(from + Cell{way.x / length * step, way.y / length * step}, island);
    }
    return cells.Outlines();
}

} // namespace zem
