#pragma once

#include "map/Shifter.h"

namespace zem::map {

/// Shifts that would make the term true if its room b, or any part of the map with it, moved: the nearest
/// first.
std::vector<Cell> WantedShifts(Cell way, Direction direction, int count);

/// Makes terms true that are not, as long as the drawing becomes cheaper by it. Remembers what was tried in
/// vain, so that a later call looks only where something has changed.
class Mender {
public:
    Mender(Drawing& drawing, Shifter& shifter, Effort& effort);

    /// The shifts that most untrue terms want, over the whole group at once.
    void MendAtOnce();
    /// Each untrue term by itself, in a window of so many rooms.
    void MendEach(int window);
    bool Mend(int term, int window);

private:
    bool NothingMoved(int term) const;

    Drawing& drawing_;
    Shifter& shifter_;
    Effort& effort_;
    std::vector<int> triedAt_; // the clock of the drawing when the term was last tried in vain
    std::vector<int> triedWindow_;
};

} // namespace zem::map
