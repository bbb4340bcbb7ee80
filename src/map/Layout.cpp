#include "map/Layout.h"

#include "map/DockMatching.h"
#include "map/Docking.h"
#include "map/GroupLayout.h"
#include "map/Hosts.h"
#include "map/Packing.h"

#include <algorithm>
#include <limits>

namespace zem::map {

namespace {

/// Enough for any map of an author up to some 5,000 rooms; a larger one takes the time it needs for reading,
/// routing and packing off that of its layout, so that the largest game of all is done in seconds.
std::int64_t StepsFor(const MapGraph& graph) {
    constexpr std::int64_t Most = 800'000'000;
    constexpr int LargeGame = 6'000; // rooms
    constexpr std::int64_t StepsOfRoom = 15'000;
    return Most - StepsOfRoom * std::max(0, graph.RoomCount() - LargeGame);
}

/// How many steps it is worth to improve a start. Where most exits contradict each other no amount of work
/// makes a map of them.
std::int64_t WorthFor(const Group& group, const std::vector<Cell>& start) {
    constexpr std::int64_t Any = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t StepsOfRoom = 150'000;
    constexpr std::int64_t Most = 100'000'000;
    int all = 0;
    int good = 0;
    for (const Term& term : group.terms) {
        all += term.weight;
        good += IsWithin(start[term.b] - start[term.a], term.direction) ? term.weight : 0;
    }
    return good * 3 >= all * 2 ? Any : std::min(Most, StepsOfRoom * group.Size());
}

/// The groups of a game with the rooms that dock at them, and what is left.
class Layouter {
public:
    Layouter(const MapGraph& graph, Effort& effort) : graph_(graph), effort_(effort) {
        groups_ = GroupsOf(graph, TermsOf(graph));
        Hosts hosts = FindHosts(graph, groups_);
        lonely_ = std::move(hosts.lonely);
        for (const int root : hosts.roots)
            groups_.push_back({{root}, {}, {std::nullopt}});
        AddDocks(hosts);
    }

    std::vector<Cell> LayOut(const LayoutControl& control) {
        std::vector<Block> blocks;
        for (const Group& group : groups_)
            blocks.push_back({group.rooms, {}, group.terms, group.HasPins()});
        const std::vector<std::vector<Cell>> starts = Starts();
        if (control.firstPicture) {
            for (std::size_t k = 0; k < groups_.size(); ++k) {
                blocks[k].cells = starts[k];
                MatchDocks(groups_[k], bases_[k], blocks[k].cells);
            }
            control.firstPicture(Pack(graph_, blocks, lonely_));
        }
        for (std::size_t k = 0; k < groups_.size(); ++k)
            blocks[k].cells = Finished(k, starts[k]);
        return Pack(graph_, blocks, lonely_);
    }

private:
    /// Appends the docked rooms to the group of their host, each with a term from it.
    void AddDocks(const Hosts& hosts) {
        std::vector<int> groupOf(graph_.RoomCount(), NoRoom);
        std::vector<int> local(graph_.RoomCount(), NoRoom);
        for (int group = 0; group < static_cast<int>(groups_.size()); ++group) {
            bases_.push_back(groups_[group].Size());
            for (int k = 0; k < groups_[group].Size(); ++k) {
                groupOf[groups_[group].rooms[k]] = group;
                local[groups_[group].rooms[k]] = k;
            }
        }
        for (const int room : hosts.docked) {
            const int host = hosts.hostOf[room];
            const int number = groupOf[room] = groupOf[host];
            Group& group = groups_[number];
            local[room] = group.Size();
            group.rooms.push_back(room);
            group.pins.emplace_back();
            group.terms.push_back({local[host], local[room], Anywhere, 1});
        }
    }

    /// The group without its docked rooms.
    Group BaseOf(std::size_t number) const {
        const Group& group = groups_[number];
        Group base;
        base.rooms.assign(group.rooms.begin(), group.rooms.begin() + bases_[number]);
        base.pins.assign(group.pins.begin(), group.pins.begin() + bases_[number]);
        for (const Term& term : group.terms)
            if (term.direction != Anywhere)
                base.terms.push_back(term);
        return base;
    }

    std::vector<std::vector<Cell>> Starts() {
        std::vector<std::vector<Cell>> starts;
        for (std::size_t k = 0; k < groups_.size(); ++k)
            starts.push_back(StartOfGroup(BaseOf(k), effort_));
        return starts;
    }

    std::vector<Cell> Finished(std::size_t number, const std::vector<Cell>& start) {
        const Group base = BaseOf(number);
        Effort effort = effort_.Part(WorthFor(base, start));
        std::vector<Cell> cells = LayOutGroup(base, start, effort);
        effort_.Spend(effort.Spent());
        return base.Size() == groups_[number].Size()
                   ? cells
                   : Dock(groups_[number], base.Size(), std::move(cells), effort_);
    }

    const MapGraph& graph_;
    Effort& effort_;
    std::vector<Group> groups_;
    std::vector<int> bases_; // for each group how many of its rooms are not docked
    std::vector<int> lonely_;
};

} // namespace

std::vector<Cell> LayOut(const MapGraph& graph, const LayoutControl& control) {
    Effort effort(
        control.steps.value_or(StepsFor(graph)), control.stop ? control.stop : [] { return false; });
    return Layouter(graph, effort).LayOut(control);
}

} // namespace zem::map
