#include "routing/Polish.h"

#include "routing/Lanes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace zem::routing {

namespace {

constexpr double RoundPiece = 26; // a bend wants pieces of this length on both sides
constexpr double ShortCost = 3;   // for each unit that is missing
constexpr int MostRounds = 6;
constexpr double Shifts[] = {8, 18};
constexpr double ShortestEnd = 8; // a line keeps its port's direction for so long
constexpr double Gain = .5;       // less is not worth a change

/// The same corners without those in the middle of a straight piece.
void Simplify(std::vector<Point>& points) {
    for (std::size_t k = 1; k + 1 < points.size();) {
        const Point before = points[k] - points[k - 1];
        const Point after = points[k + 1] - points[k];
        const bool straight = std::abs(Cross(Unit(before), Unit(after))) < .01 && Dot(before, after) >= 0;
        if (straight)
            points.erase(points.begin() + static_cast<std::ptrdiff_t>(k));
        else
            ++k;
    }
}

class Polisher {
public:
    Polisher(std::vector<Point>& points, const Ground& ground)
        : points_(points),
          ground_(ground),
          cost_(CostOfWay(points, ground)) {}

    void Run() {
        for (int round = 0; round < MostRounds; ++round) {
            bool changed = ResizeEnds();
            for (std::size_t k = 2; k + 2 < points_.size(); ++k)
                changed |= Remove(k) || Merge(k) || Shift(k);
            if (!changed)
                return;
        }
    }

private:
    bool Take(const std::vector<Point>& candidate) {
        for (std::size_t k = 0; k + 1 < candidate.size(); ++k)
            if (!ground_.IsClear(Segment{candidate[k], candidate[k + 1]}))
                return false;
        const double cost = CostOfWay(candidate, ground_);
        if (cost > cost_ - Gain)
            return false;
        cost_ = cost;
        points_ = candidate;
        return true;
    }

    bool Remove(std::size_t k) {
        std::vector<Point> candidate = points_;
        candidate.erase(candidate.begin() + static_cast<std::ptrdiff_t>(k));
        return Take(candidate);
    }

    bool Merge(std::size_t k) {
        if (k + 3 >= points_.size())
            return false;
        std::vector<Point> candidate = points_;
        candidate[k] = .5 * (candidate[k] + candidate[k + 1]);
        candidate.erase(candidate.begin() + static_cast<std::ptrdiff_t>(k) + 1);
        return Take(candidate);
    }

    bool Shift(std::size_t k) {
        constexpr Point Ways[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
        for (const double by : Shifts)
            for (const Point way : Ways) {
                std::vector<Point> candidate = points_;
                candidate[k] = candidate[k] + by * way;
                if (Take(candidate))
                    return true;
            }
        return false;
    }

    bool ResizeEnds() {
        bool changed = false;
        if (points_.size() < 4)
            return false;
        for (const bool first : {true, false})
            for (const double by : {18.0, 8.0, -8.0}) {
                std::vector<Point> candidate = points_;
                const Point port = first ? candidate.front() : candidate.back();
                Point& corner = first ? candidate[1] : candidate[candidate.size() - 2];
                const double length = Distance(port, corner) + by;
                if (length < ShortestEnd)
                    continue;
                corner = port + length * Unit(corner - port);
                changed |= Take(candidate);
            }
        return changed;
    }

    std::vector<Point>& points_;
    const Ground& ground_;
    double cost_;
};

} // namespace

double CostOfWay(const std::vector<Point>& points, const Ground& ground) {
    double cost = 0;
    for (std::size_t k = 0; k + 1 < points.size(); ++k)
        cost += ground.CostOf(Segment{points[k], points[k + 1]});
    for (std::size_t k = 1; k + 1 < points.size(); ++k) {
        const Point before = points[k] - points[k - 1];
        const Point after = points[k + 1] - points[k];
        const double turn = std::abs(std::atan2(Cross(before, after), Dot(before, after)));
        cost += turn / (std::numbers::pi / 2) * TurnCost;
        const double shorter = std::min(Distance({}, before), Distance({}, after));
        cost += ShortCost * std::max(0.0, RoundPiece - shorter);
    }
    return cost;
}

void Polish(std::vector<Point>& points, const Ground& ground) {
    Simplify(points);
    Polisher(points, ground).Run();
    Simplify(points);
}

} // namespace zem::routing
