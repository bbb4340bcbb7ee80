// Rooms, things, menus and procedures that lack what a player expects of them.
#include "base/LineText.h"
#include "model/Texts.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/NameUses.h"
#include "problems/ScriptFlow.h"

#include <algorithm>
#include <map>
#include <optional>
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
        int choice = 0;
        for (const ScriptPair& pair : menu.Choices) {
            Place words = place;
            words.steps[1] = {FieldId::MenuChoices, ++choice};
            words.field = FieldId::PairKey;
            if (Trim(pair.Key).empty())
                findings.Add("E08", words, "This choice has no words: the player reads its number alone.");
        }
    }
}

/// Commands, and rules for the use of items. An item that is given away without a script is just gone.
class IdleRules {
public:
    explicit IdleRules(Findings& findings) : findings_(findings) {}

    /// To be called for all texts in the order of the game, in which a rule's words come before its script.
    void Visit(const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script) {
            if (rule_ && rule_->steps == place.steps && !IsEmptyScript(text))
                rule_.reset();
            return;
        }
        const std::size_t depth = place.Depth();
        const FieldId list = depth == 0 ? FieldId::None : place.steps[depth - 1].list;
        if (use.kind != FieldKind::Pattern && list != FieldId::GameUses && list != FieldId::RoomUses &&
            list != FieldId::ThingUses)
            return;
        Report();
        rule_ = place;
        words_ = text;
    }

    /// Tells of the rule that was met last, if no script has come for it.
    void Report() {
        if (rule_)
            findings_.Add("E13", *rule_,
                          "There is no script for " + QuoteShortly(words_) +
                              ", so nothing happens when a player does this, and nothing is printed.");
        rule_.reset();
    }

private:
    Findings& findings_;
    std::optional<Place> rule_; // whose script has not come yet
    std::string_view words_;
};

void FindIdleRules(const CheckedGame& game, Findings& findings) {
    IdleRules rules(findings);
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        rules.Visit(place, use, text);
    });
    rules.Report();
}

/// Rules whose brackets are empty. Texts that are empty are no texts, so they are looked for by their lists.
class NamelessRules {
public:
    explicit NamelessRules(Findings& findings) : findings_(findings) {}

    void Look(const RecordList auto& rules, Place place, std::size_t depth, FieldId list) {
        place.steps[depth].list = list;
        for (const ScriptPair& rule : rules) {
            ++place.steps[depth].entry;
            if (Trim(rule.Key).empty())
                findings_.Add("A05", place, "This rule names no item, so it never runs.").fixes = {
                    RemoveRecord("Remove it", place)};
        }
    }

    void LookAtThings(const RecordList auto& things, int room, FieldId list) {
        int entry = 0;
        for (const Thing& thing : things) {
            const Place place = Place::Of({{FieldId::GameRooms, room}, {list, ++entry}});
            Look(thing.Uses, place, 2, FieldId::ThingUses);
            Look(thing.Gives, place, 2, FieldId::ThingGives);
        }
    }

private:
    Findings& findings_;
};

void FindNamelessRules(const CheckedGame& game, Findings& findings) {
    NamelessRules rules(findings);
    rules.Look(game.Game().GameUses, {}, 0, FieldId::GameUses);
    int number = 0;
    for (const Room& room : game.Game().Rooms) {
        ++number;
        rules.Look(room.Uses, Place::Of({{FieldId::GameRooms, number}}), 1, FieldId::RoomUses);
        rules.LookAtThings(room.Characters, number, FieldId::RoomCharacters);
        rules.LookAtThings(room.Objects, number, FieldId::RoomObjects);
    }
}

} // namespace

std::span<const Check> EmptyChecks() {
    static constexpr Check Rows[] = {
        {"A05", Level::Error, "Items that are not in the list", FindNamelessRules},
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
        {"E13", Level::Warning, "Commands and rules without a script", FindIdleRules},
    };
    return Rows;
}

} // namespace zem::problems
