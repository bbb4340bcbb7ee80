#include "map/Conflicts.h"

#include <algorithm>
#include <tuple>

namespace zem::map {

namespace {

constexpr Cost SlackOfCut = 280; // what a cut may cost before the lines that it frees are counted

/// A line through a point where lines of several slants meet.
struct Passing {
    bool between;
    Cell cell;
    int line;
};

class Finder {
public:
    explicit Finder(const Drawing& drawing) : drawing_(drawing) {
        const std::vector<Term>& terms = drawing.Rooms().terms;
        for (int line = 0; line < static_cast<int>(terms.size()); ++line)
            if (const int length = drawing.StraightLength(line); length > 0)
                ForEachPoint(drawing.Of(terms[line].a), terms[line].direction, length,
                             [&](Cell cell, bool between) { Look(line, cell, between); });
        FindCrossings();
    }

    std::vector<Conflict> Found() { return std::move(found_); }

private:
    void Look(int line, Cell cell, bool between) {
        const Grid::Spot* spot = drawing_.Spots().Find(cell);
        if (!between && spot->room != NoRoom)
            found_.push_back({line, spot->room, -1, cell});
        const bool crossed = between ? spot->between[0] > 0 && spot->between[1] > 0
                                     : (spot->lines[0] > 0) + (spot->lines[1] > 0) + (spot->lines[2] > 0) +
                                               (spot->lines[3] > 0) >
                                           1;
        if (crossed)
            passing_.push_back({between, cell, line});
    }

    void FindCrossings() {
        std::stable_sort(passing_.begin(), passing_.end(), [](const Passing& a, const Passing& b) {
            return std::tie(a.between, a.cell) < std::tie(b.between, b.cell);
        });
        for (std::size_t i = 0; i < passing_.size(); ++i)
            for (std::size_t k = i + 1; k < passing_.size() && passing_[k].between == passing_[i].between &&
                                        passing_[k].cell == passing_[i].cell;
                 ++k)
                if (Slant(passing_[i].line) != Slant(passing_[k].line))
                    found_.push_back({passing_[i].line, NoRoom, passing_[k].line, passing_[i].cell});
    }

    int Slant(int line) const { return drawing_.Rooms().terms[line].direction % Grid::Slants; }

    const Drawing& drawing_;
    std::vector<Passing> passing_;
    std::vector<Conflict> found_;
};

} // namespace

std::vector<Conflict> ConflictsOf(const Drawing& drawing) {
    return Finder(drawing).Found();
}

Parter::Parter(Drawing& drawing, Shifter& shifter, Effort& effort)
    : drawing_(drawing),
      shifter_(shifter),
      effort_(effort) {}

int Parter::PartAll(int window) {
    window_ = window;
    int parted = 0;
    for (const Conflict& conflict : ConflictsOf(drawing_)) {
        if (effort_.IsOver())
            break;
        if (!IsNew(conflict, window))
            continue;
        if (Part(conflict))
            ++parted;
        else
            tried_[{conflict.line, conflict.room, conflict.other}] = {window, drawing_.Clock()};
    }
    return parted;
}

/// Whether the conflict was not tried before, or something has moved since.
bool Parter::IsNew(const Conflict& conflict, int window) const {
    const auto found = tried_.find({conflict.line, conflict.room, conflict.other});
    if (found == tried_.end() || found->second.window < window)
        return true;
    const int since = found->second.clock;
    const auto moved = [&](const Term& term) {
        return drawing_.MovedNear(term.a, since) || drawing_.MovedNear(term.b, since);
    };
    return moved(Line(conflict.line)) ||
           (conflict.room != NoRoom ? drawing_.MovedNear(conflict.room, since) : moved(Line(conflict.other)));
}

bool Parter::Part(const Conflict& conflict) {
    if (drawing_.StraightLength(conflict.line) == 0)
        return false;
    if (conflict.room != NoRoom)
        return PartRoom(conflict.line, conflict.room);
    const int first = conflict.line;
    const int second = conflict.other;
    return drawing_.StraightLength(second) > 0 && Touch(first, second, {}, {}) &&
           (PullEnd(first, second) || PullEnd(second, first) || PushAway(first, second) ||
            PushAway(second, first));
}

/// How far along the line the cell lies, strictly between its ends; 0 when it does not.
int Parter::PlaceOn(int line, Cell cell) const {
    const Cell way = cell - drawing_.Of(Line(line).a);
    return IsExact(way, Line(line).direction) && Length(way) < drawing_.StraightLength(line) ? Length(way)
                                                                                             : 0;
}

bool Parter::Shift(const std::vector<int>& moves, const std::vector<int>& stays, Cell shift) {
    for (const int room : moves)
        if (std::find(stays.begin(), stays.end(), room) != stays.end())
            return false;
    return shifter_.ShiftRoom(moves, stays, shift, window_, SlackOfCut);
}

/// The room moves off the line, the line off the room, or an end of the line stops before the room.
bool Parter::PartRoom(int line, int room) {
    const Term& term = Line(line);
    const int place = PlaceOn(line, drawing_.Of(room));
    if (place == 0)
        return false;
    const Cell step = Step(term.direction);
    const int rest = drawing_.StraightLength(line) - place;
    for (int length = 1; length <= 2; ++length)
        for (const int turn : {2, 6, 1, 7, 3, 5}) {
            const Cell shift = length * Step((term.direction + turn) % DirectionCount);
            if (Shift({room}, {term.a, term.b}, shift) || Shift({term.a, term.b}, {room}, -shift))
                return true;
        }
    return (rest > 1 && (Shift({term.a}, {room, term.b}, (place + 1) * step) ||
                         Shift({room}, {term.a}, -((place + 1) * step)))) ||
           (place > 1 && (Shift({term.b}, {room, term.a}, -((rest + 1) * step)) ||
                          Shift({room}, {term.b}, (rest + 1) * step)));
}

/// One end of the first line is drawn back behind the second.
bool Parter::PullEnd(int first, int second) {
    const Term& line = Line(first);
    const Term& fence = Line(second);
    const int length = drawing_.StraightLength(first);
    const Cell step = Step(line.direction);
    for (int back = 1; back < length; ++back) {
        if (!Touch(first, second, {}, -(back * step)) &&
            Shift({line.b}, {line.a, fence.a, fence.b}, -(back * step)))
            return true;
        if (!Touch(first, second, back * step, {}))
            return Shift({line.a}, {line.b, fence.a, fence.b}, back * step);
    }
    return false;
}

/// The first line moves along the second until it is past one of its ends.
bool Parter::PushAway(int first, int second) {
    const Term& line = Line(first);
    const Term& fence = Line(second);
    const int length = drawing_.StraightLength(second);
    for (const int sign : {1, -1})
        for (int away = 1; away <= length; ++away) {
            const Cell shift = sign * away * Step(fence.direction);
            if (Touch(first, second, shift, shift))
                continue;
            if (Shift({line.a, line.b}, {fence.a, fence.b}, shift) ||
                Shift({fence.a, fence.b}, {line.a, line.b}, -shift) ||
                Shift({sign > 0 ? fence.b : fence.a}, {line.a, line.b}, -shift))
                return true;
            break;
        }
    return false;
}

/// Whether the lines would touch if the ends of the first moved so.
bool Parter::Touch(int first, int second, Cell shiftA, Cell shiftB) const {
    const Cell a = drawing_.Of(Line(first).a) + shiftA;
    const Cell b = drawing_.Of(Line(first).b) + shiftB;
    const Cell c = drawing_.Of(Line(second).a);
    const Cell d = drawing_.Of(Line(second).b);
    const auto side = [](Cell from, Cell to, Cell point) {
        const std::int64_t turn = std::int64_t{to.x - from.x} * (point.y - from.y) -
                                  std::int64_t{to.y - from.y} * (point.x - from.x);
        return (turn > 0) - (turn < 0);
    };
    return side(a, b, c) * side(a, b, d) <= 0 && side(c, d, a) * side(c, d, b) <= 0;
}

} // namespace zem::map
