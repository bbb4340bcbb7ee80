#include "map/Rays.h"

#include "map/Laplacian.h"

#include <algorithm>

namespace zem::map {

namespace {

constexpr double FirstScale = 24;
constexpr double LastScale = 2;
constexpr double Shrink = 0.97;
constexpr int Rounds = 300; // the scale is at its last by the hundredth; the others settle who is believed
constexpr int TrustingRounds = 2;
// A passage that leads back the opposite way is hardly ever untrue, so the others only follow it at first.
constexpr double FirstOneWaySay = 0.02;
constexpr double OneWayGrowth = 1.07;
constexpr int FirstSolverSteps = 400; // from all rooms on one point to about their places
constexpr int SolverSteps = 40;

Point Between(const std::vector<Point>& points, const Term& term) {
    return {points[term.b].x - points[term.a].x, points[term.b].y - points[term.a].y};
}

/// How long a term is at least, in cells: with some room to spare, so that rounding to cells finds free ones;
/// none to spare between rooms that the author put where they are.
double LeastLength(const Group& group) {
    const auto pins =
        std::count_if(group.pins.begin(), group.pins.end(), [](const auto& p) { return p.has_value(); });
    return pins > 1 ? 1 : 2;
}

/// How many rounds one has to stand for, so that the rays of a very large group take no longer than some
/// hundred million steps.
int HasteFor(const Group& group) {
    constexpr int LargeGroup = 12'000; // terms
    return std::min(Rounds / 5, 1 + static_cast<int>(group.terms.size()) / LargeGroup);
}

/// The nearest point of the term's ray.
Point OnRay(Point way, Direction direction, double least) {
    const Cell step = Step(direction);
    const double norm = IsDiagonal(direction) ? 2 : 1;
    const double along = std::max(least, (way.x * step.x + way.y * step.y) / norm);
    return {along * step.x, along * step.y};
}

/// How much say is left to a term that is so far (squared) from its ray.
double Say(double distance, double scale) {
    const double doubt = 1 + distance / (scale * scale);
    return 1 / (doubt * doubt);
}

} // namespace

std::vector<Point> RobustRays(const Group& group, Effort& effort) {
    const int haste = HasteFor(group);
    std::vector<Point> points(group.Size());
    std::vector<char> fixed(group.Size(), 0);
    const double least = LeastLength(group);
    for (int room = 0; room < group.Size(); ++room)
        if (const auto& pin = group.pins[room]) {
            fixed[room] = 1;
            points[room] = {static_cast<double>(pin->x), static_cast<double>(pin->y)};
        }
    if (!group.HasPins() && group.Size() > 0)
        fixed[0] = 1;
    Laplacian equations(group, fixed);
    std::vector<Point> targets(group.terms.size());
    std::vector<double> weights(group.terms.size());
    double scale = FirstScale;
    double oneWaySay = FirstOneWaySay;
    for (int round = 0; round < Rounds / haste && !effort.IsOver(); ++round) {
        for (std::size_t k = 0; k < group.terms.size(); ++k) {
            const Term& term = group.terms[k];
            const Point way = Between(points, term);
            targets[k] = OnRay(way, term.direction, least);
            const Point off{way.x - targets[k].x, way.y - targets[k].y};
            weights[k] = term.weight == 1 ? oneWaySay : term.weight;
            if (round >= TrustingRounds)
                weights[k] *= std::max(1e-6, Say(off.x * off.x + off.y * off.y, scale));
        }
        equations.SetWeights(weights);
        const int steps =
            equations.Solve(targets, points, round < TrustingRounds ? FirstSolverSteps : SolverSteps);
        effort.Spend(static_cast<std::int64_t>(group.terms.size()) * (steps + 4));
        for (int k = 0; k < haste; ++k) {
            if (round >= TrustingRounds)
                scale = std::max(LastScale, scale * Shrink);
            oneWaySay = std::min(1.0, oneWaySay * OneWayGrowth);
        }
    }
    return points;
}

} // namespace zem::map
