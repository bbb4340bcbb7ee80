#pragma once

#include "routing/Boxes.h"
#include "routing/LineIndex.h"

namespace zem::routing {

/// What stands in the way of a line between two rooms, and what it costs to pass.
class Ground {
public:
    Ground(const Boxes& boxes, const LineIndex& lines, int room, int otherRoom)
        : boxes_(boxes),
          lines_(lines),
          room_(room),
          otherRoom_(otherRoom) {}

    bool IsClear(const std::vector<Segment>& segments) const {
        return boxes_.IsClear(segments, room_, otherRoom_);
    }
    bool IsClear(const Segment& segment) const { return boxes_.IsClear(segment, room_, otherRoom_); }

    /// Length and what is crossed; no look at boxes.
    double CostOf(const std::vector<Segment>& segments) const {
        return LengthOf(segments) + lines_.CostOf(segments);
    }
    double CostOf(const Segment& segment) const {
        return Distance(segment.a, segment.b) + lines_.CostOf(segment);
    }

private:
    const Boxes& boxes_;
    const LineIndex& lines_;
    int room_;
    int otherRoom_;
};

/// What the way over the points costs: length, turns, crossings, and pieces too short to be rounded well.
double CostOfWay(const std::vector<Point>& points, const Ground& ground);

/// Removes and shifts corners as long as that makes the way cheaper. Its first and its last piece keep their
/// directions, and what was clear stays so.
void Polish(std::vector<Point>& points, const Ground& ground);

} // namespace zem::routing
