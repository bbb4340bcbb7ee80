#include "map/Shifter.h"

#include <algorithm>
#include <numeric>

namespace zem::map {

namespace {

constexpr int Outside = -1;
constexpr int StepsToBuild = 4; // to put it into a network

/// What a term costs in the four cases.
struct Prices {
    Cost none;   // neither or both of its rooms move
    Cost first;  // only the first
    Cost second; // only the second
};

Cost PriceOf(const Term& term, Cell way) {
    return Cost{term.weight} * TermCost(way, term.direction);
}

Prices PricesOf(const Term& term, Cell way, Cell shift) {
    Prices prices{PriceOf(term, way), PriceOf(term, way - shift), PriceOf(term, way + shift)};
    // A cut cannot reward two rooms for parting: the half-move that does not mend pays for the one that does.
    const Cost missing = 2 * prices.none - prices.first - prices.second;
    if (missing > 0)
        (prices.first < prices.second ? prices.second : prices.first) += missing;
    return prices;
}

} // namespace

Shifter::Shifter(Drawing& drawing, Effort& effort)
    : drawing_(drawing),
      effort_(effort),
      held_(drawing.Rooms().Size(), 0),
      things_(drawing.Rooms().Size(), Outside),
      stays_(drawing.Rooms().Size(), 0),
      pieceOf_(drawing.Rooms().Size(), Outside) {
    Hold(held_);
}

void Shifter::Hold(const std::vector<char>& held) {
    hasHeld_ = false;
    for (int room = 0; room < drawing_.Rooms().Size(); ++room) {
        held_[room] = held[room] || drawing_.IsPinned(room);
        hasHeld_ = hasHeld_ || held_[room];
    }
}

void Shifter::Enter(int room) {
    if (things_[room] != Outside || stays_[room] || held_[room])
        return;
    things_[room] = static_cast<int>(window_.size());
    window_.push_back(room);
}

/// The rooms nearest to the seeds along terms.
void Shifter::CollectWindow(const std::vector<int>& seeds, const std::vector<int>& stays, int size) {
    for (const int room : stays)
        stays_[room] = 1;
    for (const int room : seeds)
        Enter(room);
    const TermLists& lists = drawing_.Lists();
    const std::vector<Term>& terms = drawing_.Rooms().terms;
    for (std::size_t head = 0; head < window_.size() && static_cast<int>(window_.size()) < size; ++head) {
        const int room = window_[head];
        for (const int* term = lists.begin(room); term != lists.end(room); ++term)
            Enter(terms[*term].a == room ? terms[*term].b : terms[*term].a);
    }
}

void Shifter::LeaveWindow() {
    for (const int room : window_)
        things_[room] = Outside;
    window_.clear();
}

void Shifter::AddTerm(const Term& term, Cell shift) {
    const Cell way = drawing_.Way(term);
    const int first = things_[term.a];
    const int second = things_[term.b];
    if (first == Outside) {
        cut_.CostOfMoving(second, PriceOf(term, way + shift) - PriceOf(term, way));
        return;
    }
    if (second == Outside) {
        cut_.CostOfMoving(first, PriceOf(term, way - shift) - PriceOf(term, way));
        return;
    }
    const Prices prices = PricesOf(term, way, shift);
    // none + (first - none) [a] + (none - first) [b] + (first + second - 2 none) [b without a]
    const Cost alone = prices.first - prices.none;
    if (alone != 0) {
        cut_.CostOfMoving(first, alone);
        cut_.CostOfMoving(second, -alone);
    }
    const Cost apart = prices.first + prices.second - 2 * prices.none;
    if (apart != 0)
        cut_.CostApart(second, first, apart, 0);
}

/// Who moves into a taken cell takes its room along, or cannot move.
void Shifter::AddBlocker(int thing, Cell shift) {
    const int blocker = drawing_.RoomAt(drawing_.Of(window_[thing]) + shift);
    if (blocker == NoRoom)
        return;
    if (things_[blocker] == Outside)
        cut_.CostOfMoving(thing, MinimumCut::Infinite);
    else
        cut_.CostApart(thing, things_[blocker], MinimumCut::Infinite, 0);
}

bool Shifter::Build(Cell shift) {
    const TermLists& lists = drawing_.Lists();
    const std::vector<Term>& terms = drawing_.Rooms().terms;
    cut_.Begin(static_cast<int>(window_.size()));
    for (int thing = 0; thing < static_cast<int>(window_.size()); ++thing) {
        const int room = window_[thing];
        if (stayPrice_ != 0)
            cut_.CostOfMoving(thing, stayPrice_);
        AddBlocker(thing, shift);
        built_ += StepsToBuild * (lists.end(room) - lists.begin(room));
        for (const int* term = lists.begin(room); term != lists.end(room); ++term)
            if (terms[*term].a == room || things_[terms[*term].a] == Outside)
                AddTerm(terms[*term], shift);
    }
    return !window_.empty();
}

/// To move more than half of a map one way is to move the rest the other way.
void Shifter::TakeSmallerSide(std::vector<int>& set, Cell& shift) const {
    const int count = drawing_.Rooms().Size();
    if (stayPrice_ != 0 || hasHeld_ || static_cast<int>(set.size()) * 2 <= count)
        return;
    std::vector<char> isMember(count, 0);
    for (const int room : set)
        isMember[room] = 1;
    set.clear();
    for (int room = 0; room < count; ++room)
        if (!isMember[room])
            set.push_back(room);
    shift = -shift;
}

/// Moves the set, or takes it back when that costs more. Returns how much the cost fell, at least 0.
Cost Shifter::Apply(std::vector<int> set, Cell shift) {
    TakeSmallerSide(set, shift);
    const Cost paid = Cost{stayPrice_} * static_cast<Cost>(set.size());
    const Cost grown = drawing_.Move(set, shift) + paid;
    if (grown < 0) {
        drawing_.NoteMoved(set);
        return -grown;
    }
    drawing_.Move(set, -shift);
    return 0;
}

Cost Shifter::ShiftAny(Cell shift) {
    if (effort_.IsOver())
        return 0;
    const std::int64_t before = Work();
    for (int room = 0; room < drawing_.Rooms().Size(); ++room)
        Enter(room);
    Cost fallen = 0;
    if (Build(shift) && cut_.Solve(0) < 0)
        fallen = ApplyPieces(shift);
    LeaveWindow();
    effort_.Spend(Work() - before);
    return fallen;
}

/// The set that moves falls into pieces that have nothing to do with each other; each is judged by itself, so
/// that one crossing does not hold up everything else.
Cost Shifter::ApplyPieces(Cell shift) {
    const TermLists& lists = drawing_.Lists();
    const std::vector<Term>& terms = drawing_.Rooms().terms;
    std::vector<int> moving;
    for (int thing = 0; thing < static_cast<int>(window_.size()); ++thing)
        if (cut_.Moves(thing))
            moving.push_back(window_[thing]);
    for (const int room : moving)
        pieceOf_[room] = 0;
    Cost fallen = 0;
    std::vector<std::vector<int>> pieces;
    for (const int seed : moving) {
        if (pieceOf_[seed] != 0)
            continue;
        std::vector<int>& piece = pieces.emplace_back();
        const auto join = [&](int room) {
            if (room == NoRoom || pieceOf_[room] != 0)
                return;
            pieceOf_[room] = 1;
            piece.push_back(room);
        };
        join(seed);
        for (std::size_t head = 0; head < piece.size(); ++head) {
            const int room = piece[head];
            for (const int* term = lists.begin(room); term != lists.end(room); ++term)
                join(terms[*term].a == room ? terms[*term].b : terms[*term].a);
            join(drawing_.RoomAt(drawing_.Of(room) + shift));
            join(drawing_.RoomAt(drawing_.Of(room) - shift));
        }
    }
    for (const int room : moving)
        pieceOf_[room] = Outside;
    for (std::vector<int>& piece : pieces)
        fallen += Apply(std::move(piece), shift);
    return fallen;
}

/// The set that moves, if its price is less than the slack; else none.
std::vector<int> Shifter::CheapestSet(const std::vector<int>& moves, Cell shift, Cost slack) {
    const auto isFree = [&](int room) {
        const int blocker = drawing_.RoomAt(drawing_.Of(room) + shift);
        return things_[room] != Outside && (blocker == NoRoom || things_[blocker] != Outside);
    };
    std::vector<int> set;
    if (!std::all_of(moves.begin(), moves.end(), isFree) || !Build(shift))
        return set;
    for (const int room : moves)
        cut_.MustMove(things_[room]);
    if (cut_.Solve(slack) >= slack)
        return set;
    for (int thing = 0; thing < static_cast<int>(window_.size()); ++thing)
        if (cut_.Moves(thing))
            set.push_back(window_[thing]);
    return set;
}

bool Shifter::ShiftRoom(const std::vector<int>& moves, const std::vector<int>& stays, Cell shift, int window,
                        Cost slack, const std::function<bool()>& onTrial) {
    if (shift == Cell{} || effort_.IsOver())
        return false;
    const std::int64_t before = Work();
    CollectWindow(moves, stays, window);
    const std::vector<int> set = CheapestSet(moves, shift, slack);
    LeaveWindow();
    for (const int room : stays)
        stays_[room] = 0;
    const bool isKept = !set.empty() && TryOut(set, shift, onTrial);
    effort_.Spend(Work() - before);
    return isKept;
}

bool Shifter::TryOut(const std::vector<int>& set, Cell shift, const std::function<bool()>& onTrial) {
    drawing_.Move(set, shift);
    if (onTrial()) {
        drawing_.NoteMoved(set);
        return true;
    }
    drawing_.Move(set, -shift);
    return false;
}

bool Shifter::ShiftRoom(const std::vector<int>& moves, const std::vector<int>& stays, Cell shift, int window,
                        Cost slack) {
    const Cost before = drawing_.Total();
    return ShiftRoom(moves, stays, shift, window, slack,
                     [&] { return drawing_.Total() + Cost{stayPrice_} * drawing_.LastMoved() < before; });
}

} // namespace zem::map
