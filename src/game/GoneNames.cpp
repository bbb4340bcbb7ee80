#include "game/GoneNames.h"

#include "game/WhereUsed.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace zem {

namespace {

using NameList = std::vector<std::string_view>;

template <class Records>
void AddNames(const Records& records, NameList& names) {
    for (const auto& record : records)
        names.push_back(record.Name);
}

NameList NamesOfThings(const GameModel& game, NameKind kind) {
    NameList names;
    for (const Room& room : game.Rooms)
        AddNames(kind == NameKind::Character ? room.Characters : room.Objects, names);
    return names;
}

template <class Records>
NameList NamesOf(const Records& records) {
    NameList names;
    AddNames(records, names);
    return names;
}

void AddGone(NameKind kind, const NameList& before, const NameList& now, std::vector<GoneName>& gone) {
    const std::unordered_set<std::string_view> known(before.begin(), before.end());
    std::unordered_set<std::string_view> left(now.begin(), now.end());
    for (std::size_t k = 0; k < before.size(); ++k) {
        const std::string_view name = before[k];
        if (name.empty() || name.starts_with(InternalProcedure) || !left.insert(name).second)
            continue;
        const bool isRenamed = before.size() == now.size() && !known.contains(now[k]);
        gone.push_back({kind, std::string(name), std::string(isRenamed ? now[k] : std::string_view()), 0});
    }
}

int CountUses(const GameIndex& index, const GoneName& gone) {
    const std::vector<Reference> uses = WhereUsed(index, gone.kind, gone.name);
    return static_cast<int>(std::count_if(
        uses.begin(), uses.end(), [](const Reference& use) { return use.role == ReferenceRole::Use; }));
}

} // namespace

std::vector<GoneName> FindGoneNames(const GameModel& before, const GameIndex& after) {
    const GameModel& now = after.Game();
    std::vector<GoneName> gone;
    AddGone(NameKind::Room, NamesOf(before.Rooms), NamesOf(now.Rooms), gone);
    for (const NameKind kind : {NameKind::Character, NameKind::Object})
        AddGone(kind, NamesOfThings(before, kind), NamesOfThings(now, kind), gone);
    AddGone(NameKind::Item, NamesOf(before.Items), NamesOf(now.Items), gone);
    AddGone(NameKind::Procedure, NamesOf(before.Procedures), NamesOf(now.Procedures), gone);
    AddGone(NameKind::TextSection, NamesOf(before.TextSections), NamesOf(now.TextSections), gone);
    AddGone(NameKind::Menu, NamesOf(before.SelectionMenus), NamesOf(now.SelectionMenus), gone);
    AddGone(NameKind::Collectable, NamesOf(before.Collectables), NamesOf(now.Collectables), gone);
    for (GoneName& name : gone)
        name.uses = CountUses(after, name);
    gone.erase(std::remove_if(gone.begin(), gone.end(), [](const GoneName& name) { return name.uses == 0; }),
               gone.end());
    return gone;
}

} // namespace zem
