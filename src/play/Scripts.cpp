#include "base/LineText.h"
#include "play/Interpreter.h"
#include "play/Limits.h"
#include "play/NameSearch.h"

#include <algorithm>

namespace zem::play {

std::string NameOfOwner(const World& world, const Book& book) {
    const Names& names = world.GetNames();
    switch (book.owner) {
    case Owner::Room:
        return names.Name(Kind::Room, book.number);
    case Owner::Procedure:
        return names.Name(Kind::Procedure, book.number);
    case Owner::Menu:
        return names.Name(Kind::Menu, book.number);
    case Owner::Text:
        return names.Name(Kind::Text, book.number);
    case Owner::Thing:
        return names.Name(Kind::Thing, book.number).substr(1);
    case Owner::Timer:
        return "a timer";
    case Owner::Game:
        break;
    }
    return "the game";
}

bool Interpreter::Run(const Script& script) {
    if (script.IsEmpty())
        return stop_ == Stop::None;
    if (running_.size() >= Limits::Scripts)
        return StopAt(Stop::Limit);
    if (!Spend(Limits::PerScript))
        return false;
    running_.push_back(script.book);
    const bool goesOn = RunNode(*script.book, &script.book->nodes[static_cast<std::size_t>(script.node)]);
    running_.pop_back();
    return goesOn;
}

bool Interpreter::RunNode(const Book& book, const Node* node) {
    const auto at = [&](std::int32_t index) {
        return index < 0 ? nullptr : &book.nodes[static_cast<std::size_t>(index)];
    };
    for (; node != nullptr; node = at(node->next)) {
        // An "if" leads to one command, which may be an "if" again.
        const Node* command = node;
        while (command != nullptr && command->op == Op::If) {
            if (++commands_ > Limits::Commands || !Spend(Limits::PerCommand))
                return StopAt(Stop::Limit);
            const bool holds = Holds(book, *command);
            if (stop_ != Stop::None)
                return false;
            NoteHit(book, *command, holds);
            command = at(holds ? command->thenNode : command->elseNode);
        }
        if (command == nullptr)
            continue;
        if (++commands_ > Limits::Commands || !Spend(Limits::PerCommand))
            return StopAt(Stop::Limit);
        if (!Execute(book, *command) || stop_ != Stop::None)
            return false;
    }
    return true;
}

bool Interpreter::RunProcedure(Number procedure, const Source& from) {
    const WorldProcedure* found = world_.FindProcedure(procedure);
    if (found == nullptr)
        return WarnLacks(from, "procedure", world_.GetNames().Name(Kind::Procedure, procedure));
    return Run({&found->book, found->body});
}

bool Interpreter::Execute(const Book& book, const Node& node) {
    const Source source = SourceOf(book, node);
    Trace(source, TraceEntry::Ran);
    NoteHit(book, node);
    switch (node.op) {
    case Op::Nothing:
        NoteFault("the line does nothing");
        return Warn(source, "the line does nothing: " + node.arguments.text, true);
    case Op::Win:
        return StopAt(Stop::Win);
    case Op::Die:
        return StopAt(Stop::Lose);
    case Op::Restart:
        return StopAt(Stop::Restart);
    default:
        break;
    }
    if (node.op < Op::Goto)
        return ExecuteText(book, node);
    if (node.op <= Op::Look || (node.op >= Op::RoomOn && node.op <= Op::ExitTo))
        return ExecuteRooms(node, source);
    if (node.op < Op::RoomOn)
        return ExecuteThings(node, source);
    if (node.op < Op::Do)
        return ExecuteValues(node, source);
    return ExecuteCalls(book, node, source);
}

bool Interpreter::ExecuteCalls(const Book& book, const Node& node, const Source& source) {
    const Arguments& arguments = node.arguments;
    switch (node.op) {
    case Op::Do:
        return RunProcedure(arguments.name, source);
    case Op::Pick:
        return Pick(book, node, source);
    case Op::Repeat:
        return Repeat(node, source);
    case Op::EveryObject:
    case Op::EveryCharacter:
        return Every(node.op == Op::EveryCharacter, node, source);
    case Op::While:
        return While(node, source);
    case Op::Choose:
        if (const WorldMenu* menu = world_.FindMenu(arguments.name))
            return Choose(*menu, source);
        return WarnLacks(source, "menu", world_.GetNames().Name(Kind::Menu, arguments.name));
    case Op::Type:
        return Type(node, source);
    case Op::After:
        if (world_.FindProcedure(arguments.name) == nullptr)
            return WarnLacks(source, "procedure", world_.GetNames().Name(Kind::Procedure, arguments.name));
        StartWait(arguments.name, LeadingInteger(PutIn(arguments.text)));
        return true;
    case Op::TimerOn:
        StartTimer(arguments.name);
        return true;
    case Op::TimerOff:
        state_.Set(CellOf(Kind::Timer, arguments.name) + TimerOn, 0);
        return true;
    default:
        return true;
    }
}

bool Interpreter::Pick(const Book& book, const Node& node, const Source& source) {
    std::vector<Number> there;
    for (std::uint32_t k = 0; k < node.count; ++k) {
        const Number procedure = book.picks[node.first + k];
        if (world_.FindProcedure(procedure) != nullptr)
            there.push_back(procedure);
        else
            WarnLacks(source, "procedure", world_.GetNames().Name(Kind::Procedure, procedure));
    }
    if (there.empty() || !Spend(node.count))
        return stop_ == Stop::None;
    const std::int64_t drawn = state_.Roll(static_cast<std::int64_t>(there.size()));
    return RunProcedure(there[static_cast<std::size_t>(drawn - 1)], source);
}

bool Interpreter::Repeat(const Node& node, const Source& source) {
    if (world_.FindProcedure(node.arguments.name) == nullptr)
        return RunProcedure(node.arguments.name, source);
    const std::int64_t times = LeadingInteger(PutIn(node.arguments.text));
    for (std::int64_t k = 0; k < times; ++k)
        if (!Spend(Limits::PerScript) || !RunProcedure(node.arguments.name, source))
            return false;
    return stop_ == Stop::None;
}

bool Interpreter::While(const Node& node, const Source& source) {
    if (world_.FindProcedure(node.arguments.name) == nullptr)
        return RunProcedure(node.arguments.name, source);
    const Cell flag = CellOf(Kind::Flag, node.arguments.flag);
    while (state_[flag] != 0)
        if (!Spend(Limits::PerScript) || !RunProcedure(node.arguments.name, source))
            return false;
    return stop_ == Stop::None;
}

bool Interpreter::Every(bool characters, const Node& node, const Source& source) {
    if (state_[PlayerRoom] == 0)
        return true;
    std::vector<Number> things;
    for (const Number thing : state_.ThingsIn(state_[PlayerRoom]))
        if (IsThere(world_, state_, thing) && world_.FindThing(thing)->isCharacter == characters)
            things.push_back(thing);
    if (!Spend(things.size() * Limits::PerScript))
        return false;
    const Cell variable = CellOf(Kind::Variable, world_.GetNames().Find(Kind::Variable, "thing"));
    const std::string before = state_.Text(variable);
    bool goesOn = true;
    for (const Number thing : things) {
        if (!IsThere(world_, state_, thing))
            continue;
        state_.SetText(variable, world_.FindThing(thing)->record->Name);
        goesOn = RunProcedure(node.arguments.name, source);
        if (!goesOn)
            break;
    }
    state_.SetText(variable, before);
    return goesOn;
}

bool Interpreter::Type(const Node& node, const Source& source) {
    if (typeDepth_ >= Limits::Types)
        return StopAt(Stop::Limit);
    const std::string line = PutIn(node.arguments.text).substr(0, Limits::Line);
    if (stop_ != Stop::None || Fold(line).empty())
        return stop_ == Stop::None;
    const Meaning meaning = Recogniser(world_, state_, work_).Recognise(line, {});
    if (!Spend(line.size()))
        return false;
    if (meaning.verb == Verb::NotUnderstood)
        return PrintMessage(meaning.message, meaning.detail);
    if (IsAboutProgram(meaning.verb))
        return Warn(source, "a script cannot type \"" + line + "\", which is about the program");
    ++typeDepth_;
    const bool goesOn = CarryOut(meaning);
    --typeDepth_;
    return goesOn;
}

} // namespace zem::play
