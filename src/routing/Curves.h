#pragma once

#include "routing/Polish.h"

#include <optional>

namespace zem::routing {

struct PricedPath {
    Path path;
    std::vector<Segment> segments;
    double cost = 0;
};

/// The cheapest of the plain curves from port to port that leave both in the ports' directions and are clear;
/// nothing when none is cheaper than `most`.
std::optional<PricedPath> PlainCurve(const RoomBox& a, Port portA, const RoomBox& b, Port portB,
                                     const Ground& ground, double most);

/// The way over the corners, each rounded as far as it stays clear.
PricedPath RoundedWay(const std::vector<Point>& corners, const Ground& ground);

/// The small loop at a port.
Path LoopAt(const RoomBox& box, Port port);

} // namespace zem::routing
