#pragma once

#include "map/MapGraph.h"

#include <vector>

/// The exits as the layout sees them: terms between rooms, and the groups of rooms that they join.
namespace zem::map {

/// The direction of a term that only wants its rooms to be near each other.
inline constexpr Direction Anywhere = DirectionCount;

/// What the map wants to be true: room b lies in this direction from room a. Two exits that are each other's
/// way back are one term of weight 2, any other exit is one of weight 1. A room that no exit reaches has a
/// term without a direction from its host.
struct Term {
    int a = 0;
    int b = 0;
    Direction direction = 0;
    int weight = 1;
};

/// The terms of all exits that lead to another room, in the order of the exits.
std::vector<Term> TermsOf(const MapGraph& graph);

/// Rooms that are laid out together, numbered from 0 within the group.
struct Group {
    std::vector<int> rooms; // by their numbers in the game, ascending
    std::vector<Term> terms;
    std::vector<std::optional<Cell>> pins;

    int Size() const { return static_cast<int>(rooms.size()); }
    bool HasPins() const;
};

/// The rooms with terms, in groups that the terms join, the largest first. All groups in which a room is
/// pinned are one, because their places are bound to each other. Rooms without terms are in none unless
/// pinned.
std::vector<Group> GroupsOf(const MapGraph& graph, const std::vector<Term>& terms);

/// For each room of a group the numbers of its terms.
class TermLists {
public:
    TermLists(int rooms, const std::vector<Term>& terms);

    /// The terms of the room, ascending.
    const int* begin(int room) const { return entries_.data() + starts_[room]; }
    const int* end(int room) const { return entries_.data() + starts_[room + 1]; }

private:
    std::vector<int> starts_;
    std::vector<int> entries_;
};

} // namespace zem::map
