#include "map/Drawing.h"

#include <cassert>

namespace zem::map {

namespace {

constexpr int StepsToDraw = 4;

/// A term of two rooms at the same distance costs the same, so only those with one room in the set change.
Cost WeightedCost(const Term& term, Cell way) {
    return Cost{term.weight} * TermCost(way, term.direction);
}

/// Which of the two counts of a point between cells belongs to a diagonal.
int DiagonalOf(Direction direction) {
    return direction % 4 == 1 ? 0 : 1;
}

} // namespace

Drawing::Drawing(const Group& group, std::vector<Cell> cells)
    : group_(group),
      lists_(group.Size(), group.terms),
      cells_(std::move(cells)),
      straight_(group.terms.size(), 0),
      marked_(group.Size(), 0),
      movedAt_(group.Size(), 0) {
    for (int room = 0; room < group.Size(); ++room) {
        assert(grid_.RoomAt(cells_[room]) == NoRoom);
        grid_.At(cells_[room]).room = room;
    }
    for (int term = 0; term < static_cast<int>(group.terms.size()); ++term)
        AddTerm(term);
}

void Drawing::AddTerm(int term) {
    const Term& added = group_.terms[term];
    work_ += StepsToDraw;
    total_ += WeightedCost(added, Way(added));
    if (added.direction == Anywhere)
        return;
    AddLine(term);
    if (!IsTrue(term))
        untrue_ += added.weight;
}

void Drawing::RemoveTerm(int term) {
    const Term& removed = group_.terms[term];
    work_ += StepsToDraw;
    total_ -= WeightedCost(removed, Way(removed));
    if (removed.direction == Anywhere)
        return;
    RemoveLine(term);
    if (!IsTrue(term))
        untrue_ -= removed.weight;
}

void Drawing::AddLine(int term) {
    const Term& line = group_.terms[term];
    const Cell way = Way(line);
    const int length = Length(way);
    straight_[term] = 0;
    if (length > LongestLine || !IsExact(way, line.direction))
        return;
    straight_[term] = length;
    work_ += length;
    const int slant = line.direction % Grid::Slants;
    ForEachPoint(cells_[line.a], line.direction, length, [&](Cell cell, bool between) {
        Grid::Spot& spot = grid_.At(cell);
        if (between) {
            const int diagonal = DiagonalOf(line.direction);
            total_ += Cost{CostOfCrossing} * spot.between[1 - diagonal];
            ++spot.between[diagonal];
            return;
        }
        total_ += Cost{CostOfCrossing} * (LinesOver(spot) - spot.lines[slant]);
        if (spot.room != NoRoom)
            total_ += CostOverRoom;
        ++spot.lines[slant];
    });
}

void Drawing::RemoveLine(int term) {
    const Term& line = group_.terms[term];
    if (straight_[term] == 0)
        return;
    work_ += straight_[term];
    const int slant = line.direction % Grid::Slants;
    ForEachPoint(cells_[line.a], line.direction, straight_[term], [&](Cell cell, bool between) {
        Grid::Spot& spot = grid_.At(cell);
        if (between) {
            const int diagonal = DiagonalOf(line.direction);
            total_ -= Cost{CostOfCrossing} * spot.between[1 - diagonal];
            --spot.between[diagonal];
            return;
        }
        --spot.lines[slant];
        total_ -= Cost{CostOfCrossing} * (LinesOver(spot) - spot.lines[slant]);
        if (spot.room != NoRoom)
            total_ -= CostOverRoom;
    });
    straight_[term] = 0;
}

/// A term between two rooms of the set is looked after once, with its first room.
bool Drawing::Owns(int term, int room) const {
    const Term& line = group_.terms[term];
    return line.a == room || !marked_[line.a];
}

void Drawing::Take(const std::vector<int>& set) {
    for (const int room : set)
        for (const int* term = lists_.begin(room); term != lists_.end(room); ++term)
            if (Owns(*term, room))
                RemoveTerm(*term);
    for (const int room : set) {
        Grid::Spot& spot = grid_.At(cells_[room]);
        total_ -= Cost{CostOverRoom} * LinesOver(spot);
        spot.room = NoRoom;
    }
}

void Drawing::Put(const std::vector<int>& set) {
    for (const int room : set) {
        Grid::Spot& spot = grid_.At(cells_[room]);
        assert(spot.room == NoRoom);
        total_ += Cost{CostOverRoom} * LinesOver(spot);
        spot.room = room;
    }
    for (const int room : set)
        for (const int* term = lists_.begin(room); term != lists_.end(room); ++term)
            if (Owns(*term, room))
                AddTerm(*term);
}

Cost Drawing::Move(const std::vector<int>& set, Cell shift) {
    const Cost before = total_;
    lastMoved_ = static_cast<int>(set.size());
    for (const int room : set)
        marked_[room] = 1;
    Take(set);
    for (const int room : set)
        cells_[room] = cells_[room] + shift;
    Put(set);
    for (const int room : set)
        marked_[room] = 0;
    return total_ - before;
}

void Drawing::NoteMoved(const std::vector<int>& set) {
    ++clock_;
    for (const int room : set)
        movedAt_[room] = clock_;
}

bool Drawing::MovedNear(int room, int since) const {
    for (const int* term = lists_.begin(room); term != lists_.end(room); ++term)
        if (movedAt_[group_.terms[*term].a] > since || movedAt_[group_.terms[*term].b] > since)
            return true;
    return movedAt_[room] > since;
}

} // namespace zem::map
