#include "MapFigures.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace zem::bench {

namespace {

using map::Cell;

/// A connection between two rooms: one for an exit and its way back, drawn once.
struct Connection {
    int a, b;
    bool straight;
    Cell from, to;
};

std::int64_t Turn(Cell from, Cell to, Cell point) {
    return std::int64_t{to.x - from.x} * (point.y - from.y) -
           std::int64_t{to.y - from.y} * (point.x - from.x);
}

int Sign(std::int64_t value) {
    return (value > 0) - (value < 0);
}

bool Cross(const Connection& a, const Connection& b) {
    return Sign(Turn(a.from, a.to, b.from)) * Sign(Turn(a.from, a.to, b.to)) < 0 &&
           Sign(Turn(b.from, b.to, a.from)) * Sign(Turn(b.from, b.to, a.to)) < 0;
}

/// True when the point lies on the line, strictly between its ends.
bool IsOver(const Connection& line, Cell point) {
    return Turn(line.from, line.to, point) == 0 &&
           std::int64_t{point.x - line.from.x} * (point.x - line.to.x) +
                   std::int64_t{point.y - line.from.y} * (point.y - line.to.y) <
               0;
}

class Measurer {
public:
    Measurer(const map::MapGraph& graph, const std::vector<Cell>& cells, const std::vector<int>& blocks)
        : graph_(graph),
          cells_(cells),
          blocks_(blocks) {
        if (blocks_.empty())
            blocks_.assign(cells.size(), 0);
    }

    MapFigures Measure() {
        CollectConnections();
        CountConflicts();
        CountRooms();
        return figures_;
    }

private:
    void CollectConnections() {
        std::map<std::tuple<int, int, int>, int> known;
        int exact = 0;
        double lengths = 0;
        for (const map::Exit& exit : graph_.exits) {
            if (exit.scripted || exit.to == map::NoRoom || exit.to == exit.from ||
                blocks_[exit.from] != blocks_[exit.to])
                continue;
            const Cell way = cells_[exit.to] - cells_[exit.from];
            const bool straight = map::IsExact(way, exit.direction);
            ++figures_.exits;
            exact += straight;
            figures_.missed += !map::IsWithin(way, exit.direction);
            lengths += map::Length(way);
            figures_.maxLength = std::max(figures_.maxLength, map::Length(way));
            const bool back = exit.direction >= 4;
            const auto key = back ? std::tuple(exit.to, exit.from, exit.direction - 4)
                                  : std::tuple(exit.from, exit.to, exit.direction);
            if (known.emplace(key, 0).second)
                connections_.push_back({exit.from, exit.to, straight, cells_[exit.from], cells_[exit.to]});
        }
        const double count = std::max(1, figures_.exits);
        figures_.exact = 100.0 * exact / count;
        figures_.within = 100.0 * (figures_.exits - figures_.missed) / count;
        figures_.meanLength = lengths / count;
    }

    /// Calls for each pair of things that are near enough to touch, by the squares of a coarse net.
    void CountConflicts() {
        constexpr int Side = 8;
        std::map<std::tuple<int, int, int>, std::vector<int>> lines;
        const auto squares = [&](const Connection& c, auto visit) {
            const int left = std::min(c.from.x, c.to.x), right = std::max(c.from.x, c.to.x);
            const int top = std::min(c.from.y, c.to.y), bottom = std::max(c.from.y, c.to.y);
            for (int x = left >> 3; x <= right >> 3; ++x)
                for (int y = top >> 3; y <= bottom >> 3; ++y)
                    if (NearSquare(c, {x * Side + Side / 2, y * Side + Side / 2}, Side))
                        visit(std::tuple(blocks_[c.a], x, y));
        };
        for (int k = 0; k < static_cast<int>(connections_.size()); ++k)
            squares(connections_[k], [&](const auto& key) { lines[key].push_back(k); });
        for (int room = 0; room < graph_.RoomCount(); ++room) {
            const Cell cell = cells_[room];
            for (const int k : lines[{blocks_[room], cell.x >> 3, cell.y >> 3}])
                if (IsOver(connections_[k], cell)) {
                    ++figures_.allOver;
                    figures_.straightOver += connections_[k].straight;
                }
        }
        std::set<std::pair<int, int>> crossed;
        for (const auto& [key, near] : lines)
            for (std::size_t i = 0; i < near.size(); ++i)
                for (std::size_t k = i + 1; k < near.size(); ++k)
                    if (Cross(connections_[near[i]], connections_[near[k]]))
                        crossed.emplace(near[i], near[k]);
        for (const auto& [i, k] : crossed) {
            ++figures_.allCrossings;
            figures_.straightCrossings += connections_[i].straight && connections_[k].straight;
        }
    }

    static bool NearSquare(const Connection& c, Cell middle, int side) {
        const double length = std::max(1, map::Length(c.to - c.from));
        return std::abs(static_cast<double>(Turn(c.from, c.to, middle))) <= length * side * 1.5;
    }

    void CountRooms() {
        std::set<std::tuple<int, int, int>> taken;
        int left = 0, right = -1, top = 0, bottom = -1;
        for (int room = 0; room < graph_.RoomCount(); ++room) {
            const Cell cell = cells_[room];
            figures_.overlaps += !taken.emplace(blocks_[room], cell.x, cell.y).second;
            left = room == 0 ? cell.x : std::min(left, cell.x);
            right = room == 0 ? cell.x : std::max(right, cell.x);
            top = room == 0 ? cell.y : std::min(top, cell.y);
            bottom = room == 0 ? cell.y : std::max(bottom, cell.y);
        }
        figures_.cellsPerRoom = (right - left + 1.0) * (bottom - top + 1.0) / std::max(1, graph_.RoomCount());
        CountDocked();
    }

    void CountDocked() {
        std::vector<char> reached(graph_.RoomCount(), 0);
        for (const map::Exit& exit : graph_.exits)
            if (!exit.scripted && exit.to != map::NoRoom && exit.to != exit.from)
                reached[exit.from] = reached[exit.to] = 1;
        for (int room = 0; room < graph_.RoomCount(); ++room) {
            if (reached[room])
                continue;
            const int host = HostOf(room, reached);
            if (host == map::NoRoom)
                continue;
            ++figures_.docked;
            figures_.dockedNear += map::Length(cells_[room] - cells_[host]) <= 2;
        }
    }

    /// The room by its "out", else the first with a place that leads to it, else that of its own places.
    int HostOf(int room, const std::vector<char>& reached) const {
        for (const map::Tie& tie : graph_.ties)
            if (tie.out && tie.from == room && reached[tie.to])
                return tie.to;
        for (const map::Tie& tie : graph_.ties)
            if (tie.to == room && reached[tie.from])
                return tie.from;
        for (const map::Tie& tie : graph_.ties)
            if (tie.from == room && reached[tie.to])
                return tie.to;
        return map::NoRoom;
    }

    const map::MapGraph& graph_;
    const std::vector<Cell>& cells_;
    std::vector<int> blocks_;
    std::vector<Connection> connections_;
    MapFigures figures_;
};

} // namespace

MapFigures Measure(const map::MapGraph& graph, const std::vector<Cell>& cells,
                   const std::vector<int>& blocks) {
    return Measurer(graph, cells, blocks).Measure();
}

} // namespace zem::bench
