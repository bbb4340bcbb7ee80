#include "play/State.h"

#include <algorithm>
#include <unordered_map>

namespace zem::play {

namespace {

std::uint64_t Mix(std::uint64_t value) {
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31U);
}

} // namespace

std::uint64_t NextRandom(std::uint64_t& state) {
    return Mix(state += 0x9E3779B97F4A7C15U);
}

State::State(std::shared_ptr<const Names> names, std::span<const std::int64_t> start,
             std::span<const std::uint32_t> order)
    : names_(std::move(names)),
      cells_(start.begin(), start.end()),
      order_(order.begin(), order.end()) {
    IndexRooms();
}

void State::Set(Cell cell, std::int64_t value) {
    const std::int64_t before = cells_[cell];
    if (before == value)
        return;
    const auto bits = static_cast<std::uint64_t>(before);
    journal_.push_back({cell, static_cast<std::uint32_t>(bits), static_cast<std::uint32_t>(bits >> 32U)});
    Put(cell, value);
}

void State::Put(Cell cell, std::int64_t value) {
    const std::int64_t before = cells_[cell];
    fingerprint_ ^= HashOf(cell, before) ^ HashOf(cell, value);
    cells_[cell] = value;
    if (names_->Use(cell) == CellUse::Where)
        MoveThing(names_->ThingOf(cell), before, value);
}

std::uint64_t State::HashOf(Cell cell, std::int64_t value) const {
    const std::uint64_t content =
        names_->Use(cell) == CellUse::Text ? texts_.Hash(value) : static_cast<std::uint64_t>(value);
    return Mix(Mix(content + 0x632BE59BD9B4E019U) + cell);
}

void State::GoBackTo(const Mark& mark) {
    while (journal_.size() > mark.writes) {
        const Write last = journal_.back();
        journal_.pop_back();
        Put(last.cell, last.Before());
    }
    texts_.Shrink(mark.texts);
}

void State::Tidy(const Mark& mark) {
    constexpr std::size_t Few = 8;
    const std::size_t count = journal_.size() - mark.writes;
    if (count > Few) {
        // Of several writes to a cell only the first knows what it held before the turn.
        std::unordered_map<Cell, std::int64_t> firsts;
        std::vector<Write> kept;
        for (std::size_t k = mark.writes; k < journal_.size(); ++k)
            if (firsts.emplace(journal_[k].cell, journal_[k].Before()).second &&
                cells_[journal_[k].cell] != journal_[k].Before())
                kept.push_back(journal_[k]);
        journal_.resize(mark.writes);
        journal_.insert(journal_.end(), kept.begin(), kept.end());
    }
    if (texts_.Count() <= mark.texts + 1U)
        return;
    std::vector<std::pair<Cell, std::string>> held;
    for (std::size_t k = mark.writes; k < journal_.size(); ++k) {
        const Cell cell = journal_[k].cell;
        if (names_->Use(cell) != CellUse::Text)
            continue;
        if (TextTable::IsBehind(journal_[k].Before(), mark.texts))
            return; // written twice; rare enough to keep
        if (TextTable::IsBehind(cells_[cell], mark.texts))
            held.emplace_back(cell, Text(cell));
    }
    texts_.Shrink(mark.texts);
    for (const auto& [cell, text] : held)
        cells_[cell] = texts_.Add(text);
}

void State::MoveThing(Number thing, std::int64_t from, std::int64_t to) {
    const std::uint32_t place = thing < order_.size() ? order_[thing] : None;
    const auto placeIn = [&](std::vector<Number>& things) {
        return std::lower_bound(things.begin(), things.end(), place,
                                [&](Number other, std::uint32_t wanted) { return order_[other] < wanted; });
    };
    if (place == None)
        return;
    auto& before = thingsIn_[static_cast<std::size_t>(from)];
    before.erase(placeIn(before));
    auto& after = thingsIn_[static_cast<std::size_t>(to)];
    after.insert(placeIn(after), thing);
}

void State::IndexRooms() {
    thingsIn_.assign(names_->Count(Kind::Room) + std::size_t{1}, {});
    std::vector<Number> inOrder;
    for (Number thing = 0; thing < order_.size(); ++thing)
        if (order_[thing] != None)
            inOrder.push_back(thing);
    std::sort(inOrder.begin(), inOrder.end(), [&](Number a, Number b) { return order_[a] < order_[b]; });
    for (const Number thing : inOrder)
        thingsIn_[static_cast<std::size_t>(cells_[names_->CellOf(Kind::Thing, thing) + Where])].push_back(
            thing);
}

const std::vector<Number>& State::ThingsIn(std::int64_t room) const {
    return thingsIn_[static_cast<std::size_t>(room)];
}

std::int64_t State::Roll(std::int64_t highest) {
    if (highest < 1)
        return 1;
    const auto count = static_cast<std::uint64_t>(highest);
    const std::uint64_t limit = UINT64_MAX - UINT64_MAX % count; // the largest multiple of it
    auto state = static_cast<std::uint64_t>(cells_[Chance]);
    std::uint64_t drawn = 0;
    do
        drawn = NextRandom(state);
    while (drawn >= limit);
    Set(Chance, static_cast<std::int64_t>(state));
    return static_cast<std::int64_t>(drawn % count) + 1;
}

void State::Rebase(std::span<const std::int64_t> oldStart, std::span<const std::int64_t> newStart,
                   std::span<const std::uint32_t> order) {
    const std::vector<std::int64_t> old = std::move(cells_);
    cells_.assign(newStart.begin(), newStart.end());
    fingerprint_ = 0;
    journal_.clear();
    for (std::size_t cell = 0; cell < cells_.size(); ++cell) {
        if (cell < old.size() && old[cell] != oldStart[cell])
            cells_[cell] = old[cell];
        if (cells_[cell] != newStart[cell]) {
            const auto at = static_cast<Cell>(cell);
            fingerprint_ ^= HashOf(at, newStart[cell]) ^ HashOf(at, cells_[cell]);
        }
    }
    order_.assign(order.begin(), order.end());
    IndexRooms();
}

} // namespace zem::play
