#include "game/GameNames.h"

#include "base/LineText.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace zem {

namespace {

constexpr std::pair<std::string_view, NameKind> Kinds[] = {
    {"room", NameKind::Room},
    {"object", NameKind::Object},
    {"character", NameKind::Character},
    {"thing", NameKind::Thing},
    {"item", NameKind::Item},
    {"procedure", NameKind::Procedure},
    {"text section", NameKind::TextSection},
    {"menu", NameKind::Menu},
    {"variable", NameKind::Variable},
    {"collectable", NameKind::Collectable},
    {"flag", NameKind::Flag},
    {"timer", NameKind::Timer},
};

std::vector<std::string_view> SplitParts(std::string_view parameter) {
    return SplitAt(parameter, ";");
}

NameKind KindOf(std::string_view part) {
    for (const auto& [word, kind] : Kinds)
        if (EqualIgnoringCase(Trim(part), word))
            return kind;
    return NameKind::None;
}

/// Collects names, each once, in the order in which they come.
class NameCollector {
public:
    void Add(std::string_view name) {
        if (!name.empty() && seen_.emplace(name).second)
            names_.emplace_back(name);
    }

    template <class Record>
    void AddAll(const Table<Record>& table) {
        for (const Record& record : table)
            Add(record.Name);
    }

    std::vector<std::string> Take() { return std::move(names_); }

private:
    std::unordered_set<std::string> seen_;
    std::vector<std::string> names_;
};

template <class Use>
void UsePairs(const Table<ScriptPair>& pairs, Use use) {
    for (const ScriptPair& pair : pairs)
        use(pair.Script);
}

template <class Use>
void UseScriptsOfThings(const Table<Thing>& things, Use use) {
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

/// A keyword as it stands before its parameter, in small letters, and the parts of it that hold a name.
struct NamingCommand {
    std::string begin; // "flag on <"
    std::vector<std::size_t> parts;
};

std::vector<NamingCommand> CommandsNaming(NameKind kind, const CommandCatalogue& catalogue) {
    std::vector<NamingCommand> commands;
    for (const CommandDefinition& entry : catalogue) {
        NamingCommand command;
        const std::vector<std::string_view> parts = SplitParts(entry.RawSyntax);
        for (std::size_t k = 0; k < parts.size(); ++k)
            if (KindOf(parts[k]) == kind)
                command.parts.push_back(k);
        // A further condition of an "if" line has no "if" of its own.
        command.begin =
            Lower(BeginsWith(entry.Keyword, "if ") ? entry.Keyword.substr(3) : entry.Keyword) + " <";
        if (!command.parts.empty())
            commands.push_back(std::move(command));
    }
    return commands;
}

void AddNamesInScript(NameCollector& names, const std::string& script,
                      const std::vector<NamingCommand>& commands) {
    const std::string lowered = Lower(script);
    for (const NamingCommand& command : commands)
        for (std::size_t at = lowered.find(command.begin); at != std::string::npos;
             at = lowered.find(command.begin, at + 1)) {
            const std::size_t begin = at + command.begin.size();
            const std::size_t end = script.find('>', begin);
            if (end == std::string::npos)
                break;
            const auto parts = SplitParts(std::string_view(script).substr(begin, end - begin));
            for (const std::size_t part : command.parts)
                if (part < parts.size())
                    names.Add(Trim(parts[part]));
        }
}

/// The names that no table of the game holds, but its scripts alone.
std::vector<std::string> NamesInScripts(const GameModel& game, NameKind kind,
                                        const CommandCatalogue& catalogue) {
    NameCollector names;
    const std::vector<NamingCommand> commands = CommandsNaming(kind, catalogue);
    UseScripts(game, [&](const std::string& script) { AddNamesInScript(names, script, commands); });
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

ParameterPart FindParameterPart(std::string_view syntax, std::string_view parameter, std::size_t position) {
    const auto index = static_cast<std::size_t>(
        std::count(parameter.begin(), parameter.begin() + static_cast<std::ptrdiff_t>(position), ';'));
    const std::vector<std::string_view> kinds = SplitParts(syntax);
    ParameterPart part;
    part.kind = KindOf(kinds[std::min(index, kinds.size() - 1)]);
    const std::string_view text = Trim(SplitParts(parameter)[index]);
    const std::size_t previous = parameter.substr(0, position).rfind(';');
    part.begin = previous == std::string_view::npos ? 0 : previous + 1;
    while (part.begin < parameter.size() && parameter[part.begin] == ' ')
        ++part.begin;
    part.end = part.begin + text.size();
    return part;
}

std::vector<std::string> GameNames(const GameModel& game, NameKind kind, const CommandCatalogue& catalogue) {
    NameCollector names;
    switch (kind) {
    case NameKind::None:
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
        return NamesInScripts(game, kind, catalogue);
    }
    return names.Take();
}

} // namespace zem
