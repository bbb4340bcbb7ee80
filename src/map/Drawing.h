#pragma once

#include "map/Cost.h"
#include "map/Grid.h"
#include "map/Terms.h"

#include <vector>

namespace zem::map {

/// Adds up 64 bits: what a whole drawing costs.
using Cost = std::int64_t;

/// A group of rooms in their cells, no two in one, and what the drawing costs. A move costs time for what it
/// moves and nothing for the rest.
class Drawing {
public:
    /// @param cells  of the group's rooms, each in a cell of its own
    Drawing(const Group& group, std::vector<Cell> cells);

    const Group& Rooms() const { return group_; }
    const TermLists& Lists() const { return lists_; }
    const std::vector<Cell>& Cells() const { return cells_; }
    Cell Of(int room) const { return cells_[room]; }
    int RoomAt(Cell cell) const { return grid_.RoomAt(cell); }
    const Grid& Spots() const { return grid_; }
    bool IsPinned(int room) const { return group_.pins[room].has_value(); }

    Cell Way(const Term& term) const { return cells_[term.b] - cells_[term.a]; }
    bool IsTrue(int term) const { return map::IsTrue(Way(group_.terms[term]), group_.terms[term].direction); }
    bool IsDock(int term) const { return group_.terms[term].direction == Anywhere; }
    /// The length of a line that is drawn straight and looked after, else 0.
    int StraightLength(int term) const { return straight_[term]; }

    Cost Total() const { return total_; }
    /// The weights of all directions that are not true.
    int Untrue() const { return untrue_; }

    /// Moves the rooms of the set by the shift: their new cells are free or belong to the set. Returns by how
    /// much the cost of the drawing grew.
    Cost Move(const std::vector<int>& set, Cell shift);

    /// Notes that the set was moved for good, and not on trial.
    void NoteMoved(const std::vector<int>& set);
    /// How many sets were moved for good, and when this room was for the last time.
    int Clock() const { return clock_; }
    /// How many rooms the last move took along.
    int LastMoved() const { return lastMoved_; }
    /// How much work all moves were so far, in steps like those of MinimumCut.
    std::int64_t Work() const { return work_; }
    /// Whether the room or one next to it was moved since then.
    bool MovedNear(int room, int since) const;

private:
    bool Owns(int term, int room) const;
    void Take(const std::vector<int>& set);
    void Put(const std::vector<int>& set);
    void AddTerm(int term);
    void RemoveTerm(int term);
    void AddLine(int term);
    void RemoveLine(int term);

    const Group& group_;
    TermLists lists_;
    std::vector<Cell> cells_;
    Grid grid_;
    std::vector<int> straight_; // the registered length of each term's line
    std::vector<char> marked_;  // rooms of the set that moves
    Cost total_ = 0;
    int untrue_ = 0;
    int clock_ = 0;
    int lastMoved_ = 0;
    std::int64_t work_ = 0;
    std::vector<int> movedAt_;
};

/// A line longer than this is never drawn whole, so that what it runs over is of no account.
inline constexpr int LongestLine = 60;

/// Calls for every cell that a straight line passes between its ends, and for the points between two cells
/// where diagonals may cross: visit(cell, isBetween); such a point is named by the cell to its northwest.
template <class Visit>
void ForEachPoint(Cell from, Direction direction, int length, Visit visit) {
    const Cell step = Step(direction);
    if (IsDiagonal(direction)) {
        const Cell corner{std::min(step.x, 0), std::min(step.y, 0)};
        visit(from + corner, true);
        for (int k = 1; k < length; ++k) {
            const Cell cell = from + k * step;
            visit(cell, false);
            visit(cell + corner, true);
        }
        return;
    }
    for (int k = 1; k < length; ++k)
        visit(from + k * step, false);
}

} // namespace zem::map
