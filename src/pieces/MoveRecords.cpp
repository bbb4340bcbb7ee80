#include "pieces/MoveRecords.h"

#include "base/KelError.h"
#include "model/Fields.h"

#include <algorithm>
#include <type_traits>

namespace zem {

namespace {

/// Takes the entry of a list that the steps from `depth` on lead to out of a record.
template <class Record>
void RemoveBelow(Record& record, const Place& place, std::size_t depth) {
    ForEachField<Record>([&](const auto& field) {
        auto& value = record.*field.member;
        using Value = std::remove_cvref_t<decltype(value)>;
        if constexpr (RecordList<Value>) {
            const PlaceStep step = place.steps[depth];
            if (field.id != step.list)
                return;
            if (depth + 1 == place.Depth())
                value.Remove(step.entry);
            else if constexpr (!std::is_same_v<typename Value::RecordType, std::string>)
                RemoveBelow(value.Edit(step.entry), place, depth + 1);
        }
    });
}

bool StandsBehind(const Place& a, const Place& b) {
    const auto entries = [](const Place& place) {
        return std::array{place.steps[0].entry, place.steps[1].entry, place.steps[2].entry};
    };
    return entries(a) > entries(b);
}

List<Thing>& ThingsOf(Room& room, FieldId list) {
    return list == FieldId::RoomCharacters ? room.Characters : room.Objects;
}

} // namespace

void RemoveRecords(GameModel& game, const std::vector<Place>& places) {
    std::vector<Place> fromTheEnd = places;
    std::sort(fromTheEnd.begin(), fromTheEnd.end(), StandsBehind);
    for (const Place& place : fromTheEnd)
        if (Exists(game, place) && place.Depth() > 0)
            RemoveBelow(game, place, 0);
}

std::vector<Place> MoveThings(GameModel& game, const std::vector<Place>& things, int room) {
    std::vector<Place> moved;
    std::vector<Place> places;
    for (const Place& place : things) {
        const PlaceStep step = place.steps[1];
        if (place.Depth() != 2 || (step.list != FieldId::RoomCharacters && step.list != FieldId::RoomObjects))
            throw KelError("only characters and objects can be moved to a room");
        if (place.steps[0].entry == room) {
            places.push_back(place);
            continue;
        }
        const Thing thing = ThingsOf(game.Rooms.Edit(place.steps[0].entry), step.list)[step.entry];
        List<Thing>& target = ThingsOf(game.Rooms.Edit(room), step.list);
        target.Append(thing);
        moved.push_back(place);
        places.push_back(Place::Of({{FieldId::GameRooms, room}, {step.list, target.Count()}}));
    }
    RemoveRecords(game, moved);
    return places;
}

} // namespace zem
