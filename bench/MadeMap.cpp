#include "MadeMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <set>
#include <tuple>
#include <utility>

namespace zem::bench {

namespace {

using map::Cell;
using map::Direction;

constexpr const char* Words[] = {"north", "northeast", "east", "southeast",
                                 "south", "southwest", "west", "northwest"};

/// What a region is like.
struct Kind {
    const char* name;
    int chance;
    double diagonals;
    std::array<int, 3> lengths; // chances of exits of 1, 2, and 3 or 4 cells
    double newest;              // chance to go on from the newest room
    double loops;
    int least, most; // rooms
};

constexpr Kind Kinds[] = {
    {"corridor", 3, 0.05, {80, 15, 5}, 0.75, 0.10, 6, 25},
    {"house", 3, 0.03, {95, 5, 0}, 0.25, 0.45, 4, 16},
    {"town", 2, 0.05, {75, 20, 5}, 0.20, 0.75, 15, 50},
    {"cave", 3, 0.35, {60, 25, 15}, 0.60, 0.15, 10, 50},
    {"wild", 2, 0.40, {70, 20, 10}, 0.20, 0.50, 10, 40},
    {"tower", 2, 0.00, {100, 0, 0}, 0.20, 0.30, 1, 4},
};

/// The same numbers everywhere: the distributions of the library differ from one to the next.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}
    int Below(int count) { return static_cast<int>(engine_() % static_cast<std::uint32_t>(count)); }
    int Between(int low, int high) { return low + Below(high - low + 1); }
    bool Chance(double chance) { return static_cast<double>(engine_()) < chance * 4294967296.0; }
    template <class T>
    const T& One(const std::vector<T>& of) {
        return of[Below(static_cast<int>(of.size()))];
    }

private:
    std::mt19937 engine_;
};

struct MadeRoom {
    int block;
    Cell cell;
    std::string region;
    std::map<Direction, int> exits;
    std::map<Direction, int> scripted;
    int out = -1;
    bool unknown = false;
    std::vector<int> places;
};

struct Box {
    int left, top, right, bottom;
    bool Holds(Cell c) const { return left <= c.x && c.x < right && top <= c.y && c.y < bottom; }
};

class Maker {
public:
    explicit Maker(const MadeMapKind& kind) : kind_(kind), dice_(kind.seed * 2654435761U + 12345U) {}

    MadeMap Make() {
        const int docked = static_cast<int>(std::lround(kind_.rooms * kind_.joinedByPlaces / 100));
        MakeRegions(kind_.rooms - docked);
        ThinOut();
        MakeUntrue();
        MakeOutsAndUnknown();
        Dock(docked);
        return Write();
    }

private:
    using SpotKey = std::tuple<int, int, int>;

    int RoomAt(int block, Cell cell) const {
        const auto found = roomAt_.find({block, cell.x, cell.y});
        return found == roomAt_.end() ? -1 : found->second;
    }

    /// True when a line of the length runs over no room and no line; in half cells, where diagonals may
    /// cross.
    bool IsClear(int block, Cell from, Direction direction, int length) const {
        for (int k = 1; k < 2 * length; ++k) {
            const Cell point = 2 * from + k * map::Step(direction);
            if (lines_.count({block, point.x, point.y}) > 0)
                return false;
            if (k % 2 == 0 && RoomAt(block, from + k / 2 * map::Step(direction)) >= 0)
                return false;
        }
        return true;
    }

    int AddRoom(int block, Cell cell, const std::string& region) {
        const int room = static_cast<int>(rooms_.size());
        rooms_.push_back({block, cell, region, {}, {}, -1, false, {}});
        roomAt_[{block, cell.x, cell.y}] = room;
        return room;
    }

    void Link(int from, int to, Direction direction, int length) {
        for (int k = 1; k < 2 * length; ++k) {
            const Cell point = 2 * rooms_[from].cell + k * map::Step(direction);
            lines_.insert({rooms_[from].block, point.x, point.y});
        }
        rooms_[from].exits[direction] = to;
        rooms_[to].exits[map::Opposite(direction)] = from;
    }

    int PickLength(const Kind& kind) {
        const int pick = dice_.Below(kind.lengths[0] + kind.lengths[1] + kind.lengths[2]);
        if (pick < kind.lengths[0])
            return 1;
        return pick < kind.lengths[0] + kind.lengths[1] ? 2 : dice_.Between(3, 4);
    }

    std::vector<int> MakeRegion(int block, Cell origin, const Kind& kind, int count, const std::string& name,
                                const Box& box) {
        std::vector<int> mine = {AddRoom(block, origin, name)};
        for (int tries = 0; static_cast<int>(mine.size()) < count && tries < 60 * count; ++tries) {
            const int from = dice_.Chance(kind.newest) ? mine.back() : dice_.One(mine);
            const Direction direction = 2 * dice_.Below(4) + (dice_.Chance(kind.diagonals) ? 1 : 0);
            const int length = PickLength(kind);
            const Cell cell = rooms_[from].cell + length * map::Step(direction);
            if (rooms_[from].exits.count(direction) > 0 || !box.Holds(cell) || RoomAt(block, cell) >= 0 ||
                lines_.count({block, 2 * cell.x, 2 * cell.y}) > 0 ||
                !IsClear(block, rooms_[from].cell, direction, length))
                continue;
            mine.push_back(AddRoom(block, cell, name));
            Link(from, mine.back(), direction, length);
        }
        for (const int room : mine)
            for (Direction direction = 0; direction < map::DirectionCount; ++direction)
                MakeLoop(block, room, direction, kind);
        return mine;
    }

    void MakeLoop(int block, int room, Direction direction, const Kind& kind) {
        const double damp = map::IsDiagonal(direction) && kind.diagonals < 0.2 ? 0.4 : 1;
        if (rooms_[room].exits.count(direction) > 0 || !dice_.Chance(kind.loops * damp))
            return;
        for (int length = 1; length < 5; ++length) {
            const int to = RoomAt(block, rooms_[room].cell + length * map::Step(direction));
            if (to < 0)
                continue;
            if (rooms_[to].exits.count(map::Opposite(direction)) == 0 &&
                IsClear(block, rooms_[room].cell, direction, length))
                Link(room, to, direction, length);
            return;
        }
    }

    const Kind& PickKind() {
        int pick = dice_.Below(15);
        for (const Kind& kind : Kinds)
            if ((pick -= kind.chance) < 0)
                return kind;
        return Kinds[0];
    }

    static std::vector<Cell> Spiral() {
        std::vector<Cell> cells;
        for (int x = -40; x <= 40; ++x)
            for (int y = -40; y <= 40; ++y)
                cells.push_back({x, y});
        std::sort(cells.begin(), cells.end(), [](Cell a, Cell b) {
            const auto key = [](Cell c) { return std::tuple(c.x * c.x + c.y * c.y, c.x, c.y); };
            return key(a) < key(b);
        });
        return cells;
    }

    void JoinByPlaces(const std::vector<int>& mine) {
        const int a = dice_.One(dice_.One(regions_));
        const int b = dice_.One(mine);
        rooms_[a].places.push_back(b);
        rooms_[b].places.push_back(a);
    }

    void MakeRegions(int count) {
        const int side = count > 60 ? 16 : 12;
        const std::vector<Cell> cells = Spiral();
        std::map<Cell, std::vector<int>> regionAt;
        std::size_t next = 0;
        int block = 1000;
        while (static_cast<int>(rooms_.size()) < count) {
            const Kind& kind = PickKind();
            const int size =
                std::min(dice_.Between(kind.least, kind.most), count - static_cast<int>(rooms_.size()));
            const std::string name = kind.name + std::to_string(regions_.size());
            if (!regions_.empty() && (kind.name == std::string("tower") || dice_.Chance(0.18))) {
                const std::vector<int> mine =
                    MakeRegion(++block, {0, 0}, kind, size, name, {-side, -side, side, side});
                JoinByPlaces(mine);
                regions_.push_back(mine);
                continue;
            }
            const Cell at = cells[next++];
            const Cell corner = {at.x * side, at.y * side};
            const Cell origin =
                corner + Cell{side / 2 + dice_.Between(-2, 2), side / 2 + dice_.Between(-2, 2)};
            const std::vector<int> mine =
                MakeRegion(0, origin, kind, size, name,
                           {corner.x + 1, corner.y + 1, corner.x + side - 1, corner.y + side - 1});
            regionAt[at] = mine;
            if (!MakeRoads(at, mine, regionAt, side) && !regions_.empty())
                JoinByPlaces(mine);
            regions_.push_back(mine);
        }
    }

    bool MakeRoads(Cell at, const std::vector<int>& mine, const std::map<Cell, std::vector<int>>& regionAt,
                   int side) {
        bool linked = false;
        std::vector<Direction> directions = {0, 2, 4, 6};
        for (int k = 3; k > 0; --k)
            std::swap(directions[k], directions[dice_.Below(k + 1)]);
        for (const Direction direction : directions) {
            const auto other = regionAt.find(at + map::Step(direction));
            if (other == regionAt.end())
                continue;
            const std::set<int> there(other->second.begin(), other->second.end());
            std::vector<std::tuple<int, int, int>> options;
            for (const int room : mine)
                for (int length = 1; length < 2 * side; ++length) {
                    const int to = RoomAt(0, rooms_[room].cell + length * map::Step(direction));
                    if (to < 0)
                        continue;
                    if (there.count(to) > 0 && CanLink(room, to, direction, length))
                        options.emplace_back(length, room, to);
                    break;
                }
            std::sort(options.begin(), options.end());
            const int wanted = dice_.Below(3) == 0 ? 2 : 1;
            for (int k = 0; k < wanted && k < static_cast<int>(options.size()); ++k) {
                const auto [length, room, to] = options[k];
                if (!CanLink(room, to, direction, length))
                    continue;
                Link(room, to, direction, length);
                linked = true;
            }
        }
        return linked;
    }

    bool CanLink(int from, int to, Direction direction, int length) const {
        return rooms_[from].exits.count(direction) == 0 &&
               rooms_[to].exits.count(map::Opposite(direction)) == 0 &&
               IsClear(0, rooms_[from].cell, direction, length);
    }

    /// Some passages are one-way and some locked, and all of them are still true.
    void ThinOut() {
        for (int room = 0; room < static_cast<int>(rooms_.size()); ++room)
            for (const auto& [direction, to] : std::map<Direction, int>(rooms_[room].exits)) {
                if (room >= to)
                    continue;
                const int dice = dice_.Below(100);
                const Direction back = map::Opposite(direction);
                if (dice < 6)
                    rooms_[to].exits.erase(back);
                if (dice >= 4 && dice < 6)
                    rooms_[to].scripted[back] = room;
            }
    }

    std::vector<Direction> FreeDirections(const MadeRoom& room) const {
        std::vector<Direction> free;
        for (Direction direction = 0; direction < map::DirectionCount; ++direction)
            if (room.exits.count(direction) == 0 && room.scripted.count(direction) == 0)
                free.push_back(direction);
        return free;
    }

    void MakeUntrue() {
        int total = 0;
        for (const MadeRoom& room : rooms_)
            total += static_cast<int>(room.exits.size());
        std::vector<int> regionOf(rooms_.size());
        for (std::size_t k = 0; k < regions_.size(); ++k)
            for (const int room : regions_[k])
                regionOf[room] = static_cast<int>(k);
        const int goal = static_cast<int>(std::lround(total * kind_.untrue / 100));
        int made = 0;
        for (int guard = 0; made < goal && guard < 100 * goal; ++guard) {
            const int kind = dice_.Below(100);
            const int room = dice_.Below(static_cast<int>(rooms_.size()));
            const std::vector<Direction> free = FreeDirections(rooms_[room]);
            if (kind < 55) {
                made += MakeBend(room) ? 1 : 0;
                continue;
            }
            if (free.empty())
                continue;
            const int to = kind < 80   ? dice_.One(regions_[regionOf[room]])
                           : kind < 90 ? dice_.Below(static_cast<int>(rooms_.size()))
                                       : room;
            if (kind < 90 && to == room)
                continue;
            rooms_[room].exits[dice_.One(free)] = to;
            made += to == room ? 0 : 1;
        }
    }

    /// The way back is another direction than the opposite.
    bool MakeBend(int room) {
        std::vector<Direction> both;
        for (const auto& [direction, to] : rooms_[room].exits) {
            const auto back = rooms_[to].exits.find(map::Opposite(direction));
            if (to != room && back != rooms_[to].exits.end() && back->second == room)
                both.push_back(direction);
        }
        if (both.empty())
            return false;
        const Direction direction = dice_.One(both);
        const int to = rooms_[room].exits[direction];
        constexpr int Turns[] = {-2, -2, 2, 2, -1, 1, 3, -3};
        const Direction back = (map::Opposite(direction) + Turns[dice_.Below(8)] + 8) % 8;
        if (rooms_[to].exits.count(back) > 0 || rooms_[to].scripted.count(back) > 0)
            return false;
        rooms_[to].exits.erase(map::Opposite(direction));
        rooms_[to].exits[back] = room;
        return true;
    }

    void MakeOutsAndUnknown() {
        for (MadeRoom& room : rooms_) {
            const int dice = dice_.Below(100);
            if (dice < 10 && !room.exits.empty())
                room.out =
                    std::next(room.exits.begin(), dice_.Below(static_cast<int>(room.exits.size())))->second;
            else if (dice >= 10 && dice < 12)
                room.unknown = true;
        }
    }

    /// Rooms that a place leads to and "out" leaves, up to twelve at one host.
    void Dock(int count) {
        const int hosts = static_cast<int>(rooms_.size());
        for (int made = 0; made < count;) {
            const int host = dice_.Below(hosts);
            const int atOnce =
                std::min(count - made, dice_.Chance(0.05) ? dice_.Between(6, 12) : dice_.Between(1, 2));
            for (int k = 0; k < atOnce; ++k, ++made) {
                const int room = static_cast<int>(rooms_.size());
                rooms_.push_back({-1 - host, {0, 0}, "nook", {}, {}, host, false, {}});
                rooms_[host].places.push_back(room);
            }
        }
    }

    std::string Name(int room) const { return rooms_[room].region + " room " + std::to_string(room); }

    MadeMap Write() const {
        MadeMap made;
        made.file =
            "define game <Made map>\r\nkel-version <217>\r\nstart <" + Name(0) + ">\r\nend define\r\n\r\n";
        for (int k = 0; k < static_cast<int>(rooms_.size()); ++k) {
            const MadeRoom& room = rooms_[k];
            made.truth.push_back({room.block, room.cell});
            made.file += "define room <" + Name(k) + ">\r\nlook <A room.>\r\n";
            if (room.out >= 0)
                made.file += "out <" + Name(room.out) + ">\r\n";
            bool unknown = room.unknown;
            for (Direction direction = 0; direction < map::DirectionCount; ++direction) {
                const auto exit = room.exits.find(direction);
                const auto scripted = room.scripted.find(direction);
                if (exit != room.exits.end())
                    made.file += std::string(Words[direction]) + " <" + Name(exit->second) + ">\r\n";
                else if (scripted != room.scripted.end())
                    made.file += std::string(Words[direction]) + " if has <key> then goto <" +
                                 Name(scripted->second) + "> else msg <Locked.>\r\n";
                else if (std::exchange(unknown, false))
                    made.file += std::string(Words[direction]) + " <Nowhere yet>\r\n";
            }
            for (const int place : room.places)
                made.file += "place <the; " + Name(place) + ">\r\n";
            made.file += "end define\r\n\r\n";
        }
        return made;
    }

    MadeMapKind kind_;
    Dice dice_;
    std::vector<MadeRoom> rooms_;
    std::map<SpotKey, int> roomAt_;
    std::set<SpotKey> lines_;
    std::vector<std::vector<int>> regions_;
};

} // namespace

MadeMap MakeMap(const MadeMapKind& kind) {
    return Maker(kind).Make();
}

} // namespace zem::bench
