#pragma once

#include "map/Drawing.h"
#include "map/Effort.h"
#include "map/MinimumCut.h"

#include <functional>
#include <vector>

namespace zem::map {

/// The one move of the layout: shift the cheapest set of rooms, so that nothing is ever run into.
///
/// The set is a minimum cut: a term pays for its state when neither, only the first or only the second of its
/// rooms moves; and who moves into a taken cell takes its room along. Where a bad term would be mended by the
/// shift the other half-move is made dearer until the prices can be cut; so a cut never promises more than it
/// gives.
class Shifter {
public:
    Shifter(Drawing& drawing, Effort& effort);

    /// Each room pays this for leaving its cell, so that a map that its author knows stays as it is.
    void SetStayPrice(int price) { stayPrice_ = price; }
    /// These rooms never move, as pinned ones do not; the others do.
    void Hold(const std::vector<char>& held);

    /// Shifts whatever is cheaper elsewhere. Returns how much the cost of the drawing fell.
    Cost ShiftAny(Cell shift);

    /// Shifts the first room, and what goes best with it, of a window of so many rooms around it, while
    /// `stays` does not move: when that makes the drawing cheaper. A cut that costs `slack` or more before
    /// lines over rooms and crossings are counted is not tried.
    bool ShiftRoom(const std::vector<int>& moves, const std::vector<int>& stays, Cell shift, int window,
                   Cost slack);

    /// The same, with more to do while the shift is on trial: `onTrial` may move further rooms and tells
    /// whether all is to stay; if not it has taken its own moves back.
    bool ShiftRoom(const std::vector<int>& moves, const std::vector<int>& stays, Cell shift, int window,
                   Cost slack, const std::function<bool()>& onTrial);

private:
    void CollectWindow(const std::vector<int>& seeds, const std::vector<int>& stays, int size);
    void Enter(int room);
    bool Build(Cell shift);
    void AddTerm(const Term& term, Cell shift);
    void AddBlocker(int thing, Cell shift);
    Cost ApplyPieces(Cell shift);
    void TakeSmallerSide(std::vector<int>& set, Cell& shift) const;
    bool TryOut(const std::vector<int>& set, Cell shift, const std::function<bool()>& onTrial);
    std::vector<int> CheapestSet(const std::vector<int>& moves, Cell shift, Cost slack);
    Cost Apply(std::vector<int> set, Cell shift);
    void LeaveWindow();
    std::int64_t Work() const { return cut_.Work() + drawing_.Work() + built_; }

    Drawing& drawing_;
    Effort& effort_;
    MinimumCut cut_;
    int stayPrice_ = 0;
    std::vector<char> held_;
    bool hasHeld_ = false;
    std::vector<int> window_; // the rooms that may move
    std::vector<int> things_; // for each room its number in the window, or -1
    std::vector<char> stays_;
    std::vector<int> pieceOf_;
    std::int64_t built_ = 0; // steps of work for networks that were made
};

} // namespace zem::map
