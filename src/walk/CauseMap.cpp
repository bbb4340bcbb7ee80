#include "walk/CauseMap.h"

#include <algorithm>
#include <utility>

namespace zem::walk {

using namespace zem::play;

namespace {

constexpr std::size_t MostExitChains = 8; // of one room
constexpr std::size_t LongestChain = 8;

template <class Key, class List>
const List& ListOrNone(const std::unordered_map<Key, List>& lists, Key key) {
    static const List none;
    const auto found = lists.find(key);
    return found == lists.end() ? none : found->second;
}

template <class List>
const List& ListOrNone(const std::vector<List>& lists, Number number) {
    static const List none;
    return number < lists.size() ? lists[number] : none;
}

} // namespace

CauseMap::CauseMap(const World& world) : world_(world) {
    const Names& names = world.GetNames();
    procedureCallers_.resize(names.Count(Kind::Procedure));
    menuCallers_.resize(names.Count(Kind::Menu));
    gotos_.resize(names.Count(Kind::Room));
    exits_.resize(names.Count(Kind::Room));
    isAsked_.assign(names.CellCount(), false);
    for (Number thing = 0; thing < names.Count(Kind::Thing); ++thing)
        if (world.FindThing(thing) != nullptr)
            thingNumbers_.emplace(world.FindThing(thing), thing);
    for (const auto& game : world.GameBlocks())
        AddGame(*game, game == world.GameBlocks().front());
    for (const auto& room : world.AllRooms())
        AddRoom(*room);
    for (const auto& procedure : world.AllProcedures())
        if (world.FindProcedure(procedure->number) == procedure.get())
            Add({Root::Procedure, &procedure->book, procedure->body, None, None, None, procedure->number});
    for (const auto& menu : world.AllMenus())
        if (world.FindMenu(menu->number) == menu.get())
            for (std::size_t k = 0; k < menu->choices.size(); ++k)
                Add({Root::Choice, &menu->book, menu->choices[k], None, None, None, menu->number,
                     static_cast<int>(k + 1)});
    for (const auto& [timer, definition] : world.Timers())
        if (definition.action.book != nullptr)
            Add({Root::Timer, definition.action.book, definition.action.node, None, None, None, timer});
    for (NodeId id = 0; id < nodes_.size(); ++id)
        if (nodes_[id].node != nullptr) {
            NoteCalls(id);
            NoteWrites(id);
            NoteConditions(id);
        }
    for (NodeId id = 0; id < nodes_.size(); ++id)
        if (nodes_[id].node != nullptr)
            NoteExits(id);
}

void CauseMap::AddGame(const WorldGame& game, bool isOwn) {
    if (isOwn) {
        Add({Root::Start, &game.book, game.start});
        for (const std::int32_t script : {game.description, game.beforeTurn, game.afterTurn})
            Add({Root::EveryTurn, &game.book, script});
    }
    AddCommands(game.book, game.commands, None);
    for (const ItemRule& rule : game.uses)
        Add({Root::Use, &game.book, rule.script, None, None, rule.item});
}

void CauseMap::AddRoom(const WorldRoom& room) {
    for (const WorldThing& thing : room.things)
        AddThing(thing);
    if (world_.FindRoom(room.number) != &room)
        return; // another of the same name stands for it
    for (std::size_t k = 0; k < DirectionCount; ++k)
        Add({Root::Exit, &room.book, room.exits[k].script, room.number, None, None, None,
             static_cast<int>(k)});
    for (std::size_t k = 0; k < room.places.size(); ++k)
        Add({Root::Place, &room.book, room.places[k].script, room.number, None, None, None,
             static_cast<int>(k)});
    Add({Root::Enter, &room.book, room.enter, room.number});
    Add({Root::Description, &room.book, room.description, room.number});
    AddCommands(room.book, room.commands, room.number);
    for (const ItemRule& rule : room.uses)
        Add({Root::Use, &room.book, rule.script, room.number, None, rule.item});
}

void CauseMap::AddThing(const WorldThing& thing) {
    const auto known = thingNumbers_.find(&thing);
    if (known == thingNumbers_.end())
        return;
    const Number number = known->second;
    const auto add = [&](Root::Kind kind, std::int32_t script, Number item = None) {
        Add({kind, &thing.book, script, None, number, item});
    };
    add(Root::LookAt, thing.look);
    add(Root::Take, thing.take);
    add(Root::SpeakTo, thing.speak);
    for (const ItemRule& rule : thing.uses)
        add(Root::UseOn, rule.script, rule.item);
    for (const ItemRule& rule : thing.gives)
        add(Root::Give, rule.script, rule.item);
}

void CauseMap::AddCommands(const Book& book, const std::vector<WorldCommand>& commands, Number room) {
    for (const WorldCommand& command : commands) {
        Root root{Root::Command, &book, command.script, room};
        root.command = &command;
        Add(root);
        for (const Pattern& pattern : command.patterns)
            captured_.insert(pattern.variables.begin(), pattern.variables.end());
        if (!command.patterns.empty())
            for (const Number variable : command.patterns.front().variables)
                captures_[variable].push_back({&command, room});
    }
}

void CauseMap::Add(Root root) {
    if (root.item != None)
        isAsked_[world_.GetNames().CellOf(Kind::Item, root.item)] = true;
    if (root.first < 0)
        return;
    const auto [base, isNew] = firsts_.emplace(root.book, static_cast<NodeId>(nodes_.size()));
    if (isNew)
        nodes_.resize(nodes_.size() + root.book->nodes.size());
    roots_.push_back(root);
    for (std::int32_t index = root.first; index >= 0;
         index = root.book->nodes[static_cast<std::size_t>(index)].next)
        AddNode(root, base->second, index, NoNode, true);
}

/// An "if" leads to one command, which may be an "if" again.
void CauseMap::AddNode(const Root& root, NodeId base, std::int32_t index, NodeId guard, bool answer) {
    if (index < 0)
        return;
    const Node& node = root.book->nodes[static_cast<std::size_t>(index)];
    const NodeId id = base + static_cast<NodeId>(index);
    nodes_[id] = {root.book, &node, guard, answer, static_cast<std::uint32_t>(roots_.size() - 1)};
    if (node.op != Op::If)
        return;
    AddNode(root, base, node.thenNode, id, true);
    AddNode(root, base, node.elseNode, id, false);
}

void CauseMap::NoteCalls(NodeId id) {
    const NodePlace& place = nodes_[id];
    const Number name = place.node->arguments.name;
    switch (place.node->op) {
    case Op::Pick:
        for (std::uint32_t k = 0; k < place.node->count; ++k)
            procedureCallers_[place.book->picks[place.node->first + k]].push_back(id);
        break;
    case Op::While:
        isAsked_[world_.GetNames().CellOf(Kind::Flag, place.node->arguments.flag)] = true;
        procedureCallers_[name].push_back(id);
        break;
    case Op::Do:
    case Op::Repeat:
    case Op::EveryObject:
    case Op::EveryCharacter:
    case Op::After:
        procedureCallers_[name].push_back(id);
        break;
    case Op::Choose:
        menuCallers_[name].push_back(id);
        break;
    default:
        break;
    }
}

void CauseMap::NoteWrites(NodeId id) {
    const Node& node = *nodes_[id].node;
    const Arguments& arguments = node.arguments;
    const Names& names = world_.GetNames();
    const auto note = [&](Cell cell) { writers_[cell].push_back(id); };
    const Op op = node.op;
    if (op == Op::Goto)
        gotos_[arguments.room].push_back(id);
    else if (op == Op::Give || op == Op::Lose)
        note(names.CellOf(Kind::Item, arguments.name));
    else if (op == Op::LoseAll) {
        for (const WorldItem& item : world_.Items())
            note(names.CellOf(Kind::Item, item.number));
    } else if (op >= Op::Show && op <= Op::CharacterOff) {
        const bool isCharacter =
            arguments.character != None && world_.FindThing(arguments.character) != nullptr;
        const Number thing = isCharacter ? arguments.character : arguments.object;
        if (thing != None && world_.FindThing(thing) != nullptr)
            note(names.CellOf(Kind::Thing, thing));
    } else if (op == Op::RoomOn || op == Op::RoomOff)
        note(names.CellOf(Kind::Room, arguments.room) + RoomOff);
    else if (op >= Op::ExitOn && op <= Op::ExitTo && arguments.direction < DirectionCount)
        note(names.CellOf(Kind::Room, arguments.room) + FirstExit + arguments.direction);
    else if (op == Op::SetAmount || op == Op::Gain || op == Op::Spend)
        note(names.CellOf(Kind::Collectable, arguments.name));
    else if (op >= Op::Set && op <= Op::Roll)
        note(names.CellOf(Kind::Variable, arguments.name));
    else if (op >= Op::FlagOn && op <= Op::FlagFlip)
        note(names.CellOf(Kind::Flag, arguments.name));
    else if (op == Op::TimerOn || op == Op::TimerOff)
        note(names.CellOf(Kind::Timer, arguments.name));
}

void CauseMap::NoteConditions(NodeId id) {
    const NodePlace& place = nodes_[id];
    if (place.node->op != Op::If)
        return;
    for (std::uint32_t k = 0; k < place.node->count; ++k) {
        const Fact fact = FactOf(world_, place.book->conditions[place.node->first + k], true);
        const Cell cell = CellOf(world_, fact);
        if (cell == FirstWait)
            continue;
        isAsked_[cell] = true;
        if (fact.test < Test::Equal || fact.test > Test::Amount)
            continue;
        std::vector<Fact>& known = comparisons_[cell];
        const bool isKnown = std::any_of(known.begin(), known.end(), [&](const Fact& other) {
            return other.test == fact.test && other.text == fact.text;
        });
        if (!isKnown)
            known.push_back(fact);
    }
}

void CauseMap::NoteExits(NodeId id) {
    const Arguments& arguments = nodes_[id].node->arguments;
    if (nodes_[id].node->op == Op::ExitTo && arguments.direction < DirectionCount)
        exits_[arguments.room].push_back({arguments.otherRoom, id, {}, 0, arguments.direction});
    else if (nodes_[id].node->op == Op::Goto)
        Climb(id, {id});
}

/// Looks for exits and places whose scripts lead to a node, which begins the chain.
void CauseMap::Climb(NodeId from, std::vector<NodeId> chain) {
    const Root& root = RootOf(from);
    if (root.kind == Root::Exit || root.kind == Root::Place) {
        std::vector<ScriptedExit>& exits = exits_[root.room];
        const NodeId node = chain.front();
        std::reverse(chain.begin(), chain.end());
        if (exits.size() < MostExitChains * DirectionCount)
            exits.push_back(
                {nodes_[node].node->arguments.room, node, std::move(chain), nodes_[from].root, 0});
        return;
    }
    if (chain.size() >= LongestChain)
        return;
    const std::vector<NodeId>& callers = CallersOf(root);
    for (std::size_t k = 0; k < callers.size() && k < MostExitChains; ++k) {
        if (std::find(chain.begin(), chain.end(), callers[k]) != chain.end())
            continue;
        std::vector<NodeId> longer = chain;
        longer.push_back(callers[k]);
        Climb(callers[k], std::move(longer));
    }
}

NodeId CauseMap::IdOf(const Book& book, std::int32_t node) const {
    const auto found = firsts_.find(&book);
    return found == firsts_.end() ? NoNode : found->second + static_cast<NodeId>(node);
}

const std::vector<NodeId>& CauseMap::CallersOf(const Root& root) const {
    return root.kind == Root::Choice      ? ListOrNone(menuCallers_, root.name)
           : root.kind == Root::Procedure ? ListOrNone(procedureCallers_, root.name)
                                          : ListOrNone(procedureCallers_, None);
}

const std::vector<NodeId>& CauseMap::WritersOf(Cell cell) const {
    return ListOrNone(writers_, cell);
}

const std::vector<NodeId>& CauseMap::GotosTo(Number room) const {
    return ListOrNone(gotos_, room);
}

const std::vector<ScriptedExit>& CauseMap::ScriptedExitsOf(Number room) const {
    return ListOrNone(exits_, room);
}

const std::vector<Capture>& CauseMap::CapturesOf(Number variable) const {
    return ListOrNone(captures_, variable);
}

const std::vector<Fact>& CauseMap::ComparisonsOf(Cell cell) const {
    return ListOrNone(comparisons_, cell);
}

} // namespace zem::walk
