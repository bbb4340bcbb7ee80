#pragma once

#include <cstdint>
#include <vector>

namespace zem::map {

/// The cheapest way to part a few things into those that move and those that stay, as the minimum cut of a
/// small network, found by augmenting along shortest paths. Made once and used for many networks.
class MinimumCut {
public:
    using Flow = std::int64_t;
    static constexpr Flow Infinite = std::int64_t{1} << 40;

    /// Begins a new network of so many things.
    void Begin(int count);

    /// The thing costs this much if it moves; below 0, it gains by moving.
    void CostOfMoving(int thing, Flow cost) { ends_[thing] -= cost; }
    /// The thing has to move.
    void MustMove(int thing) { ends_[thing] += Infinite; }
    /// This is paid if `first` moves and `second` stays, and the other price the other way round.
    void CostApart(int first, int second, Flow price, Flow opposite);

    /// Finds the cut. Returns what moving the best set costs, below 0 for a gain; what must move counts
    /// nothing. Gives up and returns `limit` as soon as it is sure to be reached, or when the work is too
    /// much.
    Flow Solve(Flow limit);

    /// After Solve: whether the thing belongs to the set that moves, the smallest of equal cost.
    bool Moves(int thing) const { return level_[thing] == Source; }

    /// How much work was done so far, in steps along arcs: a measure of time that is the same everywhere.
    std::int64_t Work() const { return work_; }

private:
    static constexpr int Source = 0;
    static constexpr std::int64_t TooMuch = 20'000'000; // steps; about a tenth of a second

    struct Arc {
        int to;
        int next;
        Flow room; // how much more can flow
    };

    void FindLevels();
    Flow Augment(int start, Flow enough, std::int64_t lastWork);
    Flow Push(int start, int& at);
    void Raise(int thing);
    void MarkMoving();

    int count_ = 0;
    std::vector<Flow> ends_; // above 0: from the source; below 0: to the sink
    std::vector<int> first_;
    std::vector<Arc> arcs_;    // an arc and its opposite side by side
    std::vector<int> level_;   // steps to the sink
    std::vector<int> ofLevel_; // how many things there are of each
    std::vector<int> current_;
    std::vector<int> queue_;
    std::vector<int> path_;
    std::int64_t work_ = 0;
};

} // namespace zem::map
