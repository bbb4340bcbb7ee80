#include "windows/NamesOfGame.h"

#include "base/LineText.h"

namespace zem {

namespace {

template <class Records>
void Add(NameKind kind, FieldId list, const Records& records, std::vector<NameOfGame>& names) {
    int entry = 0;
    for (const auto& record : records) {
        ++entry;
        if (!record.Name.empty() && !BeginsWith(record.Name, InternalProcedure))
            names.push_back({kind, record.Name, {}, Place::Of({{list, entry}})});
    }
}

void AddThings(NameKind kind, FieldId list, const List<Thing>& things, const Room& room, int roomEntry,
               std::vector<NameOfGame>& names) {
    int entry = 0;
    for (const Thing& thing : things) {
        ++entry;
        if (!thing.Name.empty())
            names.push_back(
                {kind, thing.Name, room.Name, Place::Of({{FieldId::GameRooms, roomEntry}, {list, entry}})});
    }
}

} // namespace

std::vector<NameOfGame> NamesOfRecords(const GameModel& game) {
    std::vector<NameOfGame> names;
    Add(NameKind::Room, FieldId::GameRooms, game.Rooms, names);
    int entry = 0;
    for (const Room& room : game.Rooms) {
        ++entry;
        AddThings(NameKind::Character, FieldId::RoomCharacters, room.Characters, room, entry, names);
        AddThings(NameKind::Object, FieldId::RoomObjects, room.Objects, room, entry, names);
    }
    Add(NameKind::Item, FieldId::GameItems, game.Items, names);
    Add(NameKind::Collectable, FieldId::GameCollectables, game.Collectables, names);
    Add(NameKind::Procedure, FieldId::GameProcedures, game.Procedures, names);
    Add(NameKind::TextSection, FieldId::GameTextSections, game.TextSections, names);
    Add(NameKind::Menu, FieldId::GameSelectionMenus, game.SelectionMenus, names);
    return names;
}

} // namespace zem
