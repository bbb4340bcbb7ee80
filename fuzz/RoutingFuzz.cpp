// Any exits and ties between rooms in any cells: no line runs through a room, whether the map is drawn at
// once, after rooms were moved, or after the game was changed. The bytes are taken three at a time.
#include "MapOfBytes.h"
#include "routing/Router.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <vector>

namespace {

using zem::map::Cell;
using zem::map::MapGraph;
using zem::routing::RoutedMap;

/// Cells of a square in which about every second is taken.
std::vector<Cell> CellsOf(const MapGraph& graph, const std::uint8_t* data, std::size_t size) {
    std::vector<Cell> cells;
    std::set<Cell> taken;
    for (std::size_t room = 0; room < graph.names.size(); ++room) {
        const std::uint8_t byte = data[room % size];
        Cell cell{byte % 11, byte / 11 % 11};
        while (!taken.insert(cell).second)
            cell = cell.x < 11 ? Cell{cell.x + 1, cell.y} : Cell{0, cell.y + 1};
        cells.push_back(cell);
    }
    return cells;
}

void CheckLines(const RoutedMap& map) {
    for (const zem::routing::MapLine& line : map.lines) {
        if (line.path.IsEmpty())
            std::abort();
        for (const zem::routing::Path* path : {&line.path, &line.farPath})
            for (const zem::routing::Segment& segment : path->Flattened())
                for (const zem::routing::RoomBox& room : map.rooms)
                    if (zem::routing::RunsThrough(segment, room.Box().Grown(-.1)))
                        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 7)
        return 0;
    size = std::min<std::size_t>(size, 600);
    const int rooms = 2 + data[0] % 58;
    const MapGraph graph = GraphOf(data + 1, size - 1, rooms);
    zem::routing::Router router(graph, CellsOf(graph, data, size));
    CheckLines(router.Map());
    for (std::size_t k = 1; k + 2 < std::min<std::size_t>(size, 40); k += 3) {
        const Cell to{data[k + 1] % 13, data[k + 2] % 13};
        if (router.RoomAt(to) == zem::map::NoRoom)
            router.MoveRooms({{data[k] % rooms, to}});
    }
    CheckLines(router.Map());
    const MapGraph less = GraphOf(data + 1, size / 2, 1 + rooms / 2);
    CheckLines(zem::routing::Router(less, CellsOf(less, data + 1, size - 1), router.Map()).Map());
    return 0;
}
