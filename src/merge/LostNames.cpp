#include "merge/LostNames.h"

#include "base/LineText.h"
#include "game/References.h"
#include "model/Texts.h"

#include <set>
#include <string_view>
#include <utility>

namespace zem::merge {

namespace {

using KnownName = std::pair<NameKind, std::string>; // the name in small letters

KnownName Known(NameKind kind, std::string_view name) {
    const bool isThing = kind == NameKind::Object || kind == NameKind::Character;
    return {isThing ? NameKind::Thing : kind, Lower(Trim(name))};
}

/// What is called by a name; internal procedures have numbers, which mean nothing in another version.
std::set<KnownName> NamesOf(const GameModel& game) {
    std::set<KnownName> names;
    ForEachText(game, [&](const Place&, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Name && !text.starts_with(InternalProcedure))
            names.insert(Known(use.names, text));
    });
    return names;
}

} // namespace

std::vector<LostName> FindLostNames(const GameModel& ours, const GameModel& theirs, const GameModel& merged,
                                    const CommandLookup& commands) {
    std::set<KnownName> lost = NamesOf(ours);
    lost.merge(NamesOf(theirs));
    for (const KnownName& name : NamesOf(merged))
        lost.erase(name);
    std::vector<LostName> found;
    if (lost.empty())
        return found;
    ForEachReference(merged, commands, [&](const Reference& reference) {
        if (reference.role == ReferenceRole::Use && lost.contains(Known(reference.kind, reference.name)))
            found.push_back({reference.place, reference.kind, std::string(reference.name)});
    });
    return found;
}

} // namespace zem::merge
