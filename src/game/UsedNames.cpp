#include "game/UsedNames.h"

#include "kel/ScriptLine.h"
#include "model/Texts.h"

#include <type_traits>

namespace zem {

namespace {

/// Calls differs(record of a, -1) or differs(record of b, 1) for the records between the first and the last
/// that the tables do not share. An entry that was added or removed moves the later ones, so both ends count.
template <class Record, class Differs>
void CompareTables(const Table<Record>& a, const Table<Record>& b, Differs differs) {
    std::vector<const Record*> before;
    std::vector<const Record*> after;
    for (const Record& record : a)
        before.push_back(&record);
    for (const Record& record : b)
        after.push_back(&record);
    std::size_t first = 0;
    while (first < before.size() && first < after.size() && before[first] == after[first])
        ++first;
    while (before.size() > first && after.size() > first && before.back() == after.back()) {
        before.pop_back();
        after.pop_back();
    }
    for (std::size_t k = first; k < before.size(); ++k)
        differs(*before[k], -1);
    for (std::size_t k = first; k < after.size(); ++k)
        differs(*after[k], 1);
}

} // namespace

std::vector<std::string> UsedNames::Of(const GameModel& game, NameKind kind) {
    GoOnTo(game);
    std::vector<std::string> names;
    for (const auto& [name, count] : uses_[kind])
        names.push_back(name);
    return names;
}

void UsedNames::GoOnTo(const GameModel& game) {
    ForEachField<GameModel>([&](const auto& field) {
        const auto& before = game_.*field.member;
        const auto& after = game.*field.member;
        const FieldUse use = detail::UseInside({}, field.use);
        if constexpr (RecordList<std::remove_cvref_t<decltype(before)>>) {
            CompareTables(before, after, [&](const auto& record, int change) { Count(record, use, change); });
        } else if (!(before == after)) {
            Count(before, use, -1);
            Count(after, use, 1);
        }
    });
    game_ = game; // Keeps the records alive whose addresses the next comparison goes by.
}

template <class Record>
void UsedNames::Count(const Record& record, FieldUse use, int change) {
    ForEachTextOf(record, use, [&](const Place&, FieldUse kind, const std::string& text) {
        if (kind.kind == FieldKind::Script)
            CountScript(text, change);
        else if (kind.kind == FieldKind::Pattern)
            CountPattern(text, change);
    });
}

void UsedNames::CountScript(std::string_view script, int change) {
    ForEachLine(script, [&](TextRange lineRange, int) {
        const std::string_view line = lineRange.Of(script);
        ForEachCommandName(line, TakeApart(line, commands_), [&](TextRange range, NameKind kind) {
            if (kind == NameKind::Variable || kind == NameKind::Flag || kind == NameKind::Timer)
                CountName(kind, range.Of(line), change);
        });
    });
}

void UsedNames::CountPattern(std::string_view pattern, int change) {
    ForEachVariable(pattern, [&](TextRange range, char sign) {
        if (sign == '#')
            CountName(NameKind::Variable, range.Of(pattern), change);
        return sign == '#';
    });
}

void UsedNames::CountName(NameKind kind, std::string_view name, int change) {
    if (name.empty())
        return;
    auto& names = uses_[kind];
    const auto found = names.find(name);
    if (found == names.end())
        names.emplace(name, change);
    else if ((found->second += change) == 0)
        names.erase(found);
}

} // namespace zem
