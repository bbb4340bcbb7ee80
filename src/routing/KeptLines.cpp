#include "routing/KeptLines.h"

#include "map/KnownRooms.h"

#include <map>
#include <set>
#include <tuple>

namespace zem::routing {

namespace {

bool StandAlike(const RoomBox& one, const RoomBox& other) {
    return one.cell == other.cell && one.docked == other.docked;
}

using KeptLineKey = std::tuple<LineKind, int, Port, int, Port, bool>;

KeptLineKey KeyOfLine(const MapLine& line, int from, int to) {
    return {line.kind, from, line.from.port, to, line.to.port, line.oneWay};
}

} // namespace

std::vector<int> KeptLines(const RoutedMap& before, const RoutedMap& map) {
    std::map<KeptLineKey, int> old;
    for (std::size_t line = 0; line < before.lines.size(); ++line)
        old.emplace(KeyOfLine(before.lines[line], before.lines[line].from.room, before.lines[line].to.room),
                    static_cast<int>(line));
    const std::vector<int> known = map::KnownRooms(before.graph, map.graph);
    constexpr int Gone = -2;
    const auto oldRoom = [&](int room) {
        if (room == map::NoRoom)
            return room;
        const int then = known[static_cast<std::size_t>(room)];
        const bool stands = then != map::NoRoom && StandAlike(before.rooms[static_cast<std::size_t>(then)],
                                                              map.rooms[static_cast<std::size_t>(room)]);
        return stands ? then : Gone;
    };
    std::vector<int> kept;
    for (const MapLine& line : map.lines) {
        const auto found = old.find(KeyOfLine(line, oldRoom(line.from.room), oldRoom(line.to.room)));
        kept.push_back(found == old.end() ? -1 : found->second);
    }
    return kept;
}

std::vector<int> NewBoxes(const RoutedMap& before, const RoutedMap& map) {
    std::set<std::tuple<map::Cell, bool>> old;
    for (const RoomBox& box : before.rooms)
        old.emplace(box.cell, box.docked);
    std::vector<int> rooms;
    for (std::size_t room = 0; room < map.rooms.size(); ++room)
        if (!old.contains({map.rooms[room].cell, map.rooms[room].docked}))
            rooms.push_back(static_cast<int>(room));
    return rooms;
}

} // namespace zem::routing
