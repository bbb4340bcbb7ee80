#include "routing/Router.h"

#include "MadeMap.h"
#include "map/MapGames.h"
#include "support/Cases.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

namespace zem::test {
namespace {

using map::Cell;
using map::MapGraph;
using routing::LineKind;
using routing::LineShape;
using routing::MapLine;
using routing::RoutedMap;

MapGraph GraphOfMade(const bench::MadeMapKind& kind) {
    GameModel game;
    ReadGame(game, bench::MakeMap(kind).file);
    return map::ReadMapGraph(game);
}

/// How many drawn lines run through a room: all boxes are looked at, and a little of each edge is spared.
int LinesThroughRooms(const RoutedMap& drawn) {
    int count = 0;
    for (const MapLine& line : drawn.lines)
        for (const routing::Path* path : {&line.path, &line.farPath}) {
            const std::vector<routing::Segment> segments = path->Flattened();
            count += static_cast<int>(
                std::count_if(drawn.rooms.begin(), drawn.rooms.end(), [&](const routing::RoomBox& room) {
                    return std::any_of(segments.begin(), segments.end(),
                                       [&](const routing::Segment& segment) {
                                           return routing::RunsThrough(segment, room.Box().Grown(-.1));
                                       });
                }));
        }
    return count;
}

/// What is wrong with how the map shows the game: each exit and tie must be drawn once, from its own port.
std::string Untold(const RoutedMap& drawn) {
    std::map<int, int> exits;
    std::string wrong;
    for (std::size_t k = 0; k < drawn.lines.size(); ++k) {
        const MapLine& line = drawn.lines[k];
        if (line.path.IsEmpty())
            wrong += "line " + std::to_string(k) + " has no path;";
        if (line.IsTie())
            continue;
        if (line.kind != LineKind::Goto && line.from.exit >= 0)
            ++exits[line.from.exit];
        if (line.to.exit >= 0)
            ++exits[line.to.exit];
        const routing::Point begin = routing::PortPoint(drawn.rooms[line.from.room], line.from.port);
        if (!(line.path.start == begin))
            wrong += "line " + std::to_string(k) + " begins elsewhere;";
        const std::vector<routing::Segment> segments = line.path.Flattened();
        const routing::Point way = routing::Unit(segments.front().b - segments.front().a);
        if (line.kind != LineKind::Loop && routing::Dot(way, routing::PortDirection(line.from.port)) < .7)
            wrong += "line " + std::to_string(k) + " leaves in another direction;";
    }
    for (std::size_t exit = 0; exit < drawn.graph.exits.size(); ++exit)
        if (exits[static_cast<int>(exit)] != 1)
            wrong += "exit " + std::to_string(exit) + " is drawn " +
                     std::to_string(exits[static_cast<int>(exit)]) + " times;";
    return wrong;
}

TEST(Router, ShowsWhatKindOfWayAnExitIs) {
    using enum LineKind;
    using enum LineShape;
    struct Line {
        LineKind kind;
        LineShape shape;
        bool oneWay;
        bool operator==(const Line&) const = default;
    };
    for (const auto& [about, rooms, cells, lines] :
         Cases<std::string, std::string, std::vector<Cell>, std::vector<Line>>{
             {"there and back",
              RoomBlock("A", "east <B>") + RoomBlock("B", "west <A>"),
              {{0, 0}, {2, 0}},
              {{Exit, Straight, false}}},
             {"one way",
              RoomBlock("A", "southeast <B>") + RoomBlock("B"),
              {{0, 0}, {1, 1}},
              {{Exit, Straight, true}}},
             {"back by another direction",
              RoomBlock("A", "east <B>") + RoomBlock("B", "north <A>"),
              {{0, 0}, {1, 1}},
              {{Exit, Curve, false}}},
             {"far",
              RoomBlock("A", "east <B>") + RoomBlock("B", "west <A>"),
              {{0, 0}, {13, 0}},
              {{Exit, Stub, false}}},
             {"untrue",
              RoomBlock("A", "east <B>") + RoomBlock("B", "west <A>"),
              {{0, 0}, {-3, 0}},
              {{Exit, Stub, false}}},
             {"a room in between",
              RoomBlock("A", "east <B>") + RoomBlock("B", "west <A>") + RoomBlock("C"),
              {{0, 0}, {2, 0}, {1, 0}},
              {{Exit, Curve, false}}},
             {"back to itself", RoomBlock("A", "north <A>"), {{0, 0}}, {{Loop, Curve, false}}},
             {"nowhere", RoomBlock("A", "north <Gone>"), {{0, 0}}, {{Unknown, Stub, false}}},
             {"a script without a room",
              RoomBlock("A", "north msg <No.>"),
              {{0, 0}},
              {{Script, Stub, false}}},
             {"a script with two rooms",
              RoomBlock("A", "north if has <key> then goto <B> else goto <C>") + RoomBlock("B") +
                  RoomBlock("C"),
              {{0, 0}, {0, -2}, {2, -2}},
              {{Script, Stub, false}, {Goto, Straight, true}, {Goto, Curve, true}}},
             {"a place and out",
              RoomBlock("A", "place <the; B>") + RoomBlock("B", "out <A>"),
              {{0, 0}, {1, 0}},
              {{Place, Straight, false}}},
             {"out where an exit leads",
              RoomBlock("A", "east <B>") + RoomBlock("B", "west <A>\nout <A>"),
              {{0, 0}, {1, 0}},
              {{Exit, Straight, false}}},
             {"out alone",
              RoomBlock("A", "out <B>") + RoomBlock("B"),
              {{0, 0}, {1, 1}},
              {{Out, Curve, true}}},
         }) {
        const RoutedMap drawn = routing::RouteMap(GraphOf(rooms), cells);
        std::vector<Line> got;
        for (const MapLine& line : drawn.lines)
            got.push_back({line.kind, line.shape, line.oneWay});
        EXPECT_EQ(got, lines) << about;
        EXPECT_EQ(LinesThroughRooms(drawn), 0) << about;
        EXPECT_EQ(Untold(drawn), "") << about;
    }
}

TEST(Router, NamesTheRoomBehindAStub) {
    const RoutedMap drawn = routing::RouteMap(
        GraphOf(RoomBlock("A", "east <B>\nnorth <Gone>") + RoomBlock("B", "west <A>")), {{0, 0}, {20, 0}});
    std::string names;
    for (const routing::StubLabel& label : drawn.labels)
        names += label.text + ';';
    EXPECT_EQ(names, "Gone?;B;A;");
}

TEST(Router, WritesTheConditionBesideADiamondAndOverNoRoom) {
    for (const char* direction : {"north", "east", "southwest"}) {
        const RoutedMap drawn = routing::RouteMap(
            GraphOf(
                RoomBlock("A", direction + std::string(" if has <brass key> then goto <B> else goto <C>")) +
                RoomBlock("B") + RoomBlock("C")),
            {{0, 0}, {1, 0}, {0, -1}});
        std::string conditions;
        for (const routing::StubLabel& label : drawn.labels) {
            conditions += label.isCondition ? label.text + ';' : "";
            for (const routing::RoomBox& room : drawn.rooms)
                EXPECT_FALSE(label.place.Meets(room.Box())) << direction;
        }
        EXPECT_EQ(conditions, "if has brass key;") << direction << ": once, however many rooms it goes to";
    }
}

TEST(Router, DrawsNoLineThroughARoom) {
    for (const auto& [rooms, untrue, places, seed] : Cases<int, double, double, std::uint32_t>{
             {200, 0, 0, 1}, {200, 5, 10, 2}, {200, 10, 25, 3}, {600, 5, 5, 4}}) {
        const MapGraph graph = GraphOfMade({rooms, untrue, places, seed});
        const RoutedMap drawn = routing::RouteMap(graph, map::LayOut(graph));
        EXPECT_EQ(LinesThroughRooms(drawn), 0) << seed;
        EXPECT_EQ(Untold(drawn), "") << seed;
        const auto stubs = std::count_if(drawn.lines.begin(), drawn.lines.end(), [](const MapLine& line) {
            return line.shape == LineShape::Stub && line.to.room != map::NoRoom;
        });
        EXPECT_LT(stubs * 10, static_cast<std::ptrdiff_t>(drawn.lines.size())) << seed;
    }
}

TEST(Router, DrawsNoLineThroughARoomOfAHostileMap) {
    std::mt19937 random(7);
    for (const int rooms : {0, 1, 2, 30, 120}) {
        MapGraph graph;
        std::vector<Cell> cells;
        const int side = rooms / 12 + 2; // packed so that no cell is free
        for (int room = 0; room < rooms; ++room) {
            graph.names.push_back("room " + std::to_string(room));
            graph.pins.emplace_back();
            cells.push_back({room % side, room / side});
            for (int direction = 0; direction < 8; ++direction)
                graph.exits.push_back(
                    {room, static_cast<int>(random() % static_cast<unsigned>(rooms)), direction, false, ""});
            graph.ties.push_back({room, (room * 7 + 1) % rooms, room % 2 == 0, "a place"});
        }
        std::erase_if(graph.ties, [](const map::Tie& tie) { return tie.from == tie.to; });
        const RoutedMap drawn = routing::RouteMap(graph, cells);
        EXPECT_EQ(LinesThroughRooms(drawn), 0) << rooms;
    }
}

TEST(Router, MovesARoomWithItsLines) {
    const MapGraph graph = GraphOfMade({200, 5, 10, 5});
    routing::Router router(graph, map::LayOut(graph));
    std::mt19937 random(5);
    for (int step = 0; step < 200; ++step) {
        const int room = static_cast<int>(random() % static_cast<unsigned>(graph.RoomCount()));
        const Cell from = router.Map().rooms[static_cast<std::size_t>(room)].cell;
        const Cell to = from + Cell{static_cast<int>(random() % 7) - 3, static_cast<int>(random() % 7) - 3};
        if (router.RoomAt(to) == map::NoRoom)
            router.MoveRooms({{room, to}});
    }
    EXPECT_EQ(LinesThroughRooms(router.Map()), 0);
    EXPECT_EQ(Untold(router.Map()), "");
    EXPECT_EQ(Overlaps(router.Map().Cells()), 0);
    const std::vector<Cell> cells = router.Map().Cells();
    router.MoveRooms({{0, cells[1]}, {1, cells[0]}}); // two rooms that change places
    EXPECT_EQ(router.RoomAt(cells[0]), 1);
    EXPECT_EQ(router.RoomAt(cells[1]), 0);
    EXPECT_EQ(LinesThroughRooms(router.Map()), 0);
}

TEST(Router, KeepsTheLinesOfAMapThatWasALittleDifferent) {
    const MapGraph graph = GraphOfMade({200, 5, 10, 6});
    std::vector<Cell> cells = map::LayOut(graph);
    const routing::Router before(graph, cells);
    const auto linesIn = [](const RoutedMap& drawn) {
        std::multiset<std::string> lines;
        for (const MapLine& line : drawn.lines) {
            std::string told = std::to_string(line.from.room) + ' ' + std::to_string(line.from.port) + ':';
            for (const routing::Segment& segment : line.path.Flattened())
                told += std::to_string(segment.b.x) + ' ' + std::to_string(segment.b.y) + ';';
            lines.insert(told);
        }
        return lines;
    };
    EXPECT_EQ(linesIn(routing::Router(graph, cells, before.Map()).Map()), linesIn(before.Map()))
        << "nothing has changed";

    // A room on a line, a room that has moved, an exit less, and one that leads elsewhere.
    MapGraph after = graph;
    after.names.push_back("new");
    after.pins.emplace_back();
    const auto straight =
        std::find_if(before.Map().lines.begin(), before.Map().lines.end(), [&](const MapLine& line) {
            return line.shape == LineShape::Straight &&
                   map::Length(cells[line.to.room] - cells[line.from.room]) == 2;
        });
    ASSERT_NE(straight, before.Map().lines.end());
    const Cell way = cells[straight->to.room] - cells[straight->from.room];
    cells.push_back(cells[straight->from.room] + Cell{way.x / 2, way.y / 2});
    ASSERT_EQ(before.RoomAt(cells.back()), map::NoRoom);
    cells[7] = before.Map().rooms[7].cell + Cell{40, 0};
    after.exits.erase(after.exits.begin() + 20);
    after.exits[30].to = after.RoomCount() - 1;
    const RoutedMap now = routing::Router(after, cells, before.Map()).Map();
    EXPECT_EQ(LinesThroughRooms(now), 0);
    EXPECT_EQ(Untold(now), "");
    const std::multiset<std::string> old = linesIn(before.Map());
    const std::multiset<std::string> lines = linesIn(now);
    const auto kept =
        std::count_if(lines.begin(), lines.end(), [&](const auto& line) { return old.contains(line); });
    EXPECT_GT(kept, static_cast<long>(old.size()) - 30);
    EXPECT_LT(kept, static_cast<long>(old.size()));
}

} // namespace
} // namespace zem::test
