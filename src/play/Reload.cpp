#include "play/Session.h"

#include <utility>

/// Going on in a changed game.
namespace zem::play {

namespace {

/// What a name is called in a sentence to the author; empty for kinds whose state nobody misses.
const char* WordFor(Kind kind) {
    switch (kind) {
    case Kind::Room:
        return "room";
    case Kind::Thing:
        return "character or object";
    case Kind::Item:
        return "item";
    case Kind::Collectable:
        return "collectable";
    default:
        return "";
    }
}

bool Has(const World& world, Kind kind, Number number) {
    switch (kind) {
    case Kind::Room:
        return world.FindRoom(number) != nullptr;
    case Kind::Thing:
        return world.FindThing(number) != nullptr;
    case Kind::Item:
        return world.FindItem(number) != nullptr;
    case Kind::Collectable:
        return world.FindCollectable(number) != nullptr;
    default:
        return true;
    }
}

Cell CellCountOf(Kind kind) {
    switch (kind) {
    case Kind::Room:
        return RoomCells;
    case Kind::Thing:
        return ThingCells;
    case Kind::Timer:
        return TimerCells;
    default:
        return 1;
    }
}

/// Names that had a state of their own and are gone.
void TellLost(const World& before, const World& after, const State& state, Outcome& outcome) {
    const Names& names = before.GetNames();
    for (const Kind kind : {Kind::Room, Kind::Thing, Kind::Item, Kind::Collectable})
        for (Number number = 0; number < names.Count(kind); ++number) {
            const Cell cell = names.CellOf(kind, number);
            if (cell >= before.Start().size() || !Has(before, kind, number) || Has(after, kind, number))
                continue;
            bool hasState = kind == Kind::Room && state[PlayerRoom] == static_cast<std::int64_t>(number) + 1;
            for (Cell part = 0; part < CellCountOf(kind); ++part)
                hasState = hasState || state[cell + part] != before.Start()[cell + part];
            const std::string& name = names.Name(kind, number);
            if (hasState)
                outcome.warnings.push_back({{},
                                            "the " + std::string(WordFor(kind)) + " \"" +
                                                (kind == Kind::Thing ? name.substr(1) : name) +
                                                "\" is gone, and what happened to it with it"});
        }
}

/// Puts the new number of a room wherever the state has the old one.
void RenameRoom(const World& world, State& state, Number before, Number after) {
    const std::int64_t old = static_cast<std::int64_t>(before) + 1;
    const std::int64_t renamed = static_cast<std::int64_t>(after) + 1;
    const Names& names = world.GetNames();
    for (const Cell cell : {Cell{PlayerRoom}, Cell{RoomBefore}})
        if (state[cell] == old)
            state.Set(cell, renamed);
    for (Number thing = 0; thing < names.Count(Kind::Thing); ++thing) {
        const Cell cell = names.CellOf(Kind::Thing, thing) + Where;
        if (cell < world.Start().size() && state[cell] == old)
            state.Set(cell, renamed);
    }
    for (Number room = 0; room < names.Count(Kind::Room); ++room)
        for (Cell exit = 0; exit < DirectionCount; ++exit) {
            const Cell cell = names.CellOf(Kind::Room, room) + FirstExit + exit;
            if (cell < world.Start().size() && state[cell] >> 1 == old)
                state.Set(cell, (renamed << 1) | (state[cell] & ExitClosed));
        }
}

} // namespace

Outcome Session::Reload(std::shared_ptr<const World> world, const std::vector<Renamed>& renamed) {
    Outcome told;
    const std::shared_ptr<const World> before = std::exchange(world_, std::move(world));
    told_.clear(); // the scripts that they point to may be gone
    const Names& names = world_->GetNames();
    std::vector<std::int64_t> oldStart = before->Start();
    oldStart.resize(world_->Start().size());
    state_.Rebase(oldStart, world_->Start(), world_->ThingOrder());
    startMark_ = state_.Here();
    for (const Renamed& rename : renamed) {
        const Number from = names.Find(rename.kind, rename.before);
        const Number to = names.Find(rename.kind, rename.after);
        if (from == None || to == None || Has(*world_, rename.kind, from) == Has(*world_, rename.kind, to))
            continue;
        for (Cell part = 0; part < CellCountOf(rename.kind); ++part) {
            const Cell old = names.CellOf(rename.kind, from) + part;
            if (state_[old] != oldStart[old])
                state_.Set(names.CellOf(rename.kind, to) + part, state_[old]);
            state_.Set(old, oldStart[old]);
        }
        if (rename.kind == Kind::Room)
            RenameRoom(*world_, state_, from, to);
    }
    TellLost(*before, *world_, state_, told);
    if (state_[PlayerRoom] != 0 && world_->FindRoom(static_cast<Number>(state_[PlayerRoom] - 1)) == nullptr) {
        const bool canStart = world_->FindRoom(world_->StartRoom()) != nullptr;
        state_.Set(PlayerRoom, canStart ? static_cast<std::int64_t>(world_->StartRoom()) + 1 : 0);
    }
    if (state_[RoomBefore] != 0 && world_->FindRoom(static_cast<Number>(state_[RoomBefore] - 1)) == nullptr)
        state_.Set(RoomBefore, 0);
    choices_.clear();
    replayed_ = steps_.size();
    isStartReplayed_ = true;
    told.need = need_;
    if (!pending_)
        return told;
    // An open question is asked again, by the changed game.
    Input input = *std::exchange(pending_, std::nullopt);
    std::vector<std::string> answers = std::exchange(input.answers, {});
    Outcome outcome = Play(std::move(input));
    for (const std::string& answer : answers)
        if (pending_) {
            Outcome next = Answer(answer);
            outcome.pieces.insert(outcome.pieces.end(), next.pieces.begin(), next.pieces.end());
            outcome.need = next.need;
            outcome.choices = next.choices;
            outcome.request = next.request;
        }
    outcome.warnings.insert(outcome.warnings.begin(), told.warnings.begin(), told.warnings.end());
    return outcome;
}

} // namespace zem::play
