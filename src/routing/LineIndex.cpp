#include "routing/LineIndex.h"

#include "routing/Boxes.h"

#include <algorithm>

namespace zem::routing {

namespace {

Rect AreaOf(const Segment& segment) {
    Rect area{segment.a.x, segment.a.y, segment.a.x, segment.a.y};
    area.Include(segment.b);
    return area;
}

} // namespace

template <class Visit>
void LineIndex::ForEachCell(const Segment& segment, Visit visit) {
    const Rect area = AreaOf(segment);
    const map::Cell first = CellOf({area.left, area.top});
    const map::Cell last = CellOf({area.right, area.bottom});
    const bool small = first.x == last.x || first.y == last.y;
    for (int y = first.y; y <= last.y; ++y)
        for (int x = first.x; x <= last.x; ++x) {
            // Of a long slanting segment only the cells that it runs through; a little wider, so that none
            // is missed at a corner.
            const Point middle{x * CellWidth, y * CellHeight};
            const Rect wide{middle.x - CellWidth / 2 - 1, middle.y - CellHeight / 2 - 1,
                            middle.x + CellWidth / 2 + 1, middle.y + CellHeight / 2 + 1};
            if (small || RunsThrough(segment, wide))
                visit(map::Cell{x, y});
        }
}

void LineIndex::Add(int line, const std::vector<Segment>& segments, double crossingCost) {
    for (const Segment& segment : segments) {
        ForEachCell(segment, [&](map::Cell cell) {
            buckets_[KeyOf(cell)].push_back({segment, line, crossingCost});
        });
    }
}

void LineIndex::Remove(int line, const std::vector<Segment>& segments) {
    for (const Segment& segment : segments)
        ForEachCell(segment, [&](map::Cell cell) {
            const auto bucket = buckets_.find(KeyOf(cell));
            if (bucket != buckets_.end())
                std::erase_if(bucket->second, [line](const Entry& entry) { return entry.line == line; });
        });
}

double LineIndex::CostOf(const Segment& segment) const {
    double cost = 0;
    ForEachCell(segment, [&](map::Cell cell) {
        const auto bucket = buckets_.find(KeyOf(cell));
        if (bucket == buckets_.end())
            return;
        looks_ += bucket->second.size();
        for (const Entry& entry : bucket->second) {
            // Segments that share several cells count once: in the cell in which they cross or run along.
            if (DoCross(segment, entry.segment)) {
                const Point way = segment.b - segment.a;
                const Point other = entry.segment.b - entry.segment.a;
                const double at = Cross(entry.segment.a - segment.a, other) / Cross(way, other);
                if (CellOf(segment.a + at * way) == cell)
                    cost += entry.crossingCost;
            } else if (const double length = SideBySide(segment, entry.segment); length > 0) {
                const Point way = Unit(segment.b - segment.a);
                const double from = std::max(0.0, std::min(Dot(entry.segment.a - segment.a, way),
                                                           Dot(entry.segment.b - segment.a, way)));
                if (CellOf(segment.a + (from + length / 2) * way) == cell)
                    cost += SideBySideCost * length;
            }
        }
    });
    return cost;
}

double LineIndex::CostOf(const std::vector<Segment>& segments) const {
    double cost = 0;
    for (const Segment& segment : segments)
        cost += CostOf(segment);
    return cost;
}

std::vector<int> LineIndex::LinesNear(const Rect& area) const {
    std::vector<int> lines;
    const map::Cell first = CellOf({area.left, area.top});
    const map::Cell last = CellOf({area.right, area.bottom});
    for (int y = first.y; y <= last.y; ++y)
        for (int x = first.x; x <= last.x; ++x) {
            const auto bucket = buckets_.find(KeyOf({x, y}));
            if (bucket == buckets_.end())
                continue;
            for (const Entry& entry : bucket->second)
                if (RunsThrough(entry.segment, area))
                    lines.push_back(entry.line);
        }
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

} // namespace zem::routing
