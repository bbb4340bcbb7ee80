#include "base/LineText.h"
#include "play/InputLog.h"
#include "play/Limits.h"
#include "play/Session.h"

#include <algorithm>

/// The state of a session in plain words, and changes of it from outside.
namespace zem::play {

std::string Session::RoomName() const {
    return state_[PlayerRoom] == 0
               ? std::string()
               : world_->GetNames().Name(Kind::Room, static_cast<Number>(state_[PlayerRoom] - 1));
}

std::vector<std::string> Session::ItemsHad() const {
    std::vector<std::string> items;
    for (const WorldItem& item : world_->Items())
        if (state_[world_->GetNames().CellOf(Kind::Item, item.number)] != 0)
            items.push_back(item.name);
    return items;
}

std::vector<std::string> Session::OpenDirections() const {
    std::vector<std::string> open;
    if (state_[PlayerRoom] == 0)
        return open;
    const WorldRoom* room = world_->FindRoom(static_cast<Number>(state_[PlayerRoom] - 1));
    for (std::uint8_t k = 0; room != nullptr && k < DirectionCount; ++k) {
        const std::int64_t cell = state_[world_->GetNames().CellOf(Kind::Room, room->number) + FirstExit + k];
        const bool isScripted = cell == 0 && room->exits[k].exists && room->exits[k].room == None;
        if (isScripted || ExitLeadsTo(*world_, state_, *room, k) != None)
            open.emplace_back(DirectionNames[k]);
    }
    return open;
}

namespace {

std::string WordsFor(const World& world, const State& state, Kind kind, Cell cell) {
    switch (kind) {
    case Kind::Thing: {
        const std::int64_t room = state[cell + Where];
        std::string words =
            room == 0 ? "nowhere" : world.GetNames().Name(Kind::Room, static_cast<Number>(room - 1));
        if ((state[cell + Switches] & Hidden) != 0)
            words += ", hidden";
        if ((state[cell + Switches] & Off) != 0)
            words += ", not available";
        return words;
    }
    case Kind::Item:
        return state[cell] != 0 ? "had" : "not had";
    case Kind::Flag:
    case Kind::Timer:
        return state[cell] != 0 ? "on" : "off";
    case Kind::Variable:
        return state.Text(cell);
    default:
        return std::to_string(state[cell]);
    }
}

Cell CellsOfKind(Kind kind) {
    if (kind == Kind::Thing)
        return ThingCells;
    return kind == Kind::Timer ? Cell{TimerCells} : Cell{1};
}

} // namespace

std::vector<WatchedValue> Session::Watch(bool all) const {
    std::vector<bool> changed(world_->Start().size());
    if (!steps_.empty() && steps_.size() > replayed_)
        state_.ForEachWriteSince({steps_.back().writes, steps_.back().texts}, [&](Cell cell, std::int64_t) {
            if (cell < changed.size())
                changed[cell] = true;
        });
    std::vector<WatchedValue> values;
    const Names& names = world_->GetNames();
    for (const Kind kind :
         {Kind::Item, Kind::Thing, Kind::Flag, Kind::Variable, Kind::Timer, Kind::Collectable})
        for (Number number = 0; number < names.Count(kind); ++number) {
            const bool isThere = kind == Kind::Item          ? world_->FindItem(number) != nullptr
                                 : kind == Kind::Thing       ? world_->FindThing(number) != nullptr
                                 : kind == Kind::Collectable ? world_->FindCollectable(number) != nullptr
                                 : kind == Kind::Variable    ? world_->IsVariable(number)
                                                             : true;
            const Cell cell = names.CellOf(kind, number);
            if (!isThere || cell >= changed.size())
                continue;
            bool differs = all;
            bool hasChanged = false;
            for (Cell part = 0; part < CellsOfKind(kind); ++part) {
                differs = differs || state_[cell + part] != world_->Start()[cell + part];
                hasChanged = hasChanged || changed[cell + part];
            }
            if (differs || hasChanged)
                values.push_back(
                    {kind, names.Name(kind, number), WordsFor(*world_, state_, kind, cell), hasChanged});
        }
    return values;
}

bool Session::PutValue(Kind kind, const std::string& name, const std::string& value) {
    const Names& names = world_->GetNames();
    const Number number = names.Find(kind, name);
    if (number == None || names.CellOf(kind, number) >= world_->Start().size())
        return false;
    const Cell cell = names.CellOf(kind, number);
    switch (kind) {
    case Kind::Item:
        if (world_->FindItem(number) == nullptr || (value != "had" && value != "not had"))
            return false;
        state_.Set(cell, value == "had" ? 1 : 0);
        return true;
    case Kind::Flag:
    case Kind::Timer:
        if (value != "on" && value != "off")
            return false;
        state_.Set(cell, value == "on" ? 1 : 0);
        return true;
    case Kind::Variable:
        state_.SetText(cell, std::string_view(value).substr(0, Limits::TextInVariable));
        return true;
    case Kind::Collectable: {
        const WorldCollectable* collectable = world_->FindCollectable(number);
        if (collectable == nullptr)
            return false;
        state_.Set(cell, std::clamp(LeadingInteger(value), collectable->lowest, collectable->highest));
        return true;
    }
    case Kind::Thing: {
        std::vector<std::string_view> parts = SplitAt(value, ", ");
        const Number room = names.Find(Kind::Room, parts.front());
        if (world_->FindThing(number) == nullptr || room == None || world_->FindRoom(room) == nullptr)
            return false;
        const auto has = [&](std::string_view word) {
            return std::find(parts.begin(), parts.end(), word) != parts.end();
        };
        state_.Set(cell + Where, static_cast<std::int64_t>(room) + 1);
        state_.Set(cell + Switches, (has("hidden") ? std::int64_t{Hidden} : 0) |
                                        (has("not available") ? std::int64_t{Off} : 0));
        return true;
    }
    default:
        return false;
    }
}

bool Session::SetByHand(Kind kind, const std::string& name, const std::string& value) {
    if (pending_)
        return false;
    const State::Mark before = state_.Here();
    if (!PutValue(kind, name, value))
        return false;
    state_.Tidy(before);
    AddStep(before);
    log_.Add(PackEntry({std::string("H") + static_cast<char>(kind), name, value}));
    return true;
}

} // namespace zem::play
