#include "game/GameNames.h"

#include "kel/ScriptLine.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace zem {

namespace {

/// Collects names, each once, in the order in which they come.
class NameCollector {
public:
    void Add(std::string_view name) {
        if (!name.empty() && seen_.emplace(name).second)
            names_.emplace_back(name);
    }

    void AddAll(const RecordList auto& list) {
        for (const auto& record : list)
            Add(record.Name);
    }

    std::vector<std::string> Take() { return std::move(names_); }

private:
    std::unordered_set<std::string> seen_;
    std::vector<std::string> names_;
};

template <class Use>
void UsePairs(const RecordList auto& pairs, Use use) {
    for (const ScriptPair& pair : pairs)
        use(pair.Script);
}

template <class Use>
void UseScriptsOfThings(const List<Thing>& things, Use use) {
    for (const Thing& thing : things) {
        use(thing.Look);
        use(thing.Speak);
        use(thing.Take);
        UsePairs(thing.Uses, use);
        UsePairs(thing.Gives, use);
    }
}

template <class Use>
void UseScriptsOfRoom(const Room& room, Use use) {
    use(room.Out->Script);
    for (const auto& [direction, exit] : CompassExits)
        use((room.*exit)->Script);
    use(room.Script);
    use(room.Description);
    UsePairs(room.Places, use);
    UsePairs(room.Commands, use);
    UsePairs(room.Uses, use);
    UseScriptsOfThings(room.Characters, use);
    UseScriptsOfThings(room.Objects, use);
}

/// Gives every script of the game to `use`.
template <class Use>
void UseScripts(const GameModel& game, Use use) {
    use(game.StartScript);
    use(game.GameDescription);
    use(game.BeforeTurnScript);
    use(game.AfterTurnScript);
    for (const PlayerCommand& command : game.PlayerCommands)
        use(command.Script);
    UsePairs(game.GameUses, use);
    for (const Room& room : game.Rooms)
        UseScriptsOfRoom(room, use);
    for (const Procedure& procedure : game.Procedures)
        use(procedure.Script);
    for (const SelectionMenu& menu : game.SelectionMenus)
        UsePairs(menu.Choices, use);
}

/// The names that no table of the game holds, but its scripts alone.
std::vector<std::string> NamesInScripts(const GameModel& game, NameKind wanted,
                                        const CommandLookup& commands) {
    NameCollector names;
    UseScripts(game, [&](std::string_view script) {
        ForEachLine(script, [&](TextRange lineRange, int) {
            const std::string_view line = lineRange.Of(script);
            ForEachName(line, commands, [&](TextRange range, NameKind kind) {
                if (kind == wanted)
                    names.Add(range.Of(line));
            });
        });
    });
    std::vector<std::string> sorted = names.Take();
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

void AddThings(NameCollector& names, const GameModel& game, NameKind kind) {
    for (const Room& room : game.Rooms) {
        if (kind != NameKind::Object)
            names.AddAll(room.Characters);
        if (kind != NameKind::Character)
            names.AddAll(room.Objects);
    }
}

} // namespace

std::vector<std::string> GameNames(const GameModel& game, NameKind kind, const CommandLookup& commands) {
    NameCollector names;
    switch (kind) {
    case NameKind::None:
    case NameKind::File:
        break;
    case NameKind::Room:
        names.AddAll(game.Rooms);
        break;
    case NameKind::Object:
    case NameKind::Character:
    case NameKind::Thing:
        AddThings(names, game, kind);
        break;
    case NameKind::Item:
        names.AddAll(game.Items);
        break;
    case NameKind::Procedure:
        names.AddAll(game.Procedures);
        break;
    case NameKind::TextSection:
        names.AddAll(game.TextSections);
        break;
    case NameKind::Menu:
        names.AddAll(game.SelectionMenus);
        break;
    case NameKind::Collectable:
        names.AddAll(game.Collectables);
        break;
    case NameKind::Variable:
    case NameKind::Flag:
    case NameKind::Timer:
        return NamesInScripts(game, kind, commands);
    }
    return names.Take();
}

} // namespace zem
