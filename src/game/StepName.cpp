#include "game/StepName.h"

#include "game/ScriptOwners.h"
#include "model/Fields.h"

#include <algorithm>
#include <type_traits>

namespace zem {

namespace {

constexpr int MostFieldsNamed = 3;

/// The first entry, from 1, in which two lists differ; one past the end of the shorter where it is the
/// other's beginning. Records that both share are not looked into.
template <class List>
int FirstDifference(const List& before, const List& after) {
    const int shorter = std::min<int>(before.Count(), after.Count());
    for (int k = 1; k <= shorter; ++k)
        if (&before[k] != &after[k] && !(before[k] == after[k]))
            return k;
    return shorter + 1;
}

/// "description, exit north and more".
template <class Record>
std::string DifferentFields(const Record& before, const Record& after) {
    std::string names;
    int count = 0;
    ForEachField<Record>([&](const auto& field) {
        if (before.*field.member == after.*field.member || ++count > MostFieldsNamed)
            return;
        names.append(names.empty() ? "" : ", ").append(field.name);
    });
    return names + (count > MostFieldsNamed ? " and more" : "");
}

/// The step of a list of records: which one was added, deleted or edited, and what in it.
/// @param where  " in Kitchen", or nothing
template <class List>
std::string NameRecord(const std::string& command, const List& before, const List& after,
                       const std::string& where) {
    const int k = FirstDifference(before, after);
    if (after.Count() > before.Count())
        return command + ' ' + after[after.Count()].Name + where;
    if (before.Count() > after.Count())
        return command + ' ' + before[k].Name + where;
    if (k > after.Count())
        return {};
    const std::string fields = DifferentFields(before[k], after[k]);
    return command + ' ' + after[k].Name + where + (fields.empty() ? "" : ": " + fields);
}

std::string NameThing(const std::string& command, const GameModel& before, const GameModel& after,
                      List<Thing> Room::*things) {
    const int room = FirstDifference(before.Rooms, after.Rooms);
    if (room > std::min(before.Rooms.Count(), after.Rooms.Count()))
        return {};
    return NameRecord(command, before.Rooms[room].*things, after.Rooms[room].*things,
                      " in " + after.Rooms[room].Name);
}

/// Where a script of several lines was changed, only its internal procedure is another.
std::string NameOwner(const GameModel& before, const GameModel& after) {
    const int k = FirstDifference(before.Procedures, after.Procedures);
    if (k > after.Procedures.Count())
        return {};
    const Place procedure = Place::Of({{FieldId::GameProcedures, k}}, FieldId::ProcedureScript);
    const std::vector<Place> path = ScriptOwners(after).Path(procedure);
    if (path.size() < 2)
        return {};
    std::string owner = DescribePlace(after, path.front().WholeField());
    if (const std::size_t comma = owner.rfind(", "); comma != std::string::npos)
        owner.replace(comma, 2, ": ");
    return "edit " + owner;
}

/// Which of the author's records of a list is new, gone or different.
template <class Record>
std::string NameEntry(const Table<Record>& before, const Table<Record>& after) {
    const int shorter = std::min<int>(before.Count(), after.Count());
    for (int k = FirstDifference(before, after); k <= std::max(before.Count(), after.Count()); ++k) {
        const std::string& name = k <= shorter || after.Count() > shorter ? after[k].Name : before[k].Name;
        const bool isSame = k <= shorter && before[k] == after[k];
        if (!isSame && !name.starts_with(InternalProcedure))
            return name;
    }
    return {};
}

std::string WithDetail(const std::string& command, const std::string& detail) {
    return detail.empty() ? command : command + ": " + detail;
}

/// Of the fields of the game itself, without its lists.
std::string GameFields(const GameModel& before, const GameModel& after) {
    std::string names;
    ForEachField<GameModel>([&](const auto& field) {
        const bool isList = field.use.kind == FieldKind::Records;
        const bool isCounter = field.id == FieldId::GameNextInternalProcedure;
        if (!isList && !isCounter && !(before.*field.member == after.*field.member))
            names.append(names.empty() ? "" : ", ").append(field.name);
    });
    return names;
}

} // namespace

std::string NameStep(const std::string& command, const GameModel& before, const GameModel& after) {
    const std::size_t blank = command.find(' ');
    const std::string what = blank == std::string::npos ? "" : command.substr(blank + 1);
    std::string name;
    if (what == "room")
        name = NameRecord(command, before.Rooms, after.Rooms, "");
    else if (what == "character" || what == "object")
        name = NameThing(command, before, after, what == "object" ? &Room::Objects : &Room::Characters);
    else if (what == "procedures")
        return WithDetail(command, NameEntry(before.Procedures, after.Procedures));
    else if (what == "menus")
        return WithDetail(command, NameEntry(before.SelectionMenus, after.SelectionMenus));
    else if (what == "text blocks")
        return WithDetail(command, NameEntry(before.TextSections, after.TextSections));
    else if (what == "items")
        return WithDetail(command, NameEntry(before.Items, after.Items));
    else if (what == "collectables")
        return WithDetail(command, NameEntry(before.Collectables, after.Collectables));
    else if (what == "game properties")
        return WithDetail(command, GameFields(before, after));
    else
        return command;
    if (name.empty() && command.starts_with("edit "))
        name = NameOwner(before, after);
    return name.empty() ? command : name;
}

} // namespace zem
