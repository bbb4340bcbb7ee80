#include "map/AfterEdit.h"

#include "MadeMap.h"
#include "map/MapGames.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using map::Cell;
using map::MapGraph;

MapGraph MadeGraph(int rooms, std::uint32_t seed) {
    GameModel game;
    ReadGame(game, bench::MakeMap({rooms, 5, 5, seed}).file);
    return map::ReadMapGraph(game);
}

/// How many rooms of `before` stand elsewhere in `after`.
int Moved(const std::vector<Cell>& before, const std::vector<Cell>& after) {
    int moved = 0;
    for (std::size_t room = 0; room < before.size() && room < after.size(); ++room)
        moved += before[room] != after[room];
    return moved;
}

/// The graph without the exits between two rooms.
MapGraph WithoutExits(MapGraph graph, int a, int b) {
    std::erase_if(graph.exits, [&](const map::Exit& exit) {
        return (exit.from == a && exit.to == b) || (exit.from == b && exit.to == a);
    });
    return graph;
}

TEST(MapAfterEdit, MovesLittleWhenExitsComeAndNothingWhenTheyGo) {
    const MapGraph whole = MadeGraph(200, 31);
    int moved = 0;
    int trials = 0;
    int isTrue = 0;
    for (std::size_t k = 0; k < whole.exits.size(); k += whole.exits.size() / 12) {
        const map::Exit& exit = whole.exits[k];
        if (exit.to == map::NoRoom || exit.to == exit.from || exit.scripted)
            continue;
        const MapGraph without = WithoutExits(whole, exit.from, exit.to);
        const std::vector<Cell> cells = map::LayOut(without);
        const std::vector<Cell> added = map::LayOutAfterEdit({without, cells}, whole);
        EXPECT_EQ(Overlaps(added), 0);
        moved += Moved(cells, added);
        isTrue += map::IsExact(added[exit.to] - added[exit.from], exit.direction);
        ++trials;
        EXPECT_EQ(Moved(added, map::LayOutAfterEdit({whole, added}, without)), 0) << "removing moves nothing";
        EXPECT_EQ(Moved(added, map::LayOutAfterEdit({whole, added}, whole)), 0)
            << "the same again moves nothing";
    }
    ASSERT_GT(trials, 8);
    EXPECT_LE(moved, trials * 200 / 25) << "4 per cent of the rooms";
    EXPECT_GE(isTrue, trials / 2);
}

TEST(MapAfterEdit, PutsANewRoomWhereItsExitsSay) {
    const MapGraph before = GraphOf(RoomBlock("A", "east <B>") + RoomBlock("B", "west <A>"));
    const std::vector<Cell> cells = {{5, 5}, {6, 5}};
    const MapGraph after = GraphOf(RoomBlock("New", "south <B>") + RoomBlock("A", "east <B>\nplace <Nook>") +
                                   RoomBlock("B", "west <A>\nnorth <New>") + RoomBlock("Nook", "out <A>"));
    const std::vector<Cell> now = map::LayOutAfterEdit({before, cells}, after);
    EXPECT_EQ(now[1], cells[0]) << "rooms are known by their names, not by their numbers";
    EXPECT_EQ(now[2], cells[1]);
    EXPECT_EQ(now[0], (Cell{6, 4}));
    EXPECT_LE(map::Length(now[3] - now[1]), 2);
}

TEST(MapAfterEdit, KnowsARenamedRoomAndLetsPinsWin) {
    const MapGraph before =
        GraphOf(RoomBlock("A", "east <B>") + RoomBlock("B", "south <C>") + RoomBlock("C"));
    const std::vector<Cell> cells = {{0, 0}, {4, 0}, {4, 3}};
    const MapGraph after = GraphOf(RoomBlock("Hall", "east <B>") + RoomBlock("B", "south <C>") +
                                   RoomBlock("C", "zem-map <0; 0>"));
    const std::vector<Cell> now = map::LayOutAfterEdit({before, cells}, after);
    EXPECT_EQ(now[2], (Cell{0, 0}));
    EXPECT_EQ(now[1], cells[1]);
    EXPECT_EQ(Overlaps(now), 0);
    EXPECT_LE(map::Length(now[0] - cells[0]), 2) << "it makes way to the next free cell";
}

} // namespace
} // namespace zem::test
