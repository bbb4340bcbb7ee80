#include "map/Docking.h"

#include "map/Compact.h"
#include "map/DockMatching.h"

namespace zem::map {

namespace {

constexpr Cost SlackOfDock = CostOfFarHost + 40;

/// Makes room around hosts whose docked rooms are too far away.
class Widener {
public:
    Widener(Drawing& drawing, Effort& effort)
        : drawing_(drawing),
          effort_(effort),
          shifter_(drawing, effort) {}

    void WidenAll(int window) {
        for (int term = 0; term < static_cast<int>(drawing_.Rooms().terms.size()) && !effort_.IsOver();
             ++term)
            if (drawing_.IsDock(term) && !drawing_.IsTrue(term) &&
                drawing_.Rooms().pins[drawing_.Rooms().terms[term].b] == std::nullopt)
                Widen(drawing_.Rooms().terms[term], window);
    }

    Shifter& Shifts() { return shifter_; }

private:
    /// Shifts a room next to the host away; the docked room takes the cell that becomes free.
    void Widen(const Term& dock, int window) {
        const Cost before = drawing_.Total();
        const int untrue = drawing_.Untrue();
        const auto moveIn = [&] { return MoveIn(dock, before, untrue); };
        if (MoveIn(dock, before, untrue))
            return;
        const Cell host = drawing_.Of(dock.a);
        for (const Cell cell : CellsNear(host)) {
            const int blocker = drawing_.RoomAt(cell);
            if (blocker == NoRoom)
                continue;
            for (Direction direction = 0; direction < DirectionCount; ++direction) {
                const Cell shift = Step(direction);
                const Cell way = cell - host;
                if (way.x * shift.x + way.y * shift.y <= 0)
                    continue;
                if (shifter_.ShiftRoom({blocker}, {dock.a, dock.b}, shift, window, SlackOfDock, moveIn))
                    return;
            }
        }
    }

    /// Takes the best open cell beside the host, if all in all that is better than before.
    bool MoveIn(const Term& dock, Cost before, int untrue) {
        if (drawing_.Untrue() > untrue)
            return false;
        for (const Cell cell : CellsNear(drawing_.Of(dock.a))) {
            const Grid::Spot* spot = drawing_.Spots().Find(cell);
            if (spot != nullptr && (spot->room != NoRoom || LinesOver(*spot) > 0))
                continue;
            const Cell shift = cell - drawing_.Of(dock.b);
            drawing_.Move({dock.b}, shift);
            if (drawing_.Total() < before)
                return true;
            drawing_.Move({dock.b}, -shift);
            return false;
        }
        return false;
    }

    Drawing& drawing_;
    Effort& effort_;
    Shifter shifter_;
};

int NearCount(const Drawing& drawing) {
    int near = 0;
    for (int term = 0; term < static_cast<int>(drawing.Rooms().terms.size()); ++term)
        near += drawing.IsDock(term) && drawing.IsTrue(term);
    return near;
}

} // namespace

std::vector<Cell> Dock(const Group& group, int base, std::vector<Cell> cells, Effort& effort) {
    MatchDocks(group, base, cells);
    Drawing drawing(group, cells);
    Widener widener(drawing, effort);
    widener.WidenAll(40);
    widener.WidenAll(400);
    // The rooms may have changed places since the first match.
    std::vector<Cell> again(drawing.Cells().begin(), drawing.Cells().begin() + base);
    MatchDocks(group, base, again);
    const Drawing rematched(group, again);
    return NearCount(rematched) >= NearCount(drawing) && rematched.Total() < drawing.Total()
               ? again
               : drawing.Cells();
}

} // namespace zem::map
