#include "play/WorldRecords.h"

#include "base/LineText.h"
#include "base/TextFile.h"
#include "model/CollectableDefinition.h"
#include "play/Texts.h"

#include <algorithm>
#include <cmath>

namespace zem::play {

namespace {

/// The compass of a record in the order in which exits are told.
constexpr Shared<ScriptPair> Room::*Compass[] = {&Room::North,     &Room::NorthEast, &Room::East,
                                                 &Room::SouthEast, &Room::South,     &Room::SouthWest,
                                                 &Room::West,      &Room::NorthWest};

template <class Records>
std::vector<ItemRule> MakeRules(Names& names, Book& book, const Records& records, ScriptField field) {
    std::vector<ItemRule> rules;
    for (const ScriptPair& pair : records)
        rules.push_back({names.Add(Kind::Item, Trim(pair.Key)),
                         AddScript(book, names, pair.Script, field, static_cast<int>(rules.size()) + 1)});
    return rules;
}

WorldCommand MakeCommand(Names& names, Book& book, std::string_view pattern, std::string_view script,
                         std::size_t index) {
    WorldCommand command;
    command.patterns = ReadPatterns(names, pattern);
    command.script = AddScript(book, names, script, ScriptField::Command, static_cast<int>(index) + 1);
    for (const Pattern& one : command.patterns) {
        book.variables.insert(book.variables.end(), one.variables.begin(), one.variables.end());
        for (const std::string& literal : one.literals)
            AddWords(book, names, literal);
    }
    return command;
}

NameForms MakeForms(Names& names, Book& book, std::string_view name, std::string_view prefix,
                    std::string_view suffix) {
    for (const std::string_view text : {name, prefix, suffix})
        AddWords(book, names, text);
    return {Fold(name), Fold(prefix), Fold(suffix)};
}

WorldThing MakeThing(Names& names, const Thing& record, bool isCharacter) {
    WorldThing thing;
    thing.record = &record;
    thing.isCharacter = isCharacter;
    thing.firstOfName = names.Add(Kind::Thing, Names::ThingKey(isCharacter, record.Name));
    Book& book = thing.book;
    book.owner = Owner::Thing;
    book.number = thing.firstOfName;
    thing.forms = MakeForms(names, book, record.Name, record.Prefix, record.Suffix);
    thing.look = AddScript(book, names, record.Look, ScriptField::Look);
    thing.speak = AddScript(book, names, record.Speak, ScriptField::Speak);
    thing.take = AddScript(book, names, record.Take, ScriptField::Take);
    thing.uses = MakeRules(names, book, record.Uses, ScriptField::Use);
    thing.gives = MakeRules(names, book, record.Gives, ScriptField::Give);
    return thing;
}

void MakeExits(Names& names, const Room& record, WorldRoom& room) {
    const auto exitTo = [&](const ScriptPair& pair, std::size_t direction) {
        WorldExit& exit = room.exits[direction];
        exit.exists = !pair.Key.empty();
        const bool isScripted = pair.Key == ActionExit;
        exit.room = !exit.exists || isScripted ? None : names.Add(Kind::Room, Trim(pair.Key));
        exit.hasScript = isScripted || !pair.Script.empty();
        exit.script =
            AddScript(room.book, names, pair.Script, ScriptField::Exit, static_cast<int>(direction) + 1);
    };
    for (std::size_t k = 0; k < std::size(Compass); ++k)
        exitTo(*(record.*Compass[k]), k);
    exitTo(*record.Out, static_cast<std::size_t>(Direction::Out));
}

WorldPlace MakePlace(Names& names, Book& book, const ScriptPair& record, std::size_t index) {
    WorldPlace place;
    const std::size_t semicolon = record.Key.find(';');
    place.record = &record;
    if (semicolon != std::string::npos)
        place.prefix = Trim(std::string_view(record.Key).substr(0, semicolon));
    place.foldedPrefix = Fold(place.prefix);
    AddWords(book, names, record.Key.substr(0, semicolon + 1));
    place.room = names.Add(
        Kind::Room,
        Trim(std::string_view(record.Key).substr(semicolon == std::string::npos ? 0 : semicolon + 1)));
    place.hasScript = !record.Script.empty();
    place.script = AddScript(book, names, record.Script, ScriptField::Place, static_cast<int>(index) + 1);
    return place;
}

} // namespace

std::shared_ptr<const WorldRoom> MakeRoom(Names& names, const Room& record) {
    auto room = std::make_shared<WorldRoom>();
    room->record = &record;
    room->number = names.Add(Kind::Room, record.Name);
    Book& book = room->book;
    book.owner = Owner::Room;
    book.number = room->number;
    room->forms = MakeForms(names, book, record.Name, record.Prefix, {});
    room->foldedAlias = Fold(record.Alias);
    AddWords(book, names, record.Alias);
    MakeExits(names, record, *room);
    for (const ScriptPair& place : record.Places)
        room->places.push_back(MakePlace(names, book, place, room->places.size()));
    for (const ScriptPair& command : record.Commands)
        room->commands.push_back(
            MakeCommand(names, book, command.Key, command.Script, room->commands.size()));
    room->uses = MakeRules(names, book, record.Uses, ScriptField::Use);
    room->enter = AddScript(book, names, record.Script, ScriptField::Enter);
    room->description = AddScript(book, names, record.Description, ScriptField::Description);
    for (const Thing& character : record.Characters)
        room->things.push_back(MakeThing(names, character, true));
    for (const Thing& object : record.Objects)
        room->things.push_back(MakeThing(names, object, false));
    return room;
}

std::shared_ptr<const WorldProcedure> MakeProcedure(Names& names, const Procedure& record) {
    auto procedure = std::make_shared<WorldProcedure>();
    procedure->record = &record;
    procedure->number = names.Add(Kind::Procedure, record.Name);
    procedure->book.owner = Owner::Procedure;
    procedure->book.number = procedure->number;
    procedure->body = AddScript(procedure->book, names, record.Script, ScriptField::Body);
    return procedure;
}

std::shared_ptr<const WorldMenu> MakeMenu(Names& names, const SelectionMenu& record) {
    auto menu = std::make_shared<WorldMenu>();
    menu->record = &record;
    menu->number = names.Add(Kind::Menu, record.Name);
    menu->book.owner = Owner::Menu;
    menu->book.number = menu->number;
    for (const ScriptPair& choice : record.Choices) {
        menu->choices.push_back(AddScript(menu->book, names, choice.Script, ScriptField::Choice,
                                          static_cast<int>(menu->choices.size()) + 1));
        AddWords(menu->book, names, choice.Key);
    }
    return menu;
}

std::shared_ptr<const WorldText> MakeText(Names& names, const TextSection& record) {
    auto text = std::make_shared<WorldText>();
    text->record = &record;
    text->book.owner = Owner::Text;
    text->book.number = names.Add(Kind::Text, record.Name);
    return text;
}

std::shared_ptr<const WorldGame> MakeGame(Names& names, const GameModel& game, bool isLibrary) {
    auto block = std::make_shared<WorldGame>();
    Book& book = block->book;
    for (const PlayerCommand& command : game.PlayerCommands)
        block->commands.push_back(
            MakeCommand(names, book, command.Pattern, command.Script, block->commands.size()));
    block->uses = MakeRules(names, book, game.GameUses, ScriptField::Use);
    for (const ItemEntry& item : game.Items)
        AddWords(book, names, item.Name);
    for (const SynonymEntry& synonym : game.Synonyms) {
        for (const std::string_view words : SplitAt(synonym.Words, ";"))
            AddWords(book, names, words);
        AddWords(book, names, synonym.ConvertTo);
    }
    if (isLibrary)
        return block;
    block->start = AddScript(book, names, game.StartScript, ScriptField::Start);
    block->description = AddScript(book, names, game.GameDescription, ScriptField::GameDescription);
    block->beforeTurn = AddScript(book, names, game.BeforeTurnScript, ScriptField::BeforeTurn);
    block->afterTurn = AddScript(book, names, game.AfterTurnScript, ScriptField::AfterTurn);
    return block;
}

std::int64_t RoundedNumber(std::string_view text) {
    const double rounded = std::nearbyint(LeadingReal(text));
    if (rounded >= static_cast<double>(HighestNumber))
        return HighestNumber;
    if (rounded <= static_cast<double>(LowestNumber))
        return LowestNumber;
    return static_cast<std::int64_t>(rounded);
}

std::int64_t InRange(const WorldCollectable& collectable, std::int64_t value) {
    return std::clamp(value, collectable.lowest, collectable.highest);
}

WorldCollectable MakeCollectable(Names& names, const Collectable& record, std::int64_t& initial) {
    const CollectableDefinition definition = ParseCollectable(record.Definition);
    WorldCollectable made;
    made.number = names.Add(Kind::Collectable, record.Name);
    made.display = definition.Display;
    made.isShown = !definition.HiddenInItems && !definition.Display.empty();
    made.hiddenAtZero = definition.HiddenAtZero;
    made.lowest = -HighestNumber;
    made.highest = HighestNumber;
    if (definition.Type == CollectableType::PositiveNumber)
        made.lowest = 0;
    if (definition.Type == CollectableType::Percentage) {
        made.lowest = 0;
        made.highest = 100;
    }
    if (definition.Type == CollectableType::Range && !(definition.Min.empty() && definition.Max.empty())) {
        made.lowest = RoundedNumber(definition.Min);
        made.highest = RoundedNumber(definition.Max);
        if (made.lowest > made.highest)
            std::swap(made.lowest, made.highest);
    }
    initial = InRange(made, RoundedNumber(definition.InitialValue));
    return made;
}

void AddTimers(Names& names, Book& book, std::string_view blocks,
               std::vector<std::pair<Number, WorldTimer>>& timers) {
    Number timer = None;
    WorldTimer made;
    while (!blocks.empty()) {
        const std::string_view line = TakeLine(blocks);
        const std::size_t open = line.find('<');
        const std::size_t close = line.find('>', open);
        const bool hasText = open != std::string_view::npos && close != std::string_view::npos;
        const std::string_view text = hasText ? line.substr(open + 1, close - open - 1) : std::string_view();
        if (BeginsWith(line, "define timer ") && hasText) {
            timer = names.Add(Kind::Timer, Trim(text));
            made = {};
        } else if (BeginsWith(line, "interval ") && hasText) {
            made.interval = RoundedNumber(text);
        } else if (BeginsWith(line, "action ")) {
            made.action.node =
                AddScript(book, names, TextAfter(TrimLeft(line), "action "), ScriptField::TimerAction);
        } else if (BeginsWith(line, "end define") && timer != None) {
            if (made.interval >= 1 && !made.action.IsEmpty())
                timers.emplace_back(timer, made);
            timer = None;
        }
    }
}

} // namespace zem::play
