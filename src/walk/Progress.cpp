#include "walk/Progress.h"

#include <algorithm>

namespace zem::walk {

using namespace zem::play;

namespace {
constexpr std::size_t ManyWrites = 16; // beyond them none comes twice
}

std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
    std::uint64_t state = a ^ (b * 0x9E3779B97F4A7C15U);
    return NextRandom(state);
}

Progress::Progress(const World& world, const State& state, const CauseMap& causes)
    : world_(world),
      state_(state),
      causes_(causes) {
    NoteRoles();
}

void Progress::NoteRoles() {
    const Names& names = world_.GetNames();
    roles_.assign(names.CellCount(), Role::Ignored);
    owners_.assign(names.CellCount(), None);
    for (const WorldItem& item : world_.Items()) {
        const Cell cell = names.CellOf(Kind::Item, item.number);
        roles_[cell] = Role::Item;
        owners_[cell] = item.number;
    }
    const auto tell = [&](Kind kind, Cell first, Cell count) {
        for (Number number = 0; number < names.Count(kind); ++number)
            for (Cell cell = first; cell < first + count; ++cell)
                roles_[names.CellOf(kind, number) + cell] = Role::Plain;
    };
    tell(Kind::Thing, 0, ThingCells);
    tell(Kind::Room, RoomOff, 1 + DirectionCount);
    tell(Kind::Timer, TimerOn, 1);
    for (Number flag = 0; flag < names.Count(Kind::Flag); ++flag)
        if (const Cell cell = names.CellOf(Kind::Flag, flag); causes_.IsAsked(cell))
            roles_[cell] = Role::Plain;
    for (const Kind kind : {Kind::Variable, Kind::Collectable})
        for (Number number = 0; number < names.Count(kind); ++number)
            if (const Cell cell = names.CellOf(kind, number); !causes_.ComparisonsOf(cell).empty())
                roles_[cell] = Role::Compared;
}

std::uint64_t Progress::PartOfKey(Cell cell, std::int64_t value) const {
    if (roles_[cell] == Role::Ignored)
        return 0;
    if (roles_[cell] != Role::Compared)
        return Mix(cell, static_cast<std::uint64_t>(value));
    std::uint64_t outcomes = 1;
    for (const Fact& comparison : causes_.ComparisonsOf(cell))
        outcomes = outcomes * 3 + (Compares(state_, comparison, value) ? 1 : 0);
    return Mix(cell, outcomes);
}

void Progress::FollowWrites(const State::Mark& since) {
    writes_.clear();
    state_.ForEachWriteSince(since, [&](Cell cell, std::int64_t before) {
        if (roles_[cell] == Role::Ignored)
            return;
        if (writes_.size() > ManyWrites ||
            std::none_of(writes_.begin(), writes_.end(),
                         [&](const auto& write) { return write.first == cell; }))
            writes_.emplace_back(cell, before);
    });
    for (const auto& [cell, before] : writes_)
        FollowWrite(cell, before, state_[cell]);
}

void Progress::FollowWrite(Cell cell, std::int64_t before, std::int64_t now) {
    if (before == now)
        return;
    if (roles_[cell] == Role::Item) {
        if (now != 0)
            had_.insert(std::lower_bound(had_.begin(), had_.end(), owners_[cell]), owners_[cell]);
        else
            std::erase(had_, owners_[cell]);
    }
    const std::int64_t start = world_.Start()[cell];
    if (before != start)
        key_ ^= PartOfKey(cell, before);
    if (now != start)
        key_ ^= PartOfKey(cell, now);
}

void Progress::ReadAll(const State::Mark& start) {
    key_ = 0;
    had_.clear();
    for (const WorldItem& item : world_.Items())
        if (world_.Start()[world_.GetNames().CellOf(Kind::Item, item.number)] != 0)
            had_.push_back(item.number);
    std::sort(had_.begin(), had_.end());
    had_.erase(std::unique(had_.begin(), had_.end()), had_.end());
    FollowWrites(start);
}

std::uint64_t Progress::Key() const {
    return Mix(key_, static_cast<std::uint64_t>(state_[PlayerRoom]));
}

} // namespace zem::walk
