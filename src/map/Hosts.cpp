#include "map/Hosts.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zem::map {

namespace {

class HostFinder {
public:
    HostFinder(const MapGraph& graph, const std::vector<Group>& groups)
        : graph_(graph),
          tiesOf_(graph.RoomCount()),
          attached_(graph.RoomCount(), 0) {
        hosts_.hostOf.assign(graph.RoomCount(), NoRoom);
        for (int tie = 0; tie < static_cast<int>(graph.ties.size()); ++tie) {
            tiesOf_[graph.ties[tie].from].push_back(tie);
            tiesOf_[graph.ties[tie].to].push_back(tie);
        }
        for (const Group& group : groups)
            for (const int room : group.rooms)
                Attach(room);
    }

    Hosts Find() {
        Spread();
        for (const int room : BestTiedFirst()) {
            if (attached_[room])
                continue;
            if (tiesOf_[room].empty()) {
                hosts_.lonely.push_back(room);
                continue;
            }
            hosts_.roots.push_back(room);
            Attach(room);
            Spread();
        }
        std::sort(hosts_.lonely.begin(), hosts_.lonely.end());
        return std::move(hosts_);
    }

private:
    void Attach(int room) {
        attached_[room] = 1;
        front_.push_back(room);
    }

    /// The start room, then the others, those with most ties first.
    std::vector<int> BestTiedFirst() const {
        std::vector<int> order(graph_.RoomCount());
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(), [this](int a, int b) {
            if ((a == graph_.start) != (b == graph_.start))
                return a == graph_.start;
            return tiesOf_[a].size() > tiesOf_[b].size();
        });
        return order;
    }

    /// Level by level: a room of the next level is judged by all rooms of those before.
    void Spread() {
        while (!front_.empty()) {
            std::vector<int> next;
            for (const int room : std::exchange(front_, {}))
                for (const int tie : tiesOf_[room]) {
                    const int other =
                        graph_.ties[tie].from == room ? graph_.ties[tie].to : graph_.ties[tie].from;
                    if (!attached_[other])
                        next.push_back(other);
                }
            std::sort(next.begin(), next.end());
            next.erase(std::unique(next.begin(), next.end()), next.end());
            for (const int room : next)
                hosts_.hostOf[room] = BestHost(room);
            for (const int room : next) {
                hosts_.docked.push_back(room);
                Attach(room);
            }
        }
    }

    int BestHost(int room) const {
        int best = NoRoom;
        int bestRank = 3;
        for (const int k : tiesOf_[room]) {
            const Tie& tie = graph_.ties[k];
            const int other = tie.from == room ? tie.to : tie.from;
            const int rank = tie.from != room ? 1 : tie.out ? 0 : 2;
            if (!attached_[other] || rank >= bestRank)
                continue;
            best = other;
            bestRank = rank;
        }
        return best;
    }

    const MapGraph& graph_;
    std::vector<std::vector<int>> tiesOf_;
    std::vector<char> attached_;
    std::vector<int> front_;
    Hosts hosts_;
};

} // namespace

Hosts FindHosts(const MapGraph& graph, const std::vector<Group>& groups) {
    return HostFinder(graph, groups).Find();
}

} // namespace zem::map
