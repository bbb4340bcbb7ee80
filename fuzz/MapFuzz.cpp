// Any exits, ties and pins as a game: every room gets a cell of its own, a pinned one its pin, and the map
// after an edit is as good. The bytes are taken three at a time.
#include "MapOfBytes.h"
#include "map/AfterEdit.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <vector>

namespace {

using zem::map::Cell;
using zem::map::MapGraph;

void Check(const MapGraph& graph, const std::vector<Cell>& cells) {
    if (cells.size() != graph.names.size() ||
        std::set<Cell>(cells.begin(), cells.end()).size() != cells.size())
        std::abort();
    std::set<Cell> pinned;
    for (std::size_t room = 0; room < cells.size(); ++room)
        if (graph.pins[room] && pinned.insert(*graph.pins[room]).second && cells[room] != *graph.pins[room])
            std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4)
        return 0;
    const int rooms = 1 + data[0] % 60;
    const MapGraph graph = GraphOf(data + 1, std::min<std::size_t>(size - 1, 600), rooms);
    const std::vector<Cell> cells = zem::map::LayOut(graph);
    Check(graph, cells);
    // The same game without what the last half of the bytes says, and back again.
    const MapGraph less =
        GraphOf(data + 1, std::min<std::size_t>(size - 1, 600) / 2, 1 + rooms / 2 + data[0] % 2);
    const std::vector<Cell> fewer = zem::map::LayOutAfterEdit({graph, cells}, less);
    Check(less, fewer);
    Check(graph, zem::map::LayOutAfterEdit({less, fewer}, graph));
    return 0;
}
