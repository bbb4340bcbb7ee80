#pragma once

#include "map/Rays.h"

namespace zem::map {

/// The matrix of a graph with weighted edges, and the solution of its equations: each edge (a, b) wants
/// point b - point a to be its target, and each fixed point stays.
class Laplacian {
public:
    Laplacian(const Group& group, const std::vector<char>& fixed);

    /// Weights of the edges, in the order of the group's terms, above 0.
    void SetWeights(const std::vector<double>& weights);

    /// Improves the points by conjugate gradients until the weighted squares are near their least, for at
    /// most so many steps.
    int Solve(const std::vector<Point>& targets, std::vector<Point>& points, int steps);

private:
    void Multiply(const std::vector<Point>& in, std::vector<Point>& out) const;

    struct Entry {
        int room;
        int term;
    };

    const Group& group_;
    const std::vector<char>& fixed_;
    std::vector<int> starts_;
    std::vector<Entry> entries_;  // the neighbours of each room, in a fixed order
    std::vector<double> weights_; // of the entries
    std::vector<double> diagonal_;
    std::vector<Point> residual_;
    std::vector<Point> direction_;
    std::vector<Point> product_;
};

} // namespace zem::map
