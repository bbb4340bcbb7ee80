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

/// Counts for each thing the steps to the sink, backwards from it; what does not reach it is cut off.
void MinimumCut::FindLevels() {
    const int cutOff = count_ + 1;
    level_.assign(count_, cutOff);
    ofLevel_.assign(count_ + 2, 0);
    queue_.clear();
    for (int thing = 0; thing < count_; ++thing)
        if (ends_[thing] < 0) {
            level_[thing] = 1;
            queue_.push_back(thing);
        }
    const Arc* const arcs = arcs_.data();
    std::int64_t work = 0;
    for (std::size_t head = 0; head < queue_.size(); ++head) {
        const int thing = queue_[head];
        const int next = level_[thing] + 1;
        ++ofLevel_[next - 1];
        for (int arc = first_[thing]; arc != None; arc = arcs[arc].next) {
            ++work;
            const int from = arcs[arc].to;
            if (level_[from] != cutOff || arcs[arc ^ 1].room <= 0)
                continue;
            level_[from] = next;
            queue_.push_back(from);
        }
    }
    work_ += work;
}

/// Sends what can flow along the path in `path_` (arcs from `start` to a thing of the sink), and goes back to
/// where it has no room any more.
MinimumCut::Flow MinimumCut::Push(int start, int& at) {
    Flow amount = std::min(ends_[start], -ends_[at]);
    for (const int arc : path_)
        amount = std::min(amount, arcs_[arc].room);
    std::size_t full = path_.size();
    for (std::size_t k = path_.size(); k-- > 0;) {
        const int arc = path_[k];
        arcs_[arc].room -= amount;
        arcs_[arc ^ 1].room += amount;
        if (arcs_[arc].room == 0)
            full = k;
    }
    work_ += static_cast<std::int64_t>(path_.size());
    ends_[start] -= amount;
    ends_[at] += amount;
    if (full < path_.size()) {
        at = arcs_[path_[full] ^ 1].to;
        path_.resize(full);
    }
    return amount;
}

/// Counts the steps of a thing anew that has no arc downwards any more. When it was the last of its level,
/// all above are cut off.
void MinimumCut::Raise(int thing) {
    const int cutOff = count_ + 1;
    const int before = level_[thing];
    int lowest = cutOff - 1;
    for (int arc = first_[thing]; arc != None; arc = arcs_[arc].next) {
        ++work_;
        if (arcs_[arc].room > 0)
            lowest = std::min(lowest, level_[arcs_[arc].to]);
    }
    level_[thing] = lowest + 1;
    current_[thing] = first_[thing];
    ++ofLevel_[level_[thing]];
    if (--ofLevel_[before] > 0)
        return;
    for (int& level : level_)
        if (level > before)
            level = cutOff;
}

/// Sends all that can flow from a thing, or enough.
MinimumCut::Flow MinimumCut::Augment(int start, Flow enough, std::int64_t lastWork) {
    Flow sum = 0;
    int at = start;
    path_.clear();
    while (ends_[start] > 0 && level_[start] <= count_ && sum < enough && work_ < lastWork) {
        if (ends_[at] < 0) {
            sum += Push(start, at);
            continue;
        }
        int arc = current_[at];
        while (arc != None && (arcs_[arc].room <= 0 || level_[arcs_[arc].to] != level_[at] - 1)) {
            arc = arcs_[arc].next;
            ++work_;
        }
        current_[at] = arc;
        if (arc != None) {
            path_.push_back(arc);
            at = arcs_[arc].to;
            continue;
        }
        Raise(at);
        if (!path_.empty()) {
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
    FindLevels();
    current_ = first_;
    for (int thing = 0; thing < count_ && cost < limit && work_ < lastWork; ++thing)
        if (ends_[thing] > 0)
            cost += Augment(thing, limit - cost, lastWork);
    if (cost >= limit || work_ >= lastWork)
        return limit;
    MarkMoving();
    return cost;
}

} // namespace zem::map
