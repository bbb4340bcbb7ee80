// What is there twice, and names that cannot be told apart.
#include "base/LineText.h"
#include "model/InternalScripts.h"
#include "model/Texts.h"
#include "play/Fold.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/NameUses.h"

#include <algorithm>
#include <map>
#include <set>

namespace zem::problems {

namespace {

Place RecordOf(Place place) {
    place.field = FieldId::None;
    place.bytes = {};
    return place;
}

/// "NAME 2", or the first such name that the kind has not.
std::string FreeName(const NameSet& names, std::string_view name) {
    for (int number = 2;; ++number) {
        std::string free = std::string(name) + ' ' + std::to_string(number);
        if (!names.Has(free))
            return free;
    }
}

Fix Rename(const CheckedGame& game, NameKind kind, const Place& place, std::string_view name) {
    const std::string free = FreeName(game.Names(kind), name);
    return SetField("Rename this one to " + free, place, name, free);
}

struct Named {
    Place place;
    NameKind kind = NameKind::None;
    std::string_view name;
};

std::vector<Named> AllNames(const CheckedGame& game) {
    std::vector<Named> names;
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Name)
            names.push_back({place, use.names, text});
    });
    return names;
}

struct TwiceRow {
    NameKind kind;
    const char* id;
    const char* text; // of the problem, behind the name
};

constexpr TwiceRow TwiceRows[] = {
    {NameKind::Room, "D01", " is the name of another room, too. The things of both end up in the last one."},
    {NameKind::Procedure, "D04", " is the name of another procedure, too. This one never runs."},
    {NameKind::TextSection, "D05", " is the name of another text, too. This one is never printed."},
    {NameKind::Menu, "D06", " is the name of another menu, too. This one is never shown."},
    {NameKind::Item, "D07", " is in the list of items twice."},
    {NameKind::Collectable, "D08", " is the name of another collectable, too. Scripts mean the first one."},
};

bool IsSameAsFirst(const GameModel& game, const Named& one) {
    const int entry = one.place.steps[0].entry;
    switch (one.kind) {
    case NameKind::Procedure:
        return std::any_of(game.Procedures.begin(), game.Procedures.end(),
                           [&, k = 0](const Procedure& other) mutable {
                               return ++k < entry && other == game.Procedures[entry];
                           });
    case NameKind::TextSection:
        return std::any_of(game.TextSections.begin(), game.TextSections.end(),
                           [&, k = 0](const TextSection& other) mutable {
                               return ++k < entry && other == game.TextSections[entry];
                           });
    default:
        return one.kind == NameKind::Item || one.kind == NameKind::Collectable;
    }
}

void ReportTwice(const CheckedGame& game, const Named& one, const TwiceRow& row, Findings& findings) {
    Problem& problem = findings.Add(row.id, one.place, QuoteShortly(one.name) + row.text);
    if (IsSameAsFirst(game.Game(), one))
        problem.fixes.push_back(RemoveRecord("Remove this one", RecordOf(one.place)));
    if (one.kind != NameKind::Item && one.kind != NameKind::Collectable &&
        !one.name.starts_with(InternalProcedure))
        problem.fixes.push_back(Rename(game, one.kind, one.place, one.name));
}

void FindNamesTwice(const CheckedGame& game, Findings& findings) {
    std::set<std::pair<NameKind, std::string_view>> seen;
    for (const Named& one : AllNames(game)) {
        const auto* row = std::find_if(std::begin(TwiceRows), std::end(TwiceRows),
                                       [&](const TwiceRow& other) { return other.kind == one.kind; });
        if (row != std::end(TwiceRows) && !seen.emplace(one.kind, one.name).second)
            ReportTwice(game, one, *row, findings);
    }
}

const char* WordOf(NameKind kind) {
    return kind == NameKind::Object ? "object" : "character";
}

void FindThingsTwice(const CheckedGame& game, Findings& findings) {
    std::set<std::string_view> called; // things that scripts name
    for (const NameUse& use : game.NameUses())
        if (use.kind == NameKind::Object || use.kind == NameKind::Character || use.kind == NameKind::Thing)
            called.insert(use.name);
    std::map<std::pair<NameKind, std::string_view>, std::set<int>> rooms;
    for (const Named& one : AllNames(game)) {
        if (one.kind != NameKind::Object && one.kind != NameKind::Character)
            continue;
        std::set<int>& inRooms = rooms[{one.kind, one.name}];
        const int room = one.place.steps[0].entry;
        if (inRooms.contains(room))
            findings
                .Add("D02", one.place,
                     QuoteShortly(one.name) + " is the name of another " + WordOf(one.kind) +
                         " in this room, too, and neither scripts nor players can tell them apart.")
                .fixes = {Rename(game, one.kind, one.place, one.name)};
        else if (!inRooms.empty() && called.contains(one.name))
            findings
                .Add("D03", one.place,
                     QuoteShortly(one.name) + " is the name of " + WordOf(one.kind) +
                         "s in several rooms. Scripts that name it mean the first one in the file, which is "
                         "not this.")
                .fixes = {Rename(game, one.kind, one.place, one.name)};
        else if (one.kind == NameKind::Object && game.OwnNames(NameKind::Character).Has(one.name))
            findings
                .Add("D11", one.place,
                     QuoteShortly(one.name) +
                         " is the name of a character, too. Commands that know both take it for the "
                         "character.")
                .fixes = {Rename(game, NameKind::Thing, one.place, one.name)};
        inRooms.insert(room);
    }
}

/// Calls visit(place of the list, pair) for every pair of a list whose keys are of this kind.
template <class Visit>
void ForEachPair(const GameModel& game, FieldKind kind, Visit visit) {
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == kind && (place.field == FieldId::PairKey || place.field == FieldId::CommandPattern))
            visit(place, text);
    });
}

/// The steps before the last, and the list of the last: the same for all entries of a list.
std::vector<int> ListOf(const Place& place) {
    std::vector<int> list;
    const std::size_t depth = place.Depth();
    for (std::size_t k = 0; k < depth; ++k) {
        list.push_back(static_cast<int>(place.steps[k].list));
        list.push_back(k + 1 < depth ? place.steps[k].entry : 0);
    }
    return list;
}

void FindPatternsTwice(const CheckedGame& game, Findings& findings) {
    std::set<std::pair<std::vector<int>, std::string>> seen;
    ForEachPair(game.Game(), FieldKind::Pattern, [&](const Place& place, const std::string& text) {
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(';', begin), text.size());
            const TextRange range = TrimmedRange(text, {begin, end});
            if (!range.IsEmpty() && !seen.emplace(ListOf(place), play::Fold(range.Of(text))).second) {
                Place at = place;
                at.bytes = range;
                Problem& problem =
                    findings.Add("D09", at,
                                 QuoteShortly(range.Of(text)) +
                                     " stands in this list before, so this one is never reached.");
                if (begin == 0 && end == text.size())
                    problem.fixes = {RemoveRecord("Remove this one", RecordOf(place))};
                else if (begin > 0)
                    problem.fixes = {
                        SetField("Remove it from this command", place.WholeField(), text,
                                 std::string(Trim(text.substr(0, begin - 1))) + text.substr(end))};
                else
                    problem.fixes = {SetField("Remove it from this command", place.WholeField(), text,
                                              std::string(Trim(text.substr(end + 1))))};
            }
            begin = end + 1;
        }
    });
}

/// Both scripts one after the other, in the first rule; the second goes.
Fix JoinRules(const Place& first, const Place& second) {
    return ChangeGame("Join them", [first, second](GameModel& game) {
        const auto before = Resolve(game, first);
        const auto after = Resolve(game, second);
        if (!before || !after || before->text == nullptr || after->text == nullptr)
            return;
        std::string joined = *before->text;
        if (joined.empty() || after->text->empty())
            joined += *after->text;
        else
            joined = "do <" + AddInternalProcedure(game, joined + "\r\n" + *after->text) + ">";
        SetText(game, first, joined);
        game = RemoveRecord("", RecordOf(second)).apply(game);
    });
}

void FindRulesTwice(const CheckedGame& game, Findings& findings) {
    std::map<std::pair<std::vector<int>, std::string_view>, Place> seen;
    ForEachPair(game.Game(), FieldKind::Reference, [&](const Place& place, const std::string& text) {
        const auto [first, isNew] = seen.emplace(std::pair(ListOf(place), std::string_view(text)), place);
        if (isNew)
            return;
        Place script = place;
        script.field = FieldId::PairScript;
        Place firstScript = first->second;
        firstScript.field = FieldId::PairScript;
        findings
            .Add("D10", place,
                 "There is a rule for " + QuoteShortly(text) + " before, so this one never runs.")
            .fixes = {JoinRules(firstScript, script)};
    });
}

/// Kinds whose names share their brackets with something else.
bool StandsInLists(NameKind kind) {
    return kind != NameKind::TextSection && kind != NameKind::Menu;
}

void FindImpossibleNames(const CheckedGame& game, Findings& findings) {
    for (const Named& one : AllNames(game)) {
        if (one.name.find(';') != std::string_view::npos && StandsInLists(one.kind)) {
            std::string without(one.name);
            std::replace(without.begin(), without.end(), ';', ' ');
            findings
                .Add("D12", one.place,
                     "The name " + QuoteShortly(one.name) +
                         " has a \";\", which separates names in scripts, so no script can name it.")
                .fixes = {SetField("Take it out", one.place, one.name, without)};
        }
        if (Trim(one.name) != one.name) {
            Problem& problem =
                findings.Add("D13", one.place, "The name has blanks around it, and scripts do not find it.");
            problem.level = Level::Warning;
            problem.fixes = {SetField("Take them away", one.place, one.name, std::string(Trim(one.name)))};
        }
    }
    int entry = 0;
    for (const Room& room : game.Game().Rooms) {
        const Place place = Place::Of({{FieldId::GameRooms, ++entry}}, FieldId::RoomName);
        if (room.Name.empty() || room.Name == ActionExit)
            findings
                .Add("D13", place,
                     room.Name.empty()
                         ? "This room has no name, so nothing can lead to it."
                         : "No room can be called \"[action]\": exits of that name run their script.")
                .fixes = {SetField("Call it Room", place, room.Name,
                                   game.Names(NameKind::Room).Has("Room")
                                       ? FreeName(game.Names(NameKind::Room), "Room")
                                       : "Room")};
    }
}

void FindNumbersToBeGivenAgain(const CheckedGame& game, Findings& findings) {
    const GameModel& model = game.Game();
    int entry = 0;
    for (const Procedure& procedure : model.Procedures) {
        ++entry;
        if (!procedure.Name.starts_with(InternalProcedure))
            continue;
        const std::string digits = procedure.Name.substr(std::string_view(InternalProcedure).size());
        const double number = LeadingReal(digits);
        if (number < model.NextInternalProcedure || number > 32766)
            continue;
        Fix raise = ChangeGame("Raise the counter", [number](GameModel& changed) {
            if (changed.NextInternalProcedure <= number)
                changed.NextInternalProcedure = static_cast<std::int16_t>(number + 1);
        });
        raise.needsNoChoice = true;
        findings
            .Add("D14", Place::Of({{FieldId::GameProcedures, entry}}, FieldId::ProcedureName),
                 "The number of this script will be given again, to another one: the counter of the file "
                 "stands at " +
                     std::to_string(model.NextInternalProcedure) + '.')
            .fixes = {raise};
    }
}

void FindChoicesTwice(const CheckedGame& game, Findings& findings) {
    int menuEntry = 0;
    for (const SelectionMenu& menu : game.Game().SelectionMenus) {
        ++menuEntry;
        std::set<std::string> seen;
        int entry = 0;
        for (const ScriptPair& choice : menu.Choices) {
            ++entry;
            if (!choice.Key.empty() && !seen.insert(play::Fold(choice.Key)).second)
                findings.Add(
                    "D15",
                    Place::Of({{FieldId::GameSelectionMenus, menuEntry}, {FieldId::MenuChoices, entry}},
                              FieldId::PairKey),
                    "The menu offers " + QuoteShortly(choice.Key) + " twice.");
        }
    }
}

} // namespace

std::span<const Check> TwiceChecks() {
    static constexpr Check Rows[] = {
        {"D01", Level::Error, "Rooms of one name", FindNamesTwice},
        {"D02", Level::Error, "Things of one name in a room", FindThingsTwice},
        {"D03", Level::Warning, "Things of one name in several rooms", FindThingsTwice},
        {"D04", Level::Error, "Procedures of one name", FindNamesTwice},
        {"D05", Level::Error, "Texts of one name", FindNamesTwice},
        {"D06", Level::Error, "Menus of one name", FindNamesTwice},
        {"D07", Level::Warning, "Items that are listed twice", FindNamesTwice},
        {"D08", Level::Error, "Collectables of one name", FindNamesTwice},
        {"D09", Level::Error, "The same pattern twice", FindPatternsTwice},
        {"D10", Level::Error, "Two rules for one item", FindRulesTwice},
        {"D11", Level::Warning, "Objects that share their name with a character", FindThingsTwice},
        {"D12", Level::Error, "Names that separate", FindImpossibleNames},
        {"D13", Level::Error, "Names that are none", FindImpossibleNames},
        {"D14", Level::Error, "Numbers of scripts that will be given again", FindNumbersToBeGivenAgain},
        {"D15", Level::Warning, "The same choice twice", FindChoicesTwice},
    };
    return Rows;
}

} // namespace zem::problems
