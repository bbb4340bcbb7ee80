#include "model/GameModel.h"

#include "base/LineText.h"
#include "model/Fields.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zem {

bool IsStandardText(std::string_view name) {
    return std::any_of(std::begin(StandardTexts), std::end(StandardTexts),
                       [&](const char* standard) { return EqualIgnoringCase(name, standard); });
}

void AddStandardTexts(GameModel& game) {
    for (const char* name : StandardTexts)
        if (std::none_of(game.TextSections.begin(), game.TextSections.end(),
                         [&](const TextSection& text) { return EqualIgnoringCase(text.Name, name); }))
            game.TextSections.Append({name, ""});
}

void NewGame(GameModel& game) {
    GameModel fresh;
    fresh.NextInternalProcedure = game.NextInternalProcedure;
    fresh.KelVersion = CurrentKelVersion;
    fresh.GameInfo = std::string("Created with ") + NameAndVersion;
    AddStandardTexts(fresh);
    fresh.ErrorMessages = game.ErrorMessages;
    for (int k = 1; k <= fresh.ErrorMessages.Count(); ++k)
        if (!fresh.ErrorMessages[k].GameText.empty())
            fresh.ErrorMessages.Edit(k).GameText.clear();
    game = std::move(fresh);
}

bool SameGame(const GameModel& a, const GameModel& b) {
    bool same = true;
    ForEachField<GameModel>([&](const auto& field) { same = same && a.*field.member == b.*field.member; });
    return same;
}

namespace {

template <class Record, class Field>
std::string Join(const Table<Record>& table, Field field) {
    std::string text;
    std::string_view separator;
    for (const Record& record : table) {
        text.append(separator).append(record.*field);
        separator = "; ";
    }
    return text;
}

} // namespace

std::string ItemsToText(const GameModel& game) {
    return Join(game.Items, &ItemEntry::Name);
}

std::string StartItemsToText(const GameModel& game) {
    std::string text;
    for (const ItemEntry& item : game.Items)
        if (item.IsStartItem)
            text.append(item.Name).append(", ");
    if (!text.empty())
        text.resize(text.size() - 2);
    return std::string(Trim(text));
}

std::string CollectablesToText(const GameModel& game) {
    return Join(game.Collectables, &Collectable::Definition);
}

} // namespace zem
