// Rooms, things, menus and procedures that lack what a player expects of them.
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

/// The description script with the text as its last "else"; empty where it has another form.
std::string WithElse(const CheckedGame& game, const Room& room) {
    const ScriptLine parsed = TakeApart(room.Description, game.Commands());
    if (parsed.problem != LineProblem::None || parsed.actions.empty() ||
        room.Look.find('>') != std::string::npos)
        return "";
    const ScriptAction* last = &parsed.actions.front();
    while (last->IsIf() && last->elseAction != 0)
        last = &parsed.actions[last->elseAction];
    if (!last->IsIf() || parsed.actions[last->thenAction].IsIf())
        return "";
    return room.Description + " else msg <" + room.Look + '>';
}

void CheckDescription(const CheckedGame& game, const Room& room, int entry, Findings& findings) {
    const Place place = Place::Of({{FieldId::GameRooms, entry}});
    Place look = place;
    look.field = FieldId::RoomLook;
    if (room.Look.empty() && room.Description.empty())
        findings.Add("E01", place, "This room has no description: the player reads where he is and no more.");
    if (room.Look.empty() || room.Description.empty())
        return;
    Problem& problem = findings.Add("E02", look, "A script describes this room, so nobody reads this text.");
    if (const std::string joined = WithElse(game, room); !joined.empty())
        problem.fixes = {ChangeGame("Make it the script's last else", [entry, joined](GameModel& changed) {
            if (entry > changed.Rooms.Count())
                return;
            Room& edited = changed.Rooms.Edit(entry);
            edited.Description = joined;
            edited.Look.clear();
        })};
}

void CheckThing(const Thing& thing, const Place& place, bool isCharacter, Findings& findings) {
    if (thing.Look.empty())
        findings.Add("E03", place, "A player who looks at it reads the standard message.");
    if (isCharacter && thing.Speak.empty())
        findings.Add("E04", place, "A player who speaks to this character gets no answer.");
    if (isCharacter && !EqualIgnoringCase(thing.Gender, "he") && !EqualIgnoringCase(thing.Gender, "she") &&
        !EqualIgnoringCase(thing.Gender, "it")) {
        Place gender = place;
        gender.field = FieldId::ThingGender;
        findings
            .Add("E09", gender,
                 thing.Gender.empty()
                     ? "This character has no gender, so the player's IT stands for it."
                     : "The gender " + QuoteShortly(thing.Gender) + " is none of he, she and it.")
            .fixes = {SetField(ChangeTo("it"), gender, thing.Gender, "it")};
    }
    if (thing.Hidden && thing.Invisible)
        findings.Add(
            "E10", place,
            "It is hidden and invisible: when a script shows it, no description mentions it either.");
}

void FindEmptyRoomParts(const CheckedGame& game, Findings& findings) {
    int entry = 0;
    for (const Room& room : game.Game().Rooms) {
        ++entry;
        CheckDescription(game, room, entry, findings);
        int thing = 0;
        for (const Thing& character : room.Characters)
            CheckThing(character,
                       Place::Of({{FieldId::GameRooms, entry}, {FieldId::RoomCharacters, ++thing}}), true,
                       findings);
        thing = 0;
        for (const Thing& object : room.Objects)
            CheckThing(object, Place::Of({{FieldId::GameRooms, entry}, {FieldId::RoomObjects, ++thing}}),
                       false, findings);
        if (room.Alias.empty() || !room.Prefix.empty() || room.InDescription.empty())
            continue;
        const Place prefix = Place::Of({{FieldId::GameRooms, entry}}, FieldId::RoomPrefix);
        findings
            .Add("E11", prefix,
                 "The heading of this room reads " +
                     QuoteShortly(room.InDescription + ' ' + room.Alias + '.'))
            .fixes = {SetField("The prefix \"the\"", prefix, "", "the")};
    }
}

bool IsEmptyScript(std::string_view script) {
    bool isEmpty = true;
    ForEachLine(script, [&](TextRange range, int) {
        const std::string_view line = Trim(range.Of(script));
        isEmpty &= line.empty() || line.front() == '\'';
    });
    return isEmpty;
}

/// Removes the calls of the procedure that are lines of their own.
Fix RemoveCalls(const CheckedGame& game, const std::string& name) {
    std::vector<Fix> removals;
    for (const CheckedCall* call : game.CallsOf("do"))
        if (call->Part(0) == name && IsUnconditional(*call))
            removals.push_back(RemoveLine("", call->line->place, call->line->text));
    std::reverse(removals.begin(), removals.end()); // none moves the place of the next
    return ChangeGame("Remove the calls", [removals](GameModel& changed) {
        for (const Fix& removal : removals)
            changed = removal.apply(changed);
    });
}

void FindEmptyProcedures(const CheckedGame& game, Findings& findings) {
    std::map<std::string_view, int> uses;
    std::map<std::string_view, int> lines;
    for (const NameUse& use : game.NameUses()) {
        if (use.kind != NameKind::Procedure)
            continue;
        ++uses[use.name];
        if (Is(*use.call, "do") && IsUnconditional(*use.call))
            ++lines[use.name];
    }
    int entry = 0;
    for (const Procedure& procedure : game.Game().Procedures) {
        const Place place = Place::Of({{FieldId::GameProcedures, ++entry}});
        if (uses[procedure.Name] == 0 || !IsEmptyScript(procedure.Script))
            continue;
        Problem& problem =
            findings.Add("E05", place, "Scripts run this procedure, and there is nothing in it.");
        if (uses[procedure.Name] == lines[procedure.Name])
            problem.fixes = {RemoveCalls(game, procedure.Name)};
    }
}

void FindEmptyMenus(const CheckedGame& game, Findings& findings) {
    int entry = 0;
    for (const SelectionMenu& menu : game.Game().SelectionMenus) {
        const Place place = Place::Of({{FieldId::GameSelectionMenus, ++entry}});
        if (menu.Choices.Count() == 0) {
            findings
                .Add("E06", place, "This menu has no choices, so the player reads the question and goes on.")
                .fixes = {RemoveRecord("Remove it", place)};
            continue;
        }
        if (std::all_of(menu.Choices.begin(), menu.Choices.end(),
                        [](const ScriptPair& choice) { return choice.Script.empty(); }))
            findings.Add("E07", place, "No choice of this menu does anything.");
        if (menu.Info.empty())
            findings.Add("E08", place, "This menu asks nothing before it offers its choices.");
    }
}

} // namespace

std::span<const Check> EmptyChecks() {
    static constexpr Check Rows[] = {
        {"E01", Level::Warning, "Rooms without a description", FindEmptyRoomParts},
        {"E02", Level::Hint, "Descriptions that nobody reads", FindEmptyRoomParts},
        {"E03", Level::Hint, "Things without a look", FindEmptyRoomParts},
        {"E04", Level::Hint, "Characters without an answer", FindEmptyRoomParts},
        {"E05", Level::Warning, "Empty procedures that are run", FindEmptyProcedures},
        {"E06", Level::Error, "Menus without choices", FindEmptyMenus},
        {"E07", Level::Hint, "Menus that do nothing", FindEmptyMenus},
        {"E08", Level::Hint, "Menus that ask nothing", FindEmptyMenus},
        {"E09", Level::Hint, "Characters without a gender", FindEmptyRoomParts},
        {"E10", Level::Hint, "Hidden and invisible", FindEmptyRoomParts},
        {"E11", Level::Hint, "Aliases without a prefix", FindEmptyRoomParts},
    };
    return Rows;
}

} // namespace zem::problems
