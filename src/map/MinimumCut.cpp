#include "map/MinimumCut.h"

#include <algorithm>

namespace zem::map {

namespace {

constexpr int None = -1;

} // namespace

void MinimumCut::Begin(int count) {
    count_ = count;
    ends_.assign(count, 0);
    first_.assign(count, None);
    level_.assign(count, None);
    arcs_.clear();
}

void MinimumCut::CostApart(int first, int second, Flow price, Flow opposite) {
    arcs_.push_back({second, first_[first], price});
    first_[first] = static_cast<int>(arcs_.size()) - 1;
    arcs_.push_back({first, first_[second], opposite});
    first_[second] = static_cast<int>(arcs_.size()) - 1;
}

/// Counts for each thing the steps to the sink, backwards from it. False when no thing of the source reaches
/// it.
bool MinimumCut::FindLevels() {
    level_.assign(count_, None);
    queue_.clear();
    for (int thing = 0; thing < count_; ++thing)
        if (ends_[thing] < 0) {
            level_[thing] = 1;
            queue_.push_back(thing);
        }
    bool reached = false;
    for (std::size_t head = 0; head < queue_.size(); ++head) {
        const int thing = queue_[head];
        for (int arc = first_[thing]; arc != None; arc = arcs_[arc].next) {
            ++work_;
            const int from = arcs_[arc].to;
            if (level_[from] != None || arcs_[arc ^ 1].room <= 0)
                continue;
            level_[from] = level_[thing] + 1;
            reached = reached || ends_[from] > 0;
            queue_.push_back(from);
        }
    }
    return reached;
}

/// Sends what can flow along the path in `path_` (arcs from a thing of the source to one of the sink).
MinimumCut::Flow MinimumCut::Push() {
    const int start = arcs_[path_.front() ^ 1].to;
    const int end = arcs_[path_.back()].to;
    Flow amount = std::min(ends_[start], -ends_[end]);
    for (const int arc : path_)
        amount = std::min(amount, arcs_[arc].room);
    for (const int arc : path_) {
        arcs_[arc].room -= amount;
        arcs_[arc ^ 1].room += amount;
    }
    ends_[start] -= amount;
    ends_[end] += amount;
    return amount;
}

/// Sends all that can flow along paths of falling levels, or enough.
MinimumCut::Flow MinimumCut::Augment(Flow enough, std::int64_t lastWork) {
    current_ = first_;
    Flow sum = 0;
    for (int start = 0; start < count_ && sum < enough && work_ < lastWork; ++start) {
        int at = start;
        path_.clear();
        while (ends_[start] > 0 && level_[start] != None) {
            if (!path_.empty() && ends_[at] < 0) {
                sum += Push();
                work_ += static_cast<std::int64_t>(path_.size());
                if (sum >= enough || work_ >= lastWork)
                    return sum;
                at = start;
                path_.clear();
                continue;
            }
            int& arc = current_[at];
            while (arc != None && (arcs_[arc].room <= 0 || level_[arcs_[arc].to] != level_[at] - 1)) {
                arc = arcs_[arc].next;
                ++work_;
            }
            if (arc != None) {
                path_.push_back(arc);
                at = arcs_[arc].to;
                continue;
            }
            level_[at] = None;
            if (path_.empty())
                break;
            at = arcs_[path_.back() ^ 1].to;
            path_.pop_back();
        }
    }
    return sum;
}

/// What the source still reaches is what moves.
void MinimumCut::MarkMoving() {
    level_.assign(count_, None);
    queue_.clear();
    for (int thing = 0; thing < count_; ++thing)
        if (ends_[thing] > 0) {
            level_[thing] = Source;
            queue_.push_back(thing);
        }
    for (std::size_t head = 0; head < queue_.size(); ++head)
        for (int arc = first_[queue_[head]]; arc != None; arc = arcs_[arc].next) {
            ++work_;
            if (arcs_[arc].room > 0 && level_[arcs_[arc].to] == None) {
                level_[arcs_[arc].to] = Source;
                queue_.push_back(arcs_[arc].to);
            }
        }
}

MinimumCut::Flow MinimumCut::Solve(Flow limit) {
    Flow gain = 0;
    for (const Flow end : ends_)
        if (end > 0)
            gain += end >= Infinite / 2 ? end - Infinite : end;
    Flow cost = -gain;
    work_ += count_ + static_cast<Flow>(arcs_.size());
    const std::int64_t lastWork = work_ + TooMuch;
    while (cost < limit && work_ < lastWork && FindLevels())
        cost += Augment(limit - cost, lastWork);
    if (cost >= limit || work_ >= lastWork)
        return limit;
    MarkMoving();
    return cost;
}

} // namespace zem::map
