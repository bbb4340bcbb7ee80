#include "game/GameNames.h"

#include "game/UsedNames.h"

#include <string_view>
#include <unordered_set>
#include <utility>

namespace zem {

namespace {

/// Collects names, each once, in the order in which they come.
class NameCollector {
public:
    /// @param name  outlives the collector
    void Add(std::string_view name) {
        if (!name.empty() && seen_.insert(name).second)
            names_.emplace_back(name);
    }

    void AddAll(const RecordList auto& records) {
        const std::size_t most = names_.size() + static_cast<std::size_t>(records.Count());
        if (most > names_.capacity()) {
            names_.reserve(most * 2);
            seen_.reserve(most * 2);
        }
        for (const auto& record : records)
            Add(record.Name);
    }

    std::vector<std::string> Take() { return std::move(names_); }

private:
    std::unordered_set<std::string_view> seen_;
    std::vector<std::string> names_;
};

void AddThings(NameCollector& names, const GameModel& game, NameKind kind) {
    for (const Room& room : game.Rooms) {
        if (kind != NameKind::Object)
            names.AddAll(room.Characters);
        if (kind != NameKind::Character)
            names.AddAll(room.Objects);
    }
}

void AddProcedures(NameCollector& names, const GameModel& game) {
    for (const Procedure& procedure : game.Procedures)
        if (!procedure.Name.starts_with(InternalProcedure))
            names.Add(procedure.Name);
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
        AddProcedures(names, game);
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
        return UsedNames(commands).Of(game, kind);
    }
    return names.Take();
}

std::shared_ptr<const std::vector<std::string>> NameCache::Names(const GameModel& game, NameKind kind) {
    if (!SameGame(game_, game)) { // copies of one game share their records, so that this takes no time
        game_ = game;
        names_.clear();
    }
    auto& names = names_[kind];
    if (!names) {
        const bool isUsedName =
            kind == NameKind::Variable || kind == NameKind::Flag || kind == NameKind::Timer;
        names = std::make_shared<const std::vector<std::string>>(
            isUsedName ? used_.Of(game_, kind) : GameNames(game_, kind, commands_));
    }
    return names;
}

} // namespace zem
