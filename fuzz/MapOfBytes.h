#pragma once

#include "map/MapGraph.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// Exits, ties and pins of any bytes, three at a time; two rooms share each name.
inline zem::map::MapGraph GraphOf(const std::uint8_t* data, std::size_t size, int rooms) {
    zem::map::MapGraph graph;
    for (int room = 0; room < rooms; ++room)
        graph.names.push_back(std::to_string(room / 2));
    graph.pins.resize(rooms);
    for (std::size_t k = 0; k + 2 < size; k += 3) {
        const int from = data[k] % rooms;
        const int to = data[k + 1] % rooms;
        const int kind = data[k + 2];
        if (kind < 200)
            graph.exits.push_back({from, to, kind % 8, kind % 16 > 14, ""});
        else if (kind < 240 && from != to)
            graph.ties.push_back({from, to, kind % 2 == 0, ""});
        else
            graph.pins[from] = zem::map::Cell{data[k + 1] % 16, kind % 16};
    }
    return graph;
}
