#include "walk/Outlook.h"

#include <algorithm>

namespace zem::walk {

using namespace zem::play;

Outlook::Outlook(const World& world, const CauseMap& causes) : world_(world), causes_(causes) {
    const Names& names = world.GetNames();
    itemOfThing_.assign(names.Count(Kind::Thing), None);
    for (Number thing = 0; thing < itemOfThing_.size(); ++thing)
        if (const WorldThing* found = world.FindThing(thing)) {
            const Number item = names.Find(Kind::Item, found->record->Name);
            if (item != None && world.FindItem(item) != nullptr)
                itemOfThing_[thing] = item;
        }
}

void Outlook::Begin(const State& state) {
    const Names& names = world_.GetNames();
    state_ = &state;
    isReached_.assign(causes_.NodeCount(), false);
    rooms_.assign(names.Count(Kind::Room), false);
    procedures_.assign(names.Count(Kind::Procedure), false);
    menus_.assign(names.Count(Kind::Menu), false);
    isAnywhere_.assign(names.Count(Kind::Thing), false);
    done_.assign(names.CellCount(), 0);
    exitsMade_.clear();
    canGoBack_ = canBeWon_ = false;
    if (state[PlayerRoom] != 0)
        rooms_[static_cast<std::size_t>(state[PlayerRoom] - 1)] = true;
    for (std::int64_t k = 0; k < state[WaitCount]; ++k)
        if (const std::int64_t waits = state[FirstWait + static_cast<Cell>(k) * WaitCells + WaitProcedure];
            waits != 0)
            procedures_[static_cast<std::size_t>(waits - 1)] = true;
}

void Outlook::Look(const State& state) {
    Begin(state);
    // Before the game has begun, its own start comes, and the first room.
    isBeforeStart_ = state[PlayerRoom] == 0;
    if (isBeforeStart_ && world_.StartRoom() != None)
        rooms_[world_.StartRoom()] = true;
    do {
        hasChanged_ = false;
        SpreadThroughRooms();
        for (const Root& root : causes_.Roots())
            if (++work_; CanRun(root))
                Run(root);
    } while (hasChanged_);
}

void Outlook::Mark(std::vector<bool>& list, Number number) {
    if (number >= list.size() || list[number])
        return;
    list[number] = true;
    hasChanged_ = true;
}

void Outlook::Note(Cell cell, Done what) {
    if ((done_[cell] & what) != 0)
        return;
    done_[cell] = static_cast<std::uint8_t>(done_[cell] | what);
    hasChanged_ = true;
}

bool Outlook::IsOpenOrOpens(Number room, std::uint8_t direction) const {
    const Cell cell = world_.GetNames().CellOf(Kind::Room, room) + FirstExit + direction;
    return ((*state_)[cell] & ExitClosed) == 0 || (done_[cell] & SwitchedOn) != 0;
}

/// What plain exits and places lead to; those with scripts run like other scripts.
void Outlook::SpreadThroughRooms() {
    std::vector<Number> open;
    for (Number room = 0; room < rooms_.size(); ++room)
        if (rooms_[room])
            open.push_back(room);
    const auto enter = [&](Number room) {
        if (room == None || rooms_[room] || world_.FindRoom(room) == nullptr)
            return;
        const Cell off = world_.GetNames().CellOf(Kind::Room, room) + RoomOff;
        if ((*state_)[off] != 0 && (done_[off] & SwitchedOn) == 0)
            return;
        Mark(rooms_, room);
        open.push_back(room);
    };
    if (canGoBack_ && (*state_)[RoomBefore] != 0)
        enter(static_cast<Number>((*state_)[RoomBefore] - 1));
    for (const Node* made : exitsMade_)
        if (rooms_[made->arguments.room] && IsOpenOrOpens(made->arguments.room, made->arguments.direction))
            enter(made->arguments.otherRoom);
    for (std::size_t next = 0; next < open.size(); ++next) {
        ++work_;
        const WorldRoom* room = world_.FindRoom(open[next]);
        if (room == nullptr)
            continue;
        for (std::uint8_t k = 0; k < DirectionCount; ++k) {
            const Cell cell = world_.GetNames().CellOf(Kind::Room, open[next]) + FirstExit + k;
            const std::int64_t redirected = (*state_)[cell] >> 1;
            if (!IsOpenOrOpens(open[next], k))
                continue;
            if (redirected != 0)
                enter(static_cast<Number>(redirected - 1));
            if (room->exits[k].exists && !room->exits[k].hasScript)
                enter(room->exits[k].room);
        }
        for (const WorldPlace& place : room->places)
            if (!place.hasScript)
                enter(place.room);
    }
}

bool Outlook::CanBeHad(Number item) const {
    const Cell cell = world_.GetNames().CellOf(Kind::Item, item);
    return (*state_)[cell] != 0 || (done_[cell] & SwitchedOn) != 0;
}

/// What is dropped lies where the player is, to be seen.
bool Outlook::CanBeDropped(Number thing) const {
    return itemOfThing_[thing] != None && CanBeHad(itemOfThing_[thing]);
}

bool Outlook::IsPossibleThing(Number thing) const {
    if (thing == None || world_.FindThing(thing) == nullptr)
        return false;
    if (CanBeDropped(thing))
        return true;
    const Cell cell = world_.GetNames().CellOf(Kind::Thing, thing);
    if ((*state_)[cell + Switches] != 0 && (done_[cell + Switches] & SwitchedOn) == 0)
        return false;
    const std::int64_t room = (*state_)[cell + Where];
    return isAnywhere_[thing] || (room != 0 && rooms_[static_cast<std::size_t>(room - 1)]);
}

bool Outlook::IsPossible(const Fact& fact) const {
    const State& state = *state_;
    if (Holds(world_, state, fact))
        return true;
    const Cell cell = CellOf(world_, fact);
    switch (fact.test) {
    case Test::Has:
        if (world_.FindItem(fact.name) == nullptr)
            return !fact.wanted;
        return fact.wanted ? CanBeHad(fact.name) : true;
    case Test::Flag:
    case Test::Timer:
        return (done_[cell] & (fact.wanted ? SwitchedOn : SwitchedOff)) != 0;
    case Test::RoomOn:
        return world_.FindRoom(fact.room) == nullptr ||
               (done_[cell] & (fact.wanted ? SwitchedOn : SwitchedOff)) != 0;
    case Test::In:
        return !fact.wanted || (world_.FindRoom(fact.room) != nullptr && rooms_[fact.room]);
    case Test::Been:
        return !fact.wanted || (world_.FindRoom(fact.room) != nullptr && rooms_[fact.room]);
    case Test::Here:
    case Test::Visible:
    case Test::ObjectIn:
    case Test::CharacterIn:
        return !fact.wanted || IsPossibleThing(fact.name);
    case Test::Exists:
        if (fact.name == None || world_.FindThing(fact.name) == nullptr)
            return !fact.wanted;
        return !fact.wanted || CanBeDropped(fact.name) || (done_[cell + Switches] & SwitchedOn) != 0;
    case Test::Unknown:
        return false; // it never is, and "not" has held already
    case Test::Equal:
    case Test::Differ:
    case Test::Contains:
    case Test::Empty:
    case Test::Least:
    case Test::More:
    case Test::Less:
        // A text that holds variables compares with anything.
        return fact.text.find_first_of("#%") != std::string_view::npos || done_[cell] != 0 ||
               causes_.IsCaptured(fact.name);
    case Test::Amount:
        return fact.text.find_first_of("#%") != std::string_view::npos || cell == FirstWait ||
               done_[cell] != 0;
    default:
        return true;
    }
}

bool Outlook::CanRun(const Root& root) const {
    if (root.item != None && (world_.FindItem(root.item) == nullptr || !CanBeHad(root.item)))
        return false;
    if (root.room != None && !rooms_[root.room])
        return false;
    switch (root.kind) {
    case Root::Start:
        return isBeforeStart_;
    case Root::LookAt:
        return IsPossibleThing(root.thing) || CanBeDropped(root.thing);
    case Root::UseOn:
    case Root::Give:
    case Root::Take:
    case Root::SpeakTo:
        return IsPossibleThing(root.thing);
    case Root::Exit:
        return IsOpenOrOpens(root.room, static_cast<std::uint8_t>(root.index));
    case Root::Timer:
        return IsPossible({Test::Timer, true, root.name, None, DirectionCount, {}});
    case Root::Procedure:
        return procedures_[root.name];
    case Root::Choice:
        return menus_[root.name];
    default:
        return true;
    }
}

void Outlook::Run(const Root& root) {
    const NodeId base = causes_.IdOf(*root.book, 0);
    for (std::int32_t index = root.first; index >= 0;
         index = root.book->nodes[static_cast<std::size_t>(index)].next)
        RunNode(root, base, index);
}

void Outlook::RunNode(const Root& root, NodeId base, std::int32_t index) {
    if (index < 0)
        return;
    ++work_;
    const Node& node = root.book->nodes[static_cast<std::size_t>(index)];
    const bool isNew = !isReached_[base + static_cast<NodeId>(index)];
    isReached_[base + static_cast<NodeId>(index)] = true;
    if (node.op != Op::If) {
        if (isNew)
            Apply(*root.book, node);
        return;
    }
    const Outcomes outcomes =
        OutcomesOf(world_, *root.book, node, [&](const Fact& fact) { return IsPossible(fact); });
    if (outcomes.canBeTrue)
        RunNode(root, base, node.thenNode);
    if (outcomes.canBeFalse)
        RunNode(root, base, node.elseNode);
}

void Outlook::Apply(const Book& book, const Node& node) {
    const Arguments& arguments = node.arguments;
    const Names& names = world_.GetNames();
    hasChanged_ = true;
    const auto change = [&](Cell cell) {
        Note(cell, SwitchedOn);
        Note(cell, SwitchedOff);
    };
    switch (node.op) {
    case Op::Win:
        canBeWon_ = true;
        break;
    case Op::Goto:
        if (world_.FindRoom(arguments.room) != nullptr)
            Mark(rooms_, arguments.room);
        break;
    case Op::Back:
        canGoBack_ = true;
        break;
    case Op::Give:
        Note(names.CellOf(Kind::Item, arguments.name), SwitchedOn);
        break;
    case Op::FlagOn:
    case Op::FlagOff:
    case Op::FlagFlip:
        if (node.op != Op::FlagOff)
            Note(names.CellOf(Kind::Flag, arguments.name), SwitchedOn);
        if (node.op != Op::FlagOn)
            Note(names.CellOf(Kind::Flag, arguments.name), SwitchedOff);
        break;
    case Op::TimerOn:
    case Op::TimerOff:
        Note(names.CellOf(Kind::Timer, arguments.name), node.op == Op::TimerOn ? SwitchedOn : SwitchedOff);
        break;
    case Op::RoomOn:
    case Op::RoomOff:
        Note(names.CellOf(Kind::Room, arguments.room) + RoomOff,
             node.op == Op::RoomOn ? SwitchedOn : SwitchedOff);
        break;
    case Op::ExitOn:
    case Op::ExitOff:
    case Op::ExitTo:
        if (arguments.direction >= DirectionCount)
            break;
        if (node.op == Op::ExitTo)
            exitsMade_.push_back(&node);
        else
            Note(names.CellOf(Kind::Room, arguments.room) + FirstExit + arguments.direction,
                 node.op == Op::ExitOn ? SwitchedOn : SwitchedOff);
        break;
    case Op::SetAmount:
    case Op::Gain:
    case Op::Spend:
        change(names.CellOf(Kind::Collectable, arguments.name));
        break;
    case Op::Pick:
        for (std::uint32_t k = 0; k < node.count; ++k)
            Mark(procedures_, book.picks[node.first + k]);
        break;
    case Op::EveryObject:
    case Op::EveryCharacter:
        change(names.CellOf(Kind::Variable, names.Find(Kind::Variable, "thing")));
        Mark(procedures_, arguments.name);
        break;
    case Op::Do:
    case Op::Repeat:
    case Op::While:
    case Op::After:
        Mark(procedures_, arguments.name);
        break;
    case Op::Choose:
        Mark(menus_, arguments.name);
        break;
    default:
        if (node.op >= Op::Set && node.op <= Op::Roll)
            change(names.CellOf(Kind::Variable, arguments.name));
        else if (node.op >= Op::Show && node.op <= Op::CharacterOff)
            ApplyToThing(node);
    }
}

void Outlook::ApplyToThing(const Node& node) {
    const Arguments& arguments = node.arguments;
    const bool isCharacter = arguments.character != None && world_.FindThing(arguments.character) != nullptr;
    const Number thing = isCharacter ? arguments.character : arguments.object;
    if (thing == None || world_.FindThing(thing) == nullptr)
        return;
    const Cell switches = world_.GetNames().CellOf(Kind::Thing, thing) + Switches;
    switch (node.op) {
    case Op::Show:
    case Op::Reveal:
    case Op::ObjectOn:
    case Op::CharacterOn:
        Note(switches, SwitchedOn);
        break;
    case Op::Bring:
    case Op::MoveObject:
    case Op::MoveCharacter:
        Mark(isAnywhere_, thing);
        break;
    default:
        break; // gone things make nothing possible
    }
}

} // namespace zem::walk
