#include "map/Terms.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace zem::map {

namespace {

/// Sets that grow together, each known by one of its members.
class Unions {
public:
    explicit Unions(int count) : parents_(count) { std::iota(parents_.begin(), parents_.end(), 0); }

    int Find(int member) {
        while (parents_[member] != member)
            member = parents_[member] = parents_[parents_[member]];
        return member;
    }
    void Join(int a, int b) { parents_[Find(a)] = Find(b); }

private:
    std::vector<int> parents_;
};

/// A term that tells the same with one of the first four directions.
Term Normal(Term term) {
    if (term.direction >= DirectionCount / 2)
        return {term.b, term.a, Opposite(term.direction), term.weight};
    return term;
}

/// Which rooms stand together: joined by terms, or pinned.
Unions JoinedRooms(const MapGraph& graph, const std::vector<Term>& terms) {
    Unions joined(graph.RoomCount());
    for (const Term& term : terms)
        joined.Join(term.a, term.b);
    int pinned = NoRoom;
    for (int room = 0; room < graph.RoomCount(); ++room) {
        if (!graph.pins[room])
            continue;
        if (pinned != NoRoom)
            joined.Join(room, pinned);
        pinned = room;
    }
    return joined;
}

} // namespace

std::vector<Term> TermsOf(const MapGraph& graph) {
    std::vector<Term> terms;
    std::unordered_map<std::uint64_t, int> known;
    for (const Exit& exit : graph.exits) {
        if (exit.to == NoRoom || exit.to == exit.from)
            continue;
        const Term term = Normal({exit.from, exit.to, exit.direction, 1});
        const std::uint64_t key = (static_cast<std::uint64_t>(term.a) << 34U) |
                                  (static_cast<std::uint64_t>(term.b) << 2U) |
                                  static_cast<std::uint64_t>(term.direction);
        const auto [entry, isNew] = known.emplace(key, static_cast<int>(terms.size()));
        if (isNew)
            terms.push_back(term);
        else
            ++terms[entry->second].weight;
    }
    return terms;
}

bool Group::HasPins() const {
    return std::any_of(pins.begin(), pins.end(), [](const auto& pin) { return pin.has_value(); });
}

std::vector<Group> GroupsOf(const MapGraph& graph, const std::vector<Term>& terms) {
    Unions joined = JoinedRooms(graph, terms);
    std::vector<char> wanted(graph.RoomCount(), 0);
    for (const Term& term : terms)
        wanted[term.a] = wanted[term.b] = 1;
    std::vector<int> groupOf(graph.RoomCount(), NoRoom);
    std::vector<int> local(graph.RoomCount(), NoRoom);
    std::vector<Group> groups;
    for (int room = 0; room < graph.RoomCount(); ++room) {
        if (!wanted[room] && !graph.pins[room])
            continue;
        int& group = groupOf[joined.Find(room)];
        if (group == NoRoom) {
            group = static_cast<int>(groups.size());
            groups.emplace_back();
        }
        local[room] = groups[group].Size();
        groups[group].rooms.push_back(room);
        groups[group].pins.push_back(graph.pins[room]);
    }
    for (const Term& term : terms)
        groups[groupOf[joined.Find(term.a)]].terms.push_back(
            {local[term.a], local[term.b], term.direction, term.weight});
    std::stable_sort(groups.begin(), groups.end(),
                     [](const Group& a, const Group& b) { return a.Size() > b.Size(); });
    return groups;
}

TermLists::TermLists(int rooms, const std::vector<Term>& terms)
    : starts_(rooms + 1, 0),
      entries_(terms.size() * 2) {
    for (const Term& term : terms) {
        ++starts_[term.a + 1];
        ++starts_[term.b + 1];
    }
    std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
    std::vector<int> next(starts_.begin(), starts_.end() - 1);
    for (int term = 0; term < static_cast<int>(terms.size()); ++term) {
        entries_[next[terms[term].a]++] = term;
        entries_[next[terms[term].b]++] = term;
    }
}

} // namespace zem::map
