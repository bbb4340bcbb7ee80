#include "routing/Wishes.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <unordered_map>

namespace zem::routing {

namespace {

using map::DirectionCount;
using map::Exit;
using map::MapGraph;
using map::NoRoom;
using map::Opposite;

/// By how many eighths of a turn two ports look apart, 0 to 4.
int EighthsBetween(Port one, Port other) {
    const int turn = std::abs(one - other);
    return std::min(turn, DirectionCount - turn);
}

template <class Lists>
auto& Slot(Lists& lists, int room, Port port) {
    return lists[static_cast<std::size_t>(room)][static_cast<std::size_t>(port)];
}

class WishReader {
public:
    WishReader(const MapGraph& graph, const Boxes& boxes)
        : graph_(graph),
          boxes_(boxes),
          exitAt_(boxes.Rooms().size()),
          taken_(boxes.Rooms().size()),
          done_(graph.exits.size(), 0) {
        for (auto& exits : exitAt_)
            exits.fill(-1);
        for (std::size_t exit = 0; exit < graph.exits.size(); ++exit) {
            const Exit& read = graph.exits[exit];
            Slot(exitAt_, read.from, read.direction) = static_cast<int>(exit);
            Slot(taken_, read.from, read.direction) = true;
        }
    }

    std::vector<MapLine> Read() {
        for (int exit = 0; exit < ExitCount(); ++exit)
            ReadEnds(exit);
        for (int exit = 0; exit < ExitCount(); ++exit)
            PairWithOpposite(exit);
        PairTheBent();
        for (int exit = 0; exit < ExitCount(); ++exit)
            ReadOneWay(exit);
        ReadTies();
        for (MapLine& line : lines_)
            line.shape = WishedShape(line, boxes_);
        return std::move(lines_);
    }

private:
    int ExitCount() const { return static_cast<int>(graph_.exits.size()); }
    const Exit& ExitOf(int exit) const { return graph_.exits[static_cast<std::size_t>(exit)]; }
    bool LeadsOn(int exit) const { return ExitOf(exit).to != NoRoom && ExitOf(exit).to != ExitOf(exit).from; }

    LineEnd EndOf(int exit) const {
        return {ExitOf(exit).from, ExitOf(exit).direction, exit, ExitOf(exit).scripted};
    }

    /// Exits that end at their own room or nowhere.
    void ReadEnds(int exit) {
        const Exit& read = ExitOf(exit);
        if (LeadsOn(exit))
            return;
        done_[static_cast<std::size_t>(exit)] = 1;
        MapLine line;
        line.kind = read.to != NoRoom ? LineKind::Loop : read.scripted ? LineKind::Script : LineKind::Unknown;
        line.from = EndOf(exit);
        lines_.push_back(line);
        for (const int target : read.targets)
            if (read.scripted && read.to == NoRoom && target != read.from) {
                MapLine on;
                on.kind = LineKind::Goto;
                on.from = EndOf(exit);
                on.to = {target, FreePort(target, Opposite(read.direction)), -1, false};
                on.oneWay = true;
                lines_.push_back(on);
            }
    }

    void AddPair(int exit, int back) {
        done_[static_cast<std::size_t>(exit)] = done_[static_cast<std::size_t>(back)] = 1;
        MapLine line;
        line.from = EndOf(exit);
        line.to = EndOf(back);
        lines_.push_back(line);
    }

    bool IsOpen(int exit) const { return exit >= 0 && !done_[static_cast<std::size_t>(exit)]; }

    void PairWithOpposite(int exit) {
        if (!IsOpen(exit))
            return;
        const Exit& read = ExitOf(exit);
        const int back = Slot(exitAt_, read.to, Opposite(read.direction));
        if (back != exit && IsOpen(back) && ExitOf(back).to == read.from)
            AddPair(exit, back);
    }

    void PairTheBent() {
        for (int exit = 0; exit < ExitCount(); ++exit) {
            if (!IsOpen(exit))
                continue;
            for (const int back : exitAt_[static_cast<std::size_t>(ExitOf(exit).to)])
                if (IsOpen(back) && ExitOf(back).to == ExitOf(exit).from) {
                    AddPair(exit, back);
                    break;
                }
        }
    }

    void ReadOneWay(int exit) {
        if (!IsOpen(exit))
            return;
        const Exit& read = ExitOf(exit);
        MapLine line;
        line.from = EndOf(exit);
        line.to = {read.to, FreePort(read.to, Opposite(read.direction)), -1, false};
        line.oneWay = true;
        lines_.push_back(line);
    }

    /// The port that looks most like the wanted direction, of those at which nothing begins or ends.
    Port FreePort(int room, Port wanted) {
        Port best = wanted;
        int bestTurn = DirectionCount;
        for (Port port = 0; port < DirectionCount; ++port) {
            const int turn = EighthsBetween(port, wanted);
            if (turn < bestTurn && !Slot(taken_, room, port)) {
                best = port;
                bestTurn = turn;
            }
        }
        Slot(taken_, room, best) = true;
        return best;
    }

    /// The direction that is nearest to the way from one room to the other.
    map::Direction Towards(int room, int other) const {
        const map::Cell way = boxes_[other].cell - boxes_[room].cell;
        map::Direction best = 0;
        for (map::Direction direction = 1; direction < DirectionCount; ++direction)
            if (map::Degrees(way, direction) < map::Degrees(way, best))
                best = direction;
        return best;
    }

    bool HasExitTo(int from, int to) const {
        return std::any_of(exitAt_[static_cast<std::size_t>(from)].begin(),
                           exitAt_[static_cast<std::size_t>(from)].end(),
                           [&](int exit) { return exit >= 0 && ExitOf(exit).to == to; });
    }

    void ReadTies() {
        const auto key = [](int from, int to) {
            return std::uint64_t{static_cast<std::uint32_t>(from)} << 32 | static_cast<std::uint32_t>(to);
        };
        std::unordered_map<std::uint64_t, int> lineOf;
        for (int tie = 0; tie < static_cast<int>(graph_.ties.size()); ++tie) {
            const map::Tie& read = graph_.ties[static_cast<std::size_t>(tie)];
            if (read.out && HasExitTo(read.from, read.to))
                continue;
            if (lineOf.contains(key(read.from, read.to)))
                continue; // two places of one name, or a place where "out" leads
            if (const auto back = lineOf.find(key(read.to, read.from)); back != lineOf.end()) {
                MapLine& line = lines_[static_cast<std::size_t>(back->second)];
                line.to.exit = tie;
                line.oneWay = false;
                if (!read.out)
                    line.kind = LineKind::Place;
                continue;
            }
            MapLine line;
            line.kind = read.out ? LineKind::Out : LineKind::Place;
            line.from = {read.from, 0, tie, false};
            line.to = {read.to, 0, -1, false};
            line.oneWay = true;
            lineOf.emplace(key(read.from, read.to), static_cast<int>(lines_.size()));
            lines_.push_back(line);
        }
        for (MapLine& line : lines_)
            if (line.IsTie())
                TakePorts(line);
    }

    void TakePorts(MapLine& line) {
        line.from.port = line.kind == LineKind::Out
                             ? DoorPort
                             : FreePort(line.from.room, Towards(line.from.room, line.to.room));
        line.to.port = FreePort(line.to.room, Towards(line.to.room, line.from.room));
    }

    const MapGraph& graph_;
    const Boxes& boxes_;
    std::vector<std::array<int, DirectionCount>> exitAt_;
    std::vector<std::array<bool, DirectionCount>> taken_;
    std::vector<char> done_;
    std::vector<MapLine> lines_;
};

} // namespace

LineShape WishedShape(const MapLine& line, const Boxes& boxes) {
    if (line.to.room == NoRoom)
        return line.kind == LineKind::Loop ? LineShape::Curve : LineShape::Stub;
    const map::Cell way = boxes[line.to.room].cell - boxes[line.from.room].cell;
    if (map::Length(way) > LongestLine)
        return LineShape::Stub;
    if (line.from.port == DoorPort)
        return LineShape::Curve;
    const bool opposite = line.to.port == Opposite(line.from.port);
    if (opposite && map::IsExact(way, line.from.port))
        return LineShape::Straight;
    if (line.kind != LineKind::Exit || map::IsWithin(way, line.from.port))
        return LineShape::Curve;
    const bool bent = !line.oneWay && !opposite;
    return bent ? LineShape::Curve : LineShape::Stub;
}

std::vector<MapLine> WishesOf(const MapGraph& graph, const Boxes& boxes) {
    return WishReader(graph, boxes).Read();
}

std::vector<char> DockedRooms(const MapGraph& graph) {
    const auto rooms = static_cast<std::size_t>(graph.RoomCount());
    constexpr int Several = -2;
    std::vector<int> neighbour(rooms, NoRoom);
    const auto join = [&](int room, int other) {
        int& known = neighbour[static_cast<std::size_t>(room)];
        known = known == NoRoom || known == other ? other : Several;
    };
    for (const map::Tie& tie : graph.ties) {
        join(tie.from, tie.to);
        join(tie.to, tie.from);
    }
    for (const Exit& exit : graph.exits)
        if (exit.to != NoRoom) {
            neighbour[static_cast<std::size_t>(exit.from)] = Several;
            neighbour[static_cast<std::size_t>(exit.to)] = Several;
        }
    std::vector<char> docked(rooms, 0);
    for (std::size_t room = 0; room < rooms; ++room) {
        const int host = neighbour[room];
        // Of two rooms that have only each other none is the guest.
        docked[room] = host >= 0 && neighbour[static_cast<std::size_t>(host)] != static_cast<int>(room);
    }
    return docked;
}

} // namespace zem::routing
