#pragma once

#include "map/Shifter.h"

#include <map>
#include <tuple>

namespace zem::map {

/// A straight line over a room, or over another straight line.
struct Conflict {
    int line = 0;
    int room = NoRoom; // the room that it runs over
    int other = -1;    // or the line that it crosses
    Cell cell;         // where
};

/// All conflicts of the drawing, in a fixed order.
std::vector<Conflict> ConflictsOf(const Drawing& drawing);

/// Parts rooms from the lines over them, and lines that cross. Remembers what was tried in vain, so that a
/// later call looks only where something has changed.
class Parter {
public:
    Parter(Drawing& drawing, Shifter& shifter, Effort& effort);

    /// Tries every conflict by shifts in a window of so many rooms; each is kept when the drawing becomes
    /// cheaper by it. Returns how many were.
    int PartAll(int window);

private:
    struct Tried {
        int window = 0;
        int clock = -1;
    };

    const Term& Line(int line) const { return drawing_.Rooms().terms[line]; }
    bool IsNew(const Conflict& conflict, int window) const;
    bool Part(const Conflict& conflict);
    int PlaceOn(int line, Cell cell) const;
    bool Touch(int first, int second, Cell shiftA, Cell shiftB) const;
    bool Shift(const std::vector<int>& moves, const std::vector<int>& stays, Cell shift);
    bool PartRoom(int line, int room);
    bool PullEnd(int first, int second);
    bool PushAway(int first, int second);

    Drawing& drawing_;
    Shifter& shifter_;
    Effort& effort_;
    int window_ = 0;
    std::map<std::tuple<int, int, int>, Tried> tried_; // by line, room and other line
};

} // namespace zem::map
