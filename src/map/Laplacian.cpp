#include "map/Laplacian.h"

#include <numeric>

namespace zem::map {

namespace {

/// A residual this much smaller than at first (squared) is solved: the next round moves the targets anyway.
constexpr double Enough = 1e-5;

} // namespace

Laplacian::Laplacian(const Group& group, const std::vector<char>& fixed)
    : group_(group),
      fixed_(fixed),
      starts_(group.Size() + 1, 0),
      entries_(group.terms.size() * 2),
      weights_(entries_.size()),
      diagonal_(group.Size()),
      residual_(group.Size()),
      direction_(group.Size()),
      product_(group.Size()) {
    for (const Term& term : group.terms) {
        ++starts_[term.a + 1];
        ++starts_[term.b + 1];
    }
    std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
    std::vector<int> next(starts_.begin(), starts_.end() - 1);
    for (int k = 0; k < static_cast<int>(group.terms.size()); ++k) {
        const Term& term = group.terms[k];
        entries_[next[term.a]++] = {term.b, k};
        entries_[next[term.b]++] = {term.a, k};
    }
}

void Laplacian::SetWeights(const std::vector<double>& weights) {
    for (int room = 0; room < group_.Size(); ++room) {
        double sum = 0;
        for (int k = starts_[room]; k < starts_[room + 1]; ++k) {
            weights_[k] = weights[entries_[k].term];
            sum += weights_[k];
        }
        diagonal_[room] = sum > 0 ? sum : 1;
    }
}

void Laplacian::Multiply(const std::vector<Point>& in, std::vector<Point>& out) const {
    for (int room = 0; room < group_.Size(); ++room) {
        if (fixed_[room]) {
            out[room] = {0, 0};
            continue;
        }
        Point sum{diagonal_[room] * in[room].x, diagonal_[room] * in[room].y};
        for (int k = starts_[room]; k < starts_[room + 1]; ++k) {
            sum.x -= weights_[k] * in[entries_[k].room].x;
            sum.y -= weights_[k] * in[entries_[k].room].y;
        }
        out[room] = sum;
    }
}

int Laplacian::Solve(const std::vector<Point>& targets, std::vector<Point>& points, int steps) {
    const int count = group_.Size();
    Multiply(points, product_);
    Point old{0, 0};
    for (int room = 0; room < count; ++room) {
        Point pull{0, 0};
        for (int k = starts_[room]; k < starts_[room + 1]; ++k) {
            const Term& term = group_.terms[entries_[k].term];
            const double sign = term.b == room ? weights_[k] : -weights_[k];
            pull.x += sign * targets[entries_[k].term].x;
            pull.y += sign * targets[entries_[k].term].y;
        }
        residual_[room] =
            fixed_[room] ? Point{0, 0} : Point{pull.x - product_[room].x, pull.y - product_[room].y};
        direction_[room] = {residual_[room].x / diagonal_[room], residual_[room].y / diagonal_[room]};
        old.x += residual_[room].x * direction_[room].x;
        old.y += residual_[room].y * direction_[room].y;
    }
    const Point goal{old.x * Enough, old.y * Enough};
    int step = 0;
    for (; step < steps && (old.x > goal.x || old.y > goal.y); ++step) {
        Multiply(direction_, product_);
        Point slope{0, 0};
        for (int room = 0; room < count; ++room) {
            slope.x += direction_[room].x * product_[room].x;
            slope.y += direction_[room].y * product_[room].y;
        }
        const Point stride{slope.x > 0 ? old.x / slope.x : 0, slope.y > 0 ? old.y / slope.y : 0};
        Point now{0, 0};
        for (int room = 0; room < count; ++room) {
            points[room].x += stride.x * direction_[room].x;
            points[room].y += stride.y * direction_[room].y;
            residual_[room].x -= stride.x * product_[room].x;
            residual_[room].y -= stride.y * product_[room].y;
            now.x += residual_[room].x * residual_[room].x / diagonal_[room];
            now.y += residual_[room].y * residual_[room].y / diagonal_[room];
        }
        const Point turn{old.x > 0 ? now.x / old.x : 0, old.y > 0 ? now.y / old.y : 0};
        for (int room = 0; room < count; ++room) {
            direction_[room].x = residual_[room].x / diagonal_[room] + turn.x * direction_[room].x;
            direction_[room].y = residual_[room].y / diagonal_[room] + turn.y * direction_[room].y;
        }
        old = now;
    }
    return step;
}

} // namespace zem::map
