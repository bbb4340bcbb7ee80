// What a player can never have, see or make happen.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/NameUses.h"
#include "problems/ScriptFlow.h"

#include <algorithm>
#include <map>
#include <set>

namespace zem::problems {

namespace {

struct ObjectAt {
    Place place; // of the record
    const Thing* thing = nullptr;
};

std::map<std::string_view, ObjectAt> FirstObjects(const GameModel& game) {
    std::map<std::string_view, ObjectAt> objects;
    int room = 0;
    for (const Room& one : game.Rooms) {
        ++room;
        int entry = 0;
        for (const Thing& object : one.Objects)
            objects.try_emplace(
                object.Name,
                ObjectAt{Place::Of({{FieldId::GameRooms, room}, {FieldId::RoomObjects, ++entry}}), &object});
    }
    return objects;
}

Fix AddTakeScript(const ObjectAt& object, const std::string& name) {
    Place take = object.place;
    take.field = FieldId::ThingTake;
    take.bytes = {0, 0};
    return {"Let the player take the object " + name, [take, name](const GameModel& game) {
                // An empty place is the whole field, which is empty.
                return ReplaceWithProcedure("", take, "", "give <" + name + ">\r\nhide <" + name + ">")
                    .apply(game);
            }};
}

void FindItemsOutOfReach(const CheckedGame& game, Findings& findings) {
    const ScriptFlow& flow = game.Flow();
    const auto& had = flow.ItemsToBeHad();
    const auto objects = FirstObjects(game.Game());
    std::set<std::string_view> lost;
    int entry = 0;
    for (const ItemEntry& item : game.Game().Items) {
        const Place place = Place::Of({{FieldId::GameItems, ++entry}});
        if (item.Name.empty() || had.contains(item.Name) || game.MayBeUnknown(item.Name))
            continue;
        lost.insert(item.Name);
        Problem& problem =
            findings.Add("L01", place,
                         "No script that can run gives this item, and the player does not have it at the "
                         "start, so nobody can ever have it.");
        problem.fixes = {ChangeGame("Have it at the start", [entry](GameModel& changed) {
            if (entry <= changed.Items.Count())
                changed.Items.Edit(entry).IsStartItem = true;
        })};
        if (const auto object = objects.find(item.Name); object != objects.end() &&
                                                         object->second.thing->Take.empty() &&
                                                         item.Name.find_first_of("<>{}") == std::string::npos)
            problem.fixes.push_back(AddTakeScript(object->second, item.Name));
    }
    for (const NameUse& use : game.NameUses()) {
        if (use.kind != NameKind::Item || !lost.contains(use.name))
            continue;
        if (use.call == nullptr)
            findings.Add("L06", use.place,
                         "Nobody can ever have " + QuoteShortly(use.name) + ", so this rule never runs.");
        else if (Is(*use.call, "if has"))
            findings.Add("X05", use.place,
                         "Nobody can ever have " + QuoteShortly(use.name) + ", so this condition is " +
                             (use.call->isNegated ? "always true." : "never true."));
    }
}

std::set<std::string_view> ShownBy(const CheckedGame& game, const ScriptFlow& flow,
                                   std::string_view keyword) {
    std::set<std::string_view> shown;
    for (const CheckedScript& script : game.Scripts())
        for (const CheckedCall& call : script.calls)
            if (Is(call, keyword) && flow.CanRun(script))
                shown.insert(call.Part(0));
    return shown;
}

void FindHiddenThings(const CheckedGame& game, Findings& findings) {
    const ScriptFlow& flow = game.Flow();
    const std::set<std::string_view> objects = ShownBy(game, flow, "show");
    const std::set<std::string_view> characters = ShownBy(game, flow, "reveal");
    const auto check = [&](const Thing& thing, const Place& place, NameKind kind) {
        const bool isObject = kind == NameKind::Object;
        if (!thing.Hidden || (isObject ? objects : characters).contains(thing.Name) ||
            game.IsMentionedElsewhere(thing.Name) || flow.MayMean(kind, thing.Name) ||
            game.MayBeUnknown(thing.Name))
            return;
        // Dropping an item that the player can have shows the object of its name.
        if (isObject && flow.ItemsToBeHad().contains(thing.Name) &&
            game.Names(NameKind::Item).Has(thing.Name))
            return;
        findings
            .Add("L02", place,
                 std::string("It is hidden at the beginning, and no script that can run says \"") +
                     (isObject ? "show" : "reveal") + "\", so nobody ever sees it.")
            .fixes = {ChangeGame("Do not hide it", [place](GameModel& changed) {
            if (!Exists(changed, place))
                return;
            Room& room = changed.Rooms.Edit(place.steps[0].entry);
            auto& list = place.steps[1].list == FieldId::RoomObjects ? room.Objects : room.Characters;
            list.Edit(place.steps[1].entry).Hidden = false;
        })};
    };
    int room = 0;
    for (const Room& one : game.Game().Rooms) {
        ++room;
        int entry = 0;
        for (const Thing& character : one.Characters)
            check(character, Place::Of({{FieldId::GameRooms, room}, {FieldId::RoomCharacters, ++entry}}),
                  NameKind::Character);
        entry = 0;
        for (const Thing& object : one.Objects)
            check(object, Place::Of({{FieldId::GameRooms, room}, {FieldId::RoomObjects, ++entry}}),
                  NameKind::Object);
    }
}

/// The commands that take an object out of its room or out of sight.
bool Removes(const CheckedCall& call, std::string_view object) {
    return (Is(call, "hide") || Is(call, "object off") || Is(call, "move object")) &&
           (call.Part(0) == object || IsMadeOfVariables(call.Part(0)));
}

Fix HideToo(const CheckedCall& give) {
    const std::string name(give.Part(0));
    const TextRange whole = {give.call->keyword.begin, give.call->parameter.end + 1};
    const std::string_view command = whole.Of(give.line->text);
    const std::string both = std::string(command) + "\r\nhide <" + name + '>';
    const std::string button = "Add hide <" + name + ">";
    return IsUnconditional(give) ? ReplaceLine(button, give.line->place, give.line->text, both)
                                 : ReplaceWithProcedure(button, give.line->At(whole), command, both);
}

/// Puts a "give" before what taking does now, and a "hide", unless something takes the object away.
Fix GiveFirst(const CheckedLine& line, const std::string& name, bool isRemoved) {
    const std::string lines = "give <" + name + ">\r\n" + (isRemoved ? "" : "hide <" + name + ">\r\n");
    return ReplaceLine("Add give <" + name + '>', line.place, line.text, lines + std::string(line.text));
}

void CheckTake(const CheckedGame& game, const ScriptFlow& flow, const Thing& object,
               const CheckedScript& take, Findings& findings) {
    const CheckedCall* give = nullptr;
    bool isRemoved = false;
    bool givesUnknown = false;
    for (const CheckedScript* script : flow.RunBy(take))
        for (const CheckedCall& call : script->calls) {
            isRemoved |= Removes(call, object.Name);
            givesUnknown |= Is(call, "give") && IsMadeOfVariables(call.Part(0));
            if (give == nullptr && Is(call, "give") && call.Part(0) == object.Name)
                give = &call;
        }
    if (give != nullptr && !isRemoved)
        findings
            .Add("L03", take.place,
                 "Taking it gives it to the player, but it stays where it is, too, and can be taken again.")
            .fixes = {HideToo(*give)};
    if (give == nullptr && !givesUnknown && game.OwnNames(NameKind::Item).Has(object.Name))
        findings.Add("L04", take.place, "Taking this object never gives the item of its name.").fixes = {
            GiveFirst(take.lines.front(), object.Name, isRemoved)};
}

void FindTakes(const CheckedGame& game, Findings& findings) {
    const ScriptFlow& flow = game.Flow();
    for (const CheckedScript& take : game.Scripts())
        if (take.place.field == FieldId::ThingTake) {
            const Room& room = game.Game().Rooms[take.place.steps[0].entry];
            const int entry = take.place.steps[1].entry;
            if (take.place.steps[1].list == FieldId::RoomObjects)
                CheckTake(game, flow, room.Objects[entry], take, findings);
        }
}

void FindDeadScripts(const CheckedGame& game, Findings& findings) {
    const ScriptFlow& flow = game.Flow();
    std::set<std::string_view> called;
    for (const NameUse& use : game.NameUses())
        if (use.kind == NameKind::Procedure)
            called.insert(use.name);
    for (const CheckedScript& script : game.Scripts()) {
        const PlaceStep step = script.place.steps[0];
        if (step.list != FieldId::GameProcedures || flow.CanRun(script))
            continue;
        const std::string& name = game.Game().Procedures[step.entry].Name;
        if (called.contains(name) && flow.Procedure(name) == &script)
            findings.Add(
                "L07", script.place,
                "This script can never run: whatever runs it is a procedure that never runs itself.");
    }
}

} // namespace

std::span<const Check> ReachChecks() {
    static constexpr Check Rows[] = {
        {"L01", Level::Warning, "Items that nobody can have", FindItemsOutOfReach},
        {"L02", Level::Warning, "Hidden things that nothing shows", FindHiddenThings},
        {"L03", Level::Warning, "Things that stay where they were taken", FindTakes},
        {"L04", Level::Hint, "Things that are taken and not had", FindTakes},
        {"L06", Level::Hint, "Rules for items that nobody can have", FindItemsOutOfReach},
        {"L07", Level::Hint, "Scripts that can never run", FindDeadScripts},
        {"X05", Level::Warning, "Conditions about items that nobody can have", FindItemsOutOfReach},
    };
    return Rows;
}

} // namespace zem::problems
