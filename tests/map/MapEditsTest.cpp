#include "map/MapEdits.h"

#include "base/KelError.h"
#include "map/MapGames.h"
#include "support/Cases.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using map::Cell;

/// The exits and hand-made places of all rooms, as "A east B, A @1,2".
std::string Told(const GameModel& game) {
    std::string told;
    for (const Room& room : game.Rooms) {
        for (map::Direction direction = 0; direction < map::DirectionCount; ++direction)
            if (const ScriptPair& exit = map::ExitOf(room, direction); !exit.Key.empty())
                told += room.Name + ' ' + map::WordOf(direction) + ' ' + exit.Key + exit.Script + ", ";
        if (const std::optional<Cell> pin = map::PinOf(room.MiscTags))
            told += room.Name + " @" + std::to_string(pin->x) + ',' + std::to_string(pin->y) + ", ";
    }
    return told;
}

GameModel GameOf(const std::string& rooms) {
    GameModel game;
    ReadGame(game, CrLf("define game <x>\nstart <A>\nend define\n" + rooms));
    return game;
}

TEST(MapEdits, ConnectsAndAsksForNoWayBackThatIsTaken) {
    enum { A, B, C };
    const std::string rooms = RoomBlock("A", "north msg <No.>") + RoomBlock("B", "west <C>") + RoomBlock("C");
    for (const auto& [from, direction, to, replaces, told] :
         Cases<int, map::Direction, int, bool, std::string>{
             {A, 2, C, false, "A north msg <No.>, A east C, B west C, C west A, "},
             {A, 2, B, false, "A north msg <No.>, A east B, B west C, "},
             {A, 0, C, true, "A north C, B west C, C south A, "},
             {C, 4, A, true, "A north C, B west C, C south A, "},
             {A, 2, A, false, "A north msg <No.>, A east A, B west C, "},
         }) {
        GameModel game = GameOf(rooms);
        map::Connection connection{from, direction, to, map::WayBack(game, from, direction, to)};
        if (replaces && from == C)
            connection.back = map::Opposite(direction); // as a drag to that very port wants it
        EXPECT_EQ(map::ReplacesScript(game, connection), replaces);
        map::Connect(game, connection);
        std::string got = Told(game);
        for (const std::string word : {"[action]"})
            if (const std::size_t at = got.find(word); at != std::string::npos)
                got.erase(at, word.size());
        EXPECT_EQ(got, told);
    }
}

TEST(MapEdits, AddsPlacesForgetsAndDeletesRooms) {
    GameModel game = GameOf(RoomBlock("A", "east <B>\nzem-map <1; 1>\nlight <on>") + RoomBlock("B") +
                            RoomBlock("C", "zem-map <far>"));
    EXPECT_EQ(map::AddRoom(game, "D", {4, 5}), 3);
    for (const char* name : {"", "  ", "d", "a<b", "x>"})
        EXPECT_THROW(map::AddRoom(game, name, {}), KelError) << name;
    map::PlaceRooms(game, {{1, Cell{2, 2}}, {0, std::nullopt}});
    EXPECT_EQ(Told(game), "A east B, B @2,2, D @4,5, ");
    EXPECT_EQ(map::ForgetPlaces(game), 2);
    EXPECT_EQ(Told(game), "A east B, ");
    EXPECT_EQ(game.Rooms[1].MiscTags, "light <on>\r\n");
    EXPECT_EQ(game.Rooms[3].MiscTags, "zem-map <far>\r\n");
    map::DeleteRooms(game, {1, 3, 1});
    EXPECT_EQ(game.Rooms.Count(), 2);
    EXPECT_EQ(game.Rooms[2].Name, "C");
    map::SetExit(game, 0, 2, "");
    EXPECT_EQ(Told(game), "");
}

} // namespace
} // namespace zem::test
