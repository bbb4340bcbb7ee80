#include "MadeMap.h"
#include "MapFigures.h"
#include "map/MapGames.h"
#include "support/Cases.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using map::Cell;
using map::MapGraph;

/// The exits that do not run in their direction, as "A north B".
std::string UntrueExits(const MapGraph& graph, const std::vector<Cell>& cells) {
    std::string untrue;
    for (const map::Exit& exit : graph.exits)
        if (exit.to != map::NoRoom && exit.to != exit.from &&
            !map::IsExact(cells[exit.to] - cells[exit.from], exit.direction))
            untrue += graph.names[exit.from] + ' ' + std::to_string(exit.direction) + ' ' +
                      graph.names[exit.to] + ';';
    return untrue;
}

int Distance(const std::vector<Cell>& cells, int a, int b) {
    return map::Length(cells[b] - cells[a]);
}

TEST(MapLayout, DrawsWhatCanBeTrueTrue) {
    for (const auto& [about, rooms, untrue] : Cases<std::string, std::string, std::string>{
             {"nothing", "", ""},
             {"a room", RoomBlock("A"), ""},
             {"a ring of eight",
              RoomBlock("A", "north <B>") + RoomBlock("B", "northeast <C>") + RoomBlock("C", "east <D>") +
                  RoomBlock("D", "southeast <E>") + RoomBlock("E", "south <F>") +
                  RoomBlock("F", "southwest <G>") + RoomBlock("G", "west <H>") +
                  RoomBlock("H", "northwest <A>"),
              ""},
             {"a detour that needs a long line",
              RoomBlock("A", "east <B>\nnorth <C>") + RoomBlock("B", "north <F>") +
                  RoomBlock("C", "east <D>") + RoomBlock("D", "east <E>") + RoomBlock("E", "east <F>"),
              ""},
             {"an exit to itself and one to nowhere",
              RoomBlock("A", "north <A>\neast <Z>\nwest <B>") + RoomBlock("B"), ""},
             {"one lie among truths",
              RoomBlock("A", "east <B>") + RoomBlock("B", "west <A>\neast <C>") +
                  RoomBlock("C", "west <B>\neast <A>"),
              "C 2 A;"},
             {"two towns with one bridge",
              RoomBlock("A", "east <B>\nsouth <C>") + RoomBlock("B", "south <D>") +
                  RoomBlock("C", "east <D>") + RoomBlock("D", "southeast <E>") +
                  RoomBlock("E", "east <F>\nsouth <G>") + RoomBlock("F", "south <H>") +
                  RoomBlock("G", "east <H>") + RoomBlock("H"),
              ""},
         }) {
        const MapGraph graph = GraphOf(rooms);
        const std::vector<Cell> cells = map::LayOut(graph);
        EXPECT_EQ(UntrueExits(graph, cells), untrue) << about;
        EXPECT_EQ(Overlaps(cells), 0) << about;
        EXPECT_EQ(bench::Measure(graph, cells).straightOver, 0) << about;
    }
}

TEST(MapLayout, KeepsRoomsWithoutExitsNearThoseThatLeadToThem) {
    std::string inn = "east <B>";
    for (int k = 1; k <= 12; ++k)
        inn += "\nplace <the; bed " + std::to_string(k) + ">";
    std::string rooms = RoomBlock("A", inn) + RoomBlock("B", "west <A>\nplace <Isle>") +
                        RoomBlock("Isle", "north <Cape>") + RoomBlock("Cape", "south <Isle>") +
                        RoomBlock("Cellar", "out <A>") + RoomBlock("Cask", "out <Cellar>") + RoomBlock("X") +
                        RoomBlock("Y");
    for (int k = 1; k <= 12; ++k)
        rooms += RoomBlock("bed " + std::to_string(k));
    const MapGraph graph = GraphOf(rooms);
    const std::vector<Cell> cells = map::LayOut(graph);
    enum { A, B, Isle, Cape, Cellar, Cask, X, Y, Beds };
    EXPECT_EQ(Overlaps(cells), 0);
    EXPECT_LE(Distance(cells, A, Cellar), 2);
    EXPECT_LE(Distance(cells, Cellar, Cask), 2);
    for (int bed = 0; bed < 12; ++bed)
        EXPECT_LE(Distance(cells, A, Beds + bed), 2) << bed;
    EXPECT_EQ(cells[B].y, cells[A].y) << "the true exit is kept";
    EXPECT_LE(Distance(cells, B, Isle), 6);
    EXPECT_EQ(Distance(cells, X, Y), 1) << "what nothing leads to stands in a block";
}

TEST(MapLayout, NeverMovesWhatIsPinned) {
    const std::string rooms = RoomBlock("A", "east <B>\nzem-map <10; 5>") + RoomBlock("B", "east <C>") +
                              RoomBlock("C", "east <D>\nzem-map <20; 9>") +
                              RoomBlock("D", "zem-map <10; 5>") + RoomBlock("E", "zem-map <9999; -9999>") +
                              RoomBlock("F", "south <G>") + RoomBlock("G");
    const std::vector<Cell> cells = map::LayOut(GraphOf(rooms));
    EXPECT_EQ(Overlaps(cells), 0);
    EXPECT_EQ(cells[0], (Cell{10, 5}));
    EXPECT_EQ(cells[2], (Cell{20, 9}));
    EXPECT_EQ(map::Length(cells[3] - Cell{10, 5}), 1)
        << "the second room on a cell gets the nearest free one";
    EXPECT_EQ(cells[4], (Cell{9999, -9999}));

    MapGraph made;
    {
        GameModel game;
        ReadGame(game, bench::MakeMap({200, 5, 10, 3}).file);
        made = map::ReadMapGraph(game);
    }
    for (int room = 0; room < made.RoomCount(); room += 5)
        made.pins[room] = Cell{room % 23, room / 11};
    const std::vector<Cell> placed = map::LayOut(made);
    EXPECT_EQ(Overlaps(placed), 0);
    for (int room = 0; room < made.RoomCount(); room += 5)
        EXPECT_EQ(placed[room], (Cell{room % 23, room / 11})) << room;
}

TEST(MapLayout, IsNearlyAsTrueAsTheTruthAndTheSameEachTime) {
    for (const auto& [rooms, untrue, places, seed] : Cases<int, double, double, std::uint32_t>{
             {30, 0, 0, 901}, {30, 10, 20, 902}, {200, 0, 0, 903}, {200, 5, 10, 904}, {600, 2, 5, 905}}) {
        const bench::MadeMap made = bench::MakeMap({rooms, untrue, places, seed});
        GameModel game;
        ReadGame(game, made.file);
        const MapGraph graph = map::ReadMapGraph(game);
        std::vector<Cell> truth;
        std::vector<int> blocks;
        for (const bench::MadeMap::Place& place : made.truth) {
            truth.push_back(place.cell);
            blocks.push_back(place.block);
        }
        const std::vector<Cell> cells = map::LayOut(graph);
        const bench::MapFigures best = bench::Measure(graph, truth, blocks);
        const bench::MapFigures got = bench::Measure(graph, cells);
        EXPECT_EQ(got.overlaps, 0) << seed;
        EXPECT_GE(got.exact, best.exact - 1.5) << seed;
        EXPECT_GE(got.within, best.within - 0.7) << seed;
        EXPECT_LE(got.straightOver, rooms / 30) << seed;
        EXPECT_GE(got.dockedNear, got.docked * 9 / 10) << seed;
        EXPECT_EQ(map::LayOut(graph), cells) << seed;
    }
}

TEST(MapLayout, ShowsAFirstPictureAndStopsWhenTold) {
    GameModel game;
    ReadGame(game, bench::MakeMap({300, 5, 10, 7}).file);
    const MapGraph graph = map::ReadMapGraph(game);
    std::vector<Cell> first;
    map::LayoutControl control;
    control.firstPicture = [&first](const std::vector<Cell>& cells) { first = cells; };
    int asked = 0;
    control.stop = [&asked] { return ++asked > 150; };
    const std::vector<Cell> stopped = map::LayOut(graph, control);
    ASSERT_EQ(static_cast<int>(first.size()), graph.RoomCount());
    EXPECT_EQ(Overlaps(first), 0);
    EXPECT_EQ(Overlaps(stopped), 0);
    EXPECT_LT(asked, 2000) << "no time is wasted after the word";
    control.stop = [] { return true; };
    EXPECT_EQ(Overlaps(map::LayOut(graph, control)), 0) << "even when it is told before it begins";
}

/// Games that no author makes, as large as the format allows.
MapGraph Hostile(const std::string& kind) {
    MapGraph graph;
    const int count = kind == "none" ? 32767 : 3000; // the largest game there can be, where that is cheap
    for (int room = 0; room < count; ++room)
        graph.names.push_back(std::to_string(room));
    graph.pins.resize(count);
    std::uint32_t dice = 1;
    for (int room = 0; room < count; ++room) {
        dice = dice * 1664525U + 1013904223U;
        const int other = static_cast<int>((dice >> 8U) % static_cast<std::uint32_t>(count));
        if (kind == "contradictions" && room < 1500)
            for (int direction = 0; direction < 8; ++direction)
                graph.exits.push_back({room, (other + direction * 37) % 1500, direction, false, ""});
        if (kind == "staircase" && room > 0)
            graph.exits.push_back({room - 1, room, 1, false, ""});
        if (kind == "star" && room > 0)
            graph.exits.push_back({room, 0, 0, false, ""});
        if (kind == "pairs" && room % 2 == 1)
            graph.exits.push_back({room - 1, room, room % 8, false, ""});
        if (kind == "one host" && room > 0)
            graph.ties.push_back({0, room, false, ""});
        if (kind == "pins")
            graph.pins[room] = Cell{0, 0};
    }
    return graph;
}

TEST(MapLayout, DoesNotTryForLongToReconcileWhatCannotBe) {
    for (const auto& [rooms, exits, most] :
         Cases<int, int, int>{{40, 8, 4'000}, {150, 8, 20'000}, {150, 3, 20'000}}) {
        MapGraph graph;
        std::uint32_t dice = 7;
        graph.pins.resize(static_cast<std::size_t>(rooms));
        for (int room = 0; room < rooms; ++room) {
            graph.names.push_back(std::to_string(room));
            for (int direction = 0; direction < exits; ++direction) {
                dice = dice * 1664525U + 1013904223U;
                graph.exits.push_back({room,
                                       static_cast<int>((dice >> 8U) % static_cast<std::uint32_t>(rooms)),
                                       direction, false, ""});
            }
        }
        int asked = 0; // before each piece of work
        map::LayoutControl control;
        control.stop = [&asked] { return ++asked < 0; };
        EXPECT_EQ(Overlaps(map::LayOut(graph, control)), 0);
        EXPECT_LT(asked, most) << rooms << " rooms with " << exits << " exits each";
    }
}

TEST(MapLayout, GetsThroughHostileGamesWithoutAnOverlap) {
    for (const std::string kind :
         {"none", "contradictions", "staircase", "star", "pairs", "one host", "pins"}) {
        map::LayoutControl control;
        control.steps = 10'000'000;
        const MapGraph graph = Hostile(kind);
        const std::vector<Cell> cells = map::LayOut(graph, control);
        EXPECT_EQ(Overlaps(cells), 0) << kind;
    }
}

/// Some rows of rooms, many of them joined to another row by a place.
MapGraph Islands(std::uint32_t seed) {
    MapGraph graph;
    std::uint32_t dice = seed;
    const auto below = [&dice](int count) {
        dice = dice * 1664525U + 1013904223U;
        return static_cast<int>((dice >> 8U) % static_cast<std::uint32_t>(count));
    };
    while (graph.RoomCount() < 120) {
        const map::Direction direction = below(map::DirectionCount);
        for (int left = 2 + below(5), length = left; left > 0; --left) {
            const int room = graph.RoomCount();
            graph.names.push_back(std::to_string(room));
            if (left < length)
                graph.exits.push_back({room - 1, room, direction, false, ""});
            if (room > 0 && below(6) == 0)
                graph.ties.push_back({below(room), room, false, ""});
        }
    }
    std::erase_if(graph.ties, [](const map::Tie& tie) { return tie.from == tie.to; });
    graph.pins.resize(graph.names.size());
    return graph;
}

TEST(MapLayout, PutsNoIslandOnAnotherThatCameWhileItsRowWasFilled) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed)
        EXPECT_EQ(Overlaps(map::LayOut(Islands(seed))), 0) << "seed " << seed;
}

} // namespace
} // namespace zem::test
