#include "map/KnownRooms.h"

#include <string_view>
#include <unordered_map>

namespace zem::map {

std::vector<int> KnownRooms(const MapGraph& before, const MapGraph& graph) {
    std::unordered_map<std::string_view, std::vector<int>> byName;
    for (int room = before.RoomCount() - 1; room >= 0; --room)
        byName[before.names[room]].push_back(room);
    std::vector<int> known(graph.RoomCount(), NoRoom);
    std::vector<char> taken(before.RoomCount(), 0);
    for (int room = 0; room < graph.RoomCount(); ++room) {
        const auto named = byName.find(graph.names[room]);
        if (named == byName.end() || named->second.empty())
            continue;
        known[room] = named->second.back();
        named->second.pop_back();
        taken[known[room]] = 1;
    }
    for (int room = 0; room < graph.RoomCount() && room < before.RoomCount(); ++room)
        if (known[room] == NoRoom && !taken[room])
            known[room] = room;
    return known;
}

} // namespace zem::map
