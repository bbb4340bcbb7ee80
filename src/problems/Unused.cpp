// What was made and is never used.
#include "base/LineText.h"
#include "game/References.h"
#include "model/CollectableDefinition.h"
#include "model/InternalScripts.h"
#include "model/Texts.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/NameUses.h"
#include "problems/ScriptFlow.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_set>

namespace zem::problems {

namespace {

/// The names that are used in other ways than those that do not count.
class Uses {
public:
    explicit Uses(const CheckedGame& game) : game_(game) {
        for (const NameUse& use : game.NameUses())
            if (IsMadeOfVariables(use.name))
                made_.push_back(use);
            else
                names_[use.kind].insert(use.name);
    }

    bool Has(NameKind kind, std::string_view name) const {
        const auto names = names_.find(kind);
        return (names != names_.end() && names->second.contains(name)) || game_.IsMentionedElsewhere(name) ||
               std::any_of(made_.begin(), made_.end(),
                           [&](const NameUse& use) { return use.kind == kind && CanBecome(use.name, name); });
    }

private:
    const CheckedGame& game_;
    std::map<NameKind, std::unordered_set<std::string_view>> names_;
    std::vector<NameUse> made_;
};

template <class Records, class IsOdd>
void ReportEach(const Records& records, FieldId list, const char* id, const char* text, Findings& findings,
                IsOdd isOdd) {
    int entry = 0;
    for (const auto& record : records) {
        const Place place = Place::Of({{list, ++entry}});
        if (isOdd(record))
            findings.Add(id, place, text).fixes = {RemoveRecord("Remove it", place)};
    }
}

bool IsStandardText(std::string_view name) {
    return std::any_of(std::begin(StandardTexts), std::end(StandardTexts),
                       [&](const char* standard) { return EqualIgnoringCase(name, standard); });
}

void FindUnusedRecords(const CheckedGame& game, Findings& findings) {
    const Uses uses(game);
    const GameModel& model = game.Game();
    ReportEach(model.Procedures, FieldId::GameProcedures, "U01", "Nothing runs this procedure.", findings,
               [&](const Procedure& procedure) {
                   return !procedure.Name.starts_with(InternalProcedure) &&
                          !uses.Has(NameKind::Procedure, procedure.Name);
               });
    ReportEach(model.TextSections, FieldId::GameTextSections, "U02", "Nothing prints this text.", findings,
               [&](const TextSection& text) {
                   return !IsStandardText(text.Name) && !uses.Has(NameKind::TextSection, text.Name);
               });
    ReportEach(model.SelectionMenus, FieldId::GameSelectionMenus, "U03", "Nothing shows this menu.", findings,
               [&](const SelectionMenu& menu) { return !uses.Has(NameKind::Menu, menu.Name); });
}

/// Items that something is done with when the player has them, or that scripts ask for.
void FindUnusedItems(const CheckedGame& game, Findings& findings) {
    std::set<std::string_view> asked;
    bool isAnyAsked = false;
    for (const NameUse& use : game.NameUses()) {
        if (use.kind != NameKind::Item || (use.call != nullptr && Is(*use.call, "give")))
            continue;
        asked.insert(use.name);
        isAnyAsked |= IsMadeOfVariables(use.name);
    }
    if (isAnyAsked)
        return;
    ReportEach(game.Game().Items, FieldId::GameItems, "U04", "Nothing asks for this item or uses it.",
               findings, [&](const ItemEntry& item) {
                   return !item.Name.empty() && !asked.contains(item.Name) &&
                          !game.IsMentionedElsewhere(item.Name);
               });
}

/// A script of its own in the place of one that is shared.
Fix OwnCopy(const NameUse& use) {
    return ChangeGame(
        "Give it a script of its own", [place = use.place, name = std::string(use.name)](GameModel& game) {
            const auto resolved = Resolve(game, place);
            const auto shared = std::find_if(game.Procedures.begin(), game.Procedures.end(),
                                             [&](const Procedure& other) { return other.Name == name; });
            if (!resolved || resolved->text == nullptr || place.bytes.Of(*resolved->text) != name ||
                shared == game.Procedures.end())
                return;
            std::string text = *resolved->text;
            const std::string copy = AddInternalProcedure(game, std::string((*shared).Script));
            text.replace(place.bytes.begin, place.bytes.Size(), copy);
            SetText(game, place, text);
        });
}

void FindInternalScripts(const CheckedGame& game, Findings& findings) {
    std::set<std::string_view> seen;
    for (const NameUse& use : game.NameUses())
        if (use.kind == NameKind::Procedure && use.name.starts_with(InternalProcedure) &&
            !seen.insert(use.name).second)
            findings
                .Add("U06", use.place,
                     "This script is that of another place, too: whoever edits one of them changes both.")
                .fixes = {OwnCopy(use)};
    int entry = 0;
    for (const Procedure& procedure : game.Game().Procedures) {
        const Place place = Place::Of({{FieldId::GameProcedures, ++entry}});
        if (!procedure.Name.starts_with(InternalProcedure) || seen.contains(procedure.Name) ||
            game.IsMentionedElsewhere(procedure.Name))
            continue;
        Fix remove = RemoveRecord("Remove it", place);
        remove.needsNoChoice = true;
        findings.Add("U05", place, "This script belonged to something that is gone, and nothing runs it.")
            .fixes = {remove};
    }
}

void FindIdleCollectables(const CheckedGame& game, Findings& findings) {
    std::set<std::string_view> changed;
    std::set<std::string_view> asked;
    for (const char* keyword : {"gain", "spend", "set amount"})
        for (const CheckedCall* call : game.CallsOf(keyword))
            changed.insert(call->Part(0));
    for (const CheckedCall* call : game.CallsOf("if amount"))
        asked.insert(call->Part(0));
    int entry = 0;
    for (const Collectable& collectable : game.Game().Collectables) {
        const Place place = Place::Of({{FieldId::GameCollectables, ++entry}});
        if (game.IsMentionedElsewhere(collectable.Name))
            continue;
        if (!changed.contains(collectable.Name))
            findings.Add("U07", place, "Nothing ever changes how much of this there is.");
        if (!asked.contains(collectable.Name) && ParseCollectable(collectable.Definition).HiddenInItems)
            findings.Add("U08", place, "The player never sees how much of this there is, and no script asks.")
                .fixes = {RemoveRecord("Remove it", place)};
    }
}

/// Whether a text of the room says the name, in any capitals.
bool IsSaidIn(const Room& room, std::string_view name) {
    const std::string lower = Lower(name);
    bool isSaid = false;
    ForEachTextOf(room, {}, [&](const Place& place, FieldUse use, const std::string& text) {
        isSaid |= use.kind != FieldKind::Name && place.field != FieldId::RoomName &&
                  Lower(text).find(lower) != std::string::npos;
    });
    return isSaid;
}

template <class Things>
void FindIdleThingsIn(const CheckedGame& game, const Uses& uses, int room, FieldId list, const Things& things,
                      NameKind kind, Findings& findings) {
    int entry = 0;
    for (const Thing& thing : things) {
        const Place place = Place::Of({{FieldId::GameRooms, room}, {list, ++entry}});
        if (!thing.Look.empty() || !thing.Speak.empty() || !thing.Take.empty() || thing.Uses.Count() != 0 ||
            thing.Gives.Count() != 0 || !thing.MiscTags.empty() || uses.Has(kind, thing.Name) ||
            uses.Has(NameKind::Thing, thing.Name) || game.OwnNames(NameKind::Item).Has(thing.Name) ||
            IsSaidIn(game.Game().Rooms[room], thing.Name))
            continue;
        findings
            .Add("U09", place, "No text and no script mentions it, and there is nothing to be seen of it.")
            .fixes = {RemoveRecord("Remove it", place)};
    }
}

void FindIdleThings(const CheckedGame& game, Findings& findings) {
    const Uses uses(game);
    int entry = 0;
    for (const Room& room : game.Game().Rooms) {
        ++entry;
        FindIdleThingsIn(game, uses, entry, FieldId::RoomCharacters, room.Characters, NameKind::Character,
                         findings);
        FindIdleThingsIn(game, uses, entry, FieldId::RoomObjects, room.Objects, NameKind::Object, findings);
    }
}

} // namespace

std::span<const Check> UnusedChecks() {
    static constexpr Check Rows[] = {
        {"U01", Level::Hint, "Procedures that nothing runs", FindUnusedRecords},
        {"U02", Level::Hint, "Texts that nothing prints", FindUnusedRecords},
        {"U03", Level::Hint, "Menus that nothing shows", FindUnusedRecords},
        {"U04", Level::Hint, "Items that nothing asks for", FindUnusedItems},
        {"U05", Level::Hint, "Scripts of what is gone", FindInternalScripts},
        {"U06", Level::Warning, "Scripts that two places share", FindInternalScripts},
        {"U07", Level::Hint, "Collectables that never change", FindIdleCollectables},
        {"U08", Level::Hint, "Collectables that nobody sees", FindIdleCollectables},
        {"U09", Level::Hint, "Things that nothing mentions", FindIdleThings},
    };
    return Rows;
}

} // namespace zem::problems
