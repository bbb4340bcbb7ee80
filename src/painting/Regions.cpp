#include "painting/Regions.h"

#include "painting/Sets.h"

#include <algorithm>
#include <map>

namespace zem {

namespace {

constexpr int LongestInside = 2; // cells of a line within a region
constexpr int Smallest = 4;      // rooms of a region

} // namespace

MapRegions FindRegions(const routing::RoutedMap& map) {
    const std::size_t count = map.rooms.size();
    Sets sets(count);
    std::vector<int> lines(count, 0);
    for (const routing::MapLine& line : map.lines) {
        if (line.to.room == zem::map::NoRoom)
            continue;
        ++lines[static_cast<std::size_t>(line.from.room)];
        ++lines[static_cast<std::size_t>(line.to.room)];
        const routing::RoomBox& from = map.rooms[static_cast<std::size_t>(line.from.room)];
        const routing::RoomBox& to = map.rooms[static_cast<std::size_t>(line.to.room)];
        const bool isClose = zem::map::Length(to.cell - from.cell) <= LongestInside;
        if (isClose && (line.shape == routing::LineShape::Straight || from.docked || to.docked))
            sets.Join(line.from.room, line.to.room);
    }
    std::map<int, std::vector<int>> groups;
    for (std::size_t room = 0; room < count; ++room)
        groups[sets.Find(static_cast<int>(room))].push_back(static_cast<int>(room));
    MapRegions found;
    found.regionOf.assign(count, -1);
    for (const auto& [root, rooms] : groups) {
        if (static_cast<int>(rooms.size()) < Smallest)
            continue;
        MapRegions::Region region;
        const int central = *std::max_element(rooms.begin(), rooms.end(), [&](int a, int b) {
            return lines[static_cast<std::size_t>(a)] < lines[static_cast<std::size_t>(b)];
        });
        region.name = map.graph.names[static_cast<std::size_t>(central)];
        region.size = static_cast<int>(rooms.size());
        for (const int room : rooms) {
            found.regionOf[static_cast<std::size_t>(room)] = static_cast<int>(found.regions.size());
            region.middle = region.middle + map.rooms[static_cast<std::size_t>(room)].Middle();
        }
        region.middle = 1.0 / region.size * region.middle;
        found.regions.push_back(region);
    }
    if (found.regions.size() < 2)
        return {std::vector<int>(count, -1), {}};
    return found;
}

} // namespace zem
