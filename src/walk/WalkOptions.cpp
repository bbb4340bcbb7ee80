#include "walk/WalkOptions.h"

#include "play/Meaning.h"
#include "play/NameSearch.h"

#include <algorithm>
#include <utility>

namespace zem::walk {

namespace {

using namespace zem::play;

constexpr std::size_t MostWords = 12; // tried for one variable of a pattern
constexpr std::string_view AnyWord = "something";

template <class Make>
auto& Made(std::vector<std::unique_ptr<std::vector<std::unique_ptr<WalkOption>>>>& lists, Number number,
           Make make) {
    if (lists.size() <= number)
        lists.resize(number + std::size_t{1});
    if (lists[number] == nullptr)
        lists[number] = std::make_unique<std::vector<std::unique_ptr<WalkOption>>>(make());
    return *lists[number];
}

} // namespace

std::uint64_t HashOfLine(std::string_view line) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : line)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return hash;
}

WalkOptions::WalkOptions(const World& world) : world_(world) {
    CollectWords();
    game_ = MakeGameOptions();
    for (std::size_t k = 0; k < DirectionCount; ++k) {
        List list;
        Add(list, std::string(DirectionNames[k]), WalkOption::Move);
        exits_[k] = std::move(list.front());
    }
}

WalkOption& WalkOptions::Add(List& list, std::string line, WalkOption::Kind kind, Number item) const {
    auto option = std::make_unique<WalkOption>();
    option->hash = HashOfLine(line);
    option->line = std::move(line);
    option->kind = kind;
    option->item = item;
    return *list.emplace_back(std::move(option));
}

void WalkOptions::CollectWords() {
    const auto isPlain = [](std::string_view text) {
        return !text.empty() && text.find_first_of("#%\r\n") == std::string_view::npos;
    };
    for (const Book* book : world_.OwnBooks())
        for (const BookCondition& condition : book->conditions) {
            const bool compares = condition.test == Test::Equal || condition.test == Test::Differ ||
                                  condition.test == Test::Contains;
            const std::string& text = condition.arguments.text;
            if (!compares || !isPlain(text))
                continue;
            const auto addTo = [&](std::vector<std::string>& list) {
                if (list.size() < MostWords && std::find(list.begin(), list.end(), text) == list.end())
                    list.push_back(text);
            };
            addTo(words_[condition.arguments.name]);
            addTo(answers_);
        }
    answers_.emplace_back(AnyWord);
}

/// Each variable of a pattern holds any word but the chosen one.
std::string WalkOptions::LineWith(const Pattern& pattern, std::size_t chosen, std::string_view word) {
    std::string line = pattern.literals.front();
    for (std::size_t k = 0; k < pattern.variables.size(); ++k)
        line.append(k == chosen ? word : AnyWord).append(pattern.literals[k + 1]);
    return line;
}

std::vector<std::string> WalkOptions::LinesOf(const WorldCommand& command) const {
    if (command.patterns.empty())
        return {};
    const Pattern& pattern = command.patterns.front();
    std::vector<std::string> lines = {LineWith(pattern, pattern.variables.size(), {})};
    for (std::size_t k = 0; k < pattern.variables.size(); ++k)
        if (const auto words = words_.find(pattern.variables[k]); words != words_.end())
            for (const std::string& word : words->second)
                lines.push_back(LineWith(pattern, k, word));
    return lines;
}

std::string WalkOptions::LineOf(const WorldCommand& command, Number variable, std::string_view text) const {
    const Pattern& pattern = command.patterns.front();
    const auto found = std::find(pattern.variables.begin(), pattern.variables.end(), variable);
    return LineWith(pattern, static_cast<std::size_t>(found - pattern.variables.begin()), text);
}

void WalkOptions::AddCommand(List& list, const WorldCommand& command) const {
    for (std::string& line : LinesOf(command))
        Add(list, std::move(line));
}

WalkOptions::List WalkOptions::MakeGameOptions() const {
    List list;
    Add(list, "wait");
    for (const auto& game : world_.GameBlocks()) {
        for (const WorldCommand& command : game->commands)
            AddCommand(list, command);
        for (const ItemRule& rule : game->uses)
            if (const WorldItem* item = world_.FindItem(rule.item))
                Add(list, "use " + item->name, WalkOption::Act, rule.item);
    }
    return list;
}

WalkOptions::List WalkOptions::MakeRoomOptions(const WorldRoom& room) const {
    List list;
    for (const WorldPlace& place : room.places)
        if (world_.FindRoom(place.room) != nullptr)
            Add(list, "go to " + world_.GetNames().Name(Kind::Room, place.room), WalkOption::Move);
    for (const WorldCommand& command : room.commands)
        AddCommand(list, command);
    for (const ItemRule& rule : room.uses)
        if (const WorldItem* item = world_.FindItem(rule.item))
            Add(list, "use " + item->name, WalkOption::Act, rule.item);
    return list;
}

WalkOptions::List WalkOptions::MakeThingOptions(const WorldThing& thing) const {
    List list;
    const std::string& name = thing.record->Name;
    if (thing.look >= 0)
        Add(list, "look at " + name);
    if (thing.take >= 0)
        Add(list, "take " + name);
    if (thing.speak >= 0)
        Add(list, "speak to " + name);
    for (const ItemRule& rule : thing.uses)
        if (const WorldItem* item = world_.FindItem(rule.item))
            Add(list, "use " + item->name + " on " + name, WalkOption::Act, rule.item);
    for (const ItemRule& rule : thing.gives)
        if (const WorldItem* item = world_.FindItem(rule.item))
            Add(list, "give " + item->name + " to " + name, WalkOption::Act, rule.item);
    return list;
}

WalkOptions::List WalkOptions::MakeItemOptions(Number item) const {
    List list;
    const std::string& name = world_.FindItem(item)->name;
    const Number object = world_.GetNames().Find(Kind::Thing, Names::ThingKey(false, name));
    if (object == None || world_.FindThing(object) == nullptr)
        return list;
    if (world_.FindThing(object)->look >= 0)
        Add(list, "look at " + name, WalkOption::Act, item);
    Add(list, "drop " + name, WalkOption::Drop, item);
    return list;
}

void WalkOptions::AddExits(const State& state, const WorldRoom& room, std::vector<WalkOption*>& options) {
    const Cell first = world_.GetNames().CellOf(Kind::Room, room.number) + FirstExit;
    for (std::uint8_t k = 0; k < DirectionCount; ++k) {
        const std::int64_t cell = state[first + k];
        const bool isScripted = room.exits[k].exists && room.exits[k].room == None && cell == 0;
        if (isScripted || ExitLeadsTo(world_, state, room, k) != None)
            options.push_back(exits_[k].get());
    }
}

void WalkOptions::Collect(const State& state, const std::vector<Number>& had,
                          std::vector<WalkOption*>& options) {
    const auto addAll = [&](const List& list) {
        for (const std::unique_ptr<WalkOption>& option : list)
            if (option->item == None || state[world_.GetNames().CellOf(Kind::Item, option->item)] != 0)
                options.push_back(option.get());
    };
    addAll(game_);
    for (const Number item : had)
        addAll(Made(items_, item, [&] { return MakeItemOptions(item); }));
    if (state[PlayerRoom] == 0)
        return;
    const auto number = static_cast<Number>(state[PlayerRoom] - 1);
    const WorldRoom& room = *world_.FindRoom(number);
    AddExits(state, room, options);
    addAll(Made(rooms_, number, [&] { return MakeRoomOptions(room); }));
    for (const Number thing : state.ThingsIn(state[PlayerRoom]))
        if (IsThere(world_, state, thing))
            addAll(Made(things_, thing, [&] { return MakeThingOptions(*world_.FindThing(thing)); }));
}

} // namespace zem::walk
