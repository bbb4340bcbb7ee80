#include "map/Mend.h"

#include <algorithm>
#include <map>

namespace zem::map {

namespace {

constexpr int ShiftsOfTerm = 5;
constexpr std::size_t CommonShifts = 8;

} // namespace

std::vector<Cell> WantedShifts(Cell way, Direction direction, int count) {
    const Cell step = Step(direction);
    const int norm = IsDiagonal(direction) ? 2 : 1;
    const int along = std::max(1, (way.x * step.x + way.y * step.y) / norm);
    std::vector<Cell> shifts;
    for (int length = std::max(1, along - count); length <= along + count; ++length)
        shifts.push_back(length * step - way);
    std::stable_sort(shifts.begin(), shifts.end(), [](Cell a, Cell b) { return Length(a) < Length(b); });
    if (static_cast<int>(shifts.size()) > count)
        shifts.resize(count);
    return shifts;
}

Mender::Mender(Drawing& drawing, Shifter& shifter, Effort& effort)
    : drawing_(drawing),
      shifter_(shifter),
      effort_(effort),
      triedAt_(drawing.Rooms().terms.size(), -1),
      triedWindow_(drawing.Rooms().terms.size(), 0) {}

void Mender::MendAtOnce() {
    const std::vector<Term>& terms = drawing_.Rooms().terms;
    std::map<Cell, int> wanted;
    for (int term = 0; term < static_cast<int>(terms.size()); ++term)
        if (!drawing_.IsTrue(term) && !drawing_.IsDock(term))
            for (const Cell shift :
                 WantedShifts(drawing_.Way(terms[term]), terms[term].direction, ShiftsOfTerm)) {
                wanted[shift] += terms[term].weight;
                wanted[-shift] += terms[term].weight;
            }
    std::vector<std::pair<int, Cell>> common;
    for (const auto& [shift, count] : wanted)
        common.emplace_back(-count, shift);
    std::sort(common.begin(), common.end());
    if (common.size() > CommonShifts)
        common.resize(CommonShifts);
    for (const auto& [count, shift] : common)
        shifter_.ShiftAny(shift);
}

/// True when neither of the rooms nor any next to them was moved since the term was last tried.
bool Mender::NothingMoved(int term) const {
    const Term& bad = drawing_.Rooms().terms[term];
    return !drawing_.MovedNear(bad.a, triedAt_[term]) && !drawing_.MovedNear(bad.b, triedAt_[term]);
}

bool Mender::Mend(int term, int window) {
    const Term& bad = drawing_.Rooms().terms[term];
    for (const Cell shift : WantedShifts(drawing_.Way(bad), bad.direction, ShiftsOfTerm)) {
        if (effort_.IsOver())
            return false;
        if (shifter_.ShiftRoom({bad.b}, {bad.a}, shift, window, 0) ||
            shifter_.ShiftRoom({bad.a}, {bad.b}, -shift, window, 0))
            return true;
    }
    triedAt_[term] = drawing_.Clock();
    triedWindow_[term] = window;
    return false;
}

void Mender::MendEach(int window) {
    for (int term = 0; term < static_cast<int>(triedAt_.size()) && !effort_.IsOver(); ++term)
        if (!drawing_.IsTrue(term) && !drawing_.IsDock(term) &&
            (triedAt_[term] < 0 || triedWindow_[term] < window || !NothingMoved(term)))
            Mend(term, window);
}

} // namespace zem::map
