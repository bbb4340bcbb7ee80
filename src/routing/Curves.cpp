#include "routing/Curves.h"

#include <algorithm>

namespace zem::routing {

namespace {

constexpr double Handles[] = {.3, .45, .65, .95}; // in distances between the ports
constexpr double Radii[] = {30, 20, 12, 6};       // of rounded corners
constexpr double LoopSize = 20;

} // namespace

std::optional<PricedPath> PlainCurve(const RoomBox& a, Port portA, const RoomBox& b, Port portB,
                                     const Ground& ground, double most) {
    const Point from = PortPoint(a, portA);
    const Point to = PortPoint(b, portB);
    const double distance = Distance(from, to);
    std::optional<PricedPath> best;
    for (const double first : Handles)
        for (const double second : Handles) {
            PricedPath curve;
            curve.path.start = from;
            curve.path.CurveTo(from + first * distance * PortDirection(portA),
                               to + second * distance * PortDirection(portB), to);
            curve.segments = curve.path.Flattened();
            if (LengthOf(curve.segments) >= most || !ground.IsClear(curve.segments))
                continue;
            curve.cost = ground.CostOf(curve.segments);
            if (curve.cost < most) {
                most = curve.cost;
                best = std::move(curve);
            }
        }
    return best;
}

PricedPath RoundedWay(const std::vector<Point>& corners, const Ground& ground) {
    PricedPath way;
    way.path.start = corners.front();
    for (std::size_t k = 1; k + 1 < corners.size(); ++k) {
        const Point corner = corners[k];
        const Point in = Unit(corner - corners[k - 1]);
        const Point out = Unit(corners[k + 1] - corner);
        const double room = std::min(Distance(corners[k - 1], corner), Distance(corner, corners[k + 1])) / 2;
        bool isRound = false;
        for (const double radius : Radii) {
            const double r = std::min(radius, room);
            Path bend;
            bend.start = corner - r * in;
            bend.CurveTo(corner - r / 3 * in, corner + r / 3 * out, corner + r * out);
            if (!ground.IsClear(bend.Flattened()))
                continue;
            way.path.LineTo(bend.start);
            way.path.pieces.push_back(bend.pieces.front());
            isRound = true;
            break;
        }
        if (!isRound)
            way.path.LineTo(corner);
    }
    way.path.LineTo(corners.back());
    way.segments = way.path.Flattened();
    way.cost = ground.CostOf(way.segments);
    return way;
}

Path LoopAt(const RoomBox& box, Port port) {
    const Point at = PortPoint(box, port);
    const Point way = PortDirection(port);
    const Point across{-way.y, way.x};
    Path loop;
    loop.start = at;
    loop.CurveTo(at + LoopSize * way + LoopSize * across, at + LoopSize * way - LoopSize * across, at);
    return loop;
}

} // namespace zem::routing
