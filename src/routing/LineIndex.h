#pragma once

#include "map/Geometry.h"
#include "routing/Paths.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace zem::routing {

/// What a segment pays for the lines that it meets.
inline constexpr double CrossingCost = 45;
inline constexpr double SideBySideCost = 6; // for each unit of length

/// The segments of all lines that are drawn, in buckets by cell.
class LineIndex {
public:
    /// @param crossingCost  what it costs to cross this line
    void Add(int line, const std::vector<Segment>& segments, double crossingCost = CrossingCost);
    void Remove(int line, const std::vector<Segment>& segments);

    /// What it costs to draw the segment between those that are there.
    double CostOf(const Segment& segment) const;
    double CostOf(const std::vector<Segment>& segments) const;

    /// The lines of which a segment comes into the area; some that only come near.
    std::vector<int> LinesNear(const Rect& area) const;

    /// How many segments were looked at so far: what the routing has cost, the same on every machine.
    std::uint64_t Looks() const { return looks_; }

private:
    struct Entry {
        Segment segment;
        int line;
        double crossingCost;
    };

    template <class Visit>
    static void ForEachCell(const Segment& segment, Visit visit);
    static std::uint64_t KeyOf(map::Cell cell) {
        return std::uint64_t{static_cast<std::uint32_t>(cell.x)} << 32 | static_cast<std::uint32_t>(cell.y);
    }

    std::unordered_map<std::uint64_t, std::vector<Entry>> buckets_;
    mutable std::uint64_t looks_ = 0;
};

} // namespace zem::routing
