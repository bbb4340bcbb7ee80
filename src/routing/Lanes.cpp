#include "routing/Lanes.h"

#include <algorithm>
#include <cstdlib>

namespace zem::routing {

namespace {

constexpr int LanesPerCell = 4;
constexpr double LaneX[LanesPerCell] = {0, 56, 64, 72};
constexpr double LaneY[LanesPerCell] = {0, 28, 40, 52};
constexpr int Margin = 3;            // cells around both rooms in which a way is looked for
constexpr int MostExpansions = 1600; // then there is no way
constexpr double Haste = 1.2;        // how much the way that is left counts, for a quick find
constexpr double DoorLane = 10;      // from the lower edge of a box to the lane below it

int CellOfLane(int lane) {
    return lane >= 0 ? lane / LanesPerCell : -((-lane + LanesPerCell - 1) / LanesPerCell);
}

int LaneInCell(int lane) {
    return lane - LanesPerCell * CellOfLane(lane);
}

int TurnBetween(int one, int other) {
    const int turn = std::abs(one - other);
    return std::min(turn, map::DirectionCount - turn);
}

} // namespace

Point Lanes::PointOf(Node node) {
    return {CellOfLane(node.x) * CellWidth + LaneX[LaneInCell(node.x)],
            CellOfLane(node.y) * CellHeight + LaneY[LaneInCell(node.y)]};
}

/// The crossing of lanes that is nearest to the port.
Lanes::Node Lanes::NodeAt(int room, Port port) const {
    const map::Cell cell = boxes_[room].cell;
    const map::Cell step = map::Step(port);
    return {LanesPerCell * cell.x + step.x, LanesPerCell * cell.y + step.y};
}

void Lanes::SetWindow(int room, int other) {
    const map::Cell a = boxes_[room].cell;
    const map::Cell b = boxes_[other].cell;
    first_ = {LanesPerCell * (std::min(a.x, b.x) - Margin), LanesPerCell * (std::min(a.y, b.y) - Margin)};
    width_ = LanesPerCell * (std::abs(a.x - b.x) + 2 * Margin + 1);
    height_ = LanesPerCell * (std::abs(a.y - b.y) + 2 * Margin + 1);
    const auto size =
        static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) * map::DirectionCount;
    if (states_.size() < size)
        states_.resize(size, State{0, -1, 0, false});
    ++search_;
    open_.clear();
}

bool Lanes::IsInside(Node node) const {
    return node.x >= first_.x && node.y >= first_.y && node.x < first_.x + width_ &&
           node.y < first_.y + height_;
}

int Lanes::StateOf(Node node, int direction) const {
    return ((node.y - first_.y) * width_ + node.x - first_.x) * map::DirectionCount + direction;
}

Lanes::Node Lanes::NodeOf(int state) const {
    const int place = state / map::DirectionCount;
    return {first_.x + place % width_, first_.y + place / width_};
}

/// A box stands on the crossing of its row and its column, and on no other.
bool Lanes::IsBlocked(Node node) const {
    return LaneInCell(node.x) == 0 && LaneInCell(node.y) == 0 &&
           boxes_.RoomAt({CellOfLane(node.x), CellOfLane(node.y)}) != map::NoRoom;
}

void Lanes::Reach(Node node, int direction, double cost, int before) {
    if (!IsInside(node) || IsBlocked(node))
        return;
    const int state = StateOf(node, direction);
    State& known = states_[static_cast<std::size_t>(state)];
    if (known.stamp == search_ && known.cost <= cost)
        return;
    known = {cost, before, search_, false};
    open_.push_back({cost + Haste * Distance(PointOf(node), PointOf(goal_)), state});
    std::push_heap(open_.begin(), open_.end());
}

void Lanes::Expand(int state, double cost) {
    const Node node = NodeOf(state);
    const int direction = state % map::DirectionCount;
    const bool onMiddle = LaneInCell(node.x) % 2 == 0 && LaneInCell(node.x) == LaneInCell(node.y);
    for (int turn = -2; turn <= 2; ++turn) {
        const int next = (direction + turn + map::DirectionCount) % map::DirectionCount;
        const map::Cell step = map::Step(next);
        // Slanting lanes run from the middle of a cell to those of its corners, and from there to ports.
        const int longest = map::IsDiagonal(next) && onMiddle ? 2 : 1;
        for (int length = 1; length <= longest; ++length) {
            const Node to{node.x + length * step.x, node.y + length * step.y};
            const int laneX = LaneInCell(to.x);
            const int laneY = LaneInCell(to.y);
            if (map::IsDiagonal(next)) {
                const bool corner = laneX == 2 && laneY == 2;
                const bool fromCorner = LaneInCell(node.x) == 2 && LaneInCell(node.y) == 2;
                const bool allowed = length == 1 ? (corner || fromCorner) && laneX % 2 == laneY % 2
                                                 : (laneX == laneY && laneX % 2 == 0);
                if (!allowed)
                    continue;
            }
            const Segment segment{PointOf(node), PointOf(to)};
            const double more =
                Distance(segment.a, segment.b) + std::abs(turn) * TurnCost / 2 + lines_.CostOf(segment);
            Reach(to, next, cost + more, state);
        }
    }
}

std::vector<Point> Lanes::Trace(int state, const LineEnd& from, const LineEnd& to) const {
    std::vector<Point> points{PortPoint(boxes_[to.room], to.port)};
    for (; state >= 0; state = states_[static_cast<std::size_t>(state)].before)
        points.push_back(PointOf(NodeOf(state)));
    const Point port = PortPoint(boxes_[from.room], from.port);
    if (from.port == DoorPort)
        points.push_back({port.x, boxes_[from.room].Middle().y + BoxHeight / 2 + DoorLane});
    points.push_back(port);
    std::reverse(points.begin(), points.end());
    return points;
}

std::vector<Point> Lanes::Find(const LineEnd& from, const LineEnd& to) {
    SetWindow(from.room, to.room);
    goal_ = NodeAt(to.room, to.port);
    goalDirection_ = map::Opposite(to.port);
    if (from.port == DoorPort) {
        Reach(NodeAt(from.room, 3), 2, TurnCost, -1); // to the right of the door
        Reach(NodeAt(from.room, 4), 6, TurnCost, -1); // and to its left
    } else
        Reach(NodeAt(from.room, from.port), from.port, 0, -1);
    for (int expansions = 0; expansions < MostExpansions && !open_.empty();) {
        std::pop_heap(open_.begin(), open_.end());
        const int state = open_.back().state;
        open_.pop_back();
        State& known = states_[static_cast<std::size_t>(state)];
        if (known.closed)
            continue;
        known.closed = true;
        const Node node = NodeOf(state);
        if (node.x == goal_.x && node.y == goal_.y &&
            TurnBetween(state % map::DirectionCount, goalDirection_) <= 2)
            return Trace(state, from, to);
        ++expansions;
        Expand(state, known.cost);
    }
    return {};
}

} // namespace zem::routing
