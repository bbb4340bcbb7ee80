// What holds for every map: names do not matter, a turned or mirrored game is drawn as well, and any row of
// edits leaves the rest of the map where its author knows it.
#include "MadeMap.h"
#include "MapFigures.h"
#include "map/AfterEdit.h"
#include "map/MapGames.h"

#include <gtest/gtest.h>
#include <random>

namespace zem::test {
namespace {

using map::Cell;
using map::MapGraph;

MapGraph GraphOfFile(const std::string& bytes) {
    GameModel game;
    ReadGame(game, bytes);
    return map::ReadMapGraph(game);
}

MapGraph LawGraph(int rooms, double untrue, double places, std::uint32_t seed) {
    return GraphOfFile(bench::MakeMap({rooms, untrue, places, seed}).file);
}

/// The game as it would be in another world: turned by eighths from north to east, or mirrored.
MapGraph Turned(MapGraph graph, int eighths, bool isMirrored) {
    for (map::Exit& exit : graph.exits)
        exit.direction = (isMirrored ? 16 - exit.direction + eighths : exit.direction + eighths) % 8;
    return graph;
}

TEST(LayoutLaws, ATurnedOrMirroredGameIsDrawnAsWell) {
    for (const auto& file : FilesIn(ZEM_SAMPLES)) {
        const MapGraph graph = GraphOfFile(ReadBytes(file));
        for (int turn = 0; turn < 16; ++turn) {
            const MapGraph turned = Turned(graph, turn % 8, turn >= 8);
            const bench::MapFigures figures = bench::Measure(turned, map::LayOut(turned));
            EXPECT_EQ(figures.overlaps, 0) << file << turn;
            EXPECT_EQ(figures.exact, 100) << file << turn;
            EXPECT_LE(figures.straightOver, 1) << file << turn;
        }
    }
    double exact = 0;
    double turnedExact = 0;
    const int seeds = 4;
    for (std::uint32_t seed = 1; seed <= seeds; ++seed) {
        const MapGraph graph = LawGraph(60, 5, 5, seed);
        exact += bench::Measure(graph, map::LayOut(graph)).exact;
        for (const int turn : {2, 11}) {
            const MapGraph turned = Turned(graph, turn % 8, turn >= 8);
            const bench::MapFigures figures = bench::Measure(turned, map::LayOut(turned));
            EXPECT_EQ(figures.overlaps, 0) << seed;
            turnedExact += figures.exact / 2;
        }
    }
    EXPECT_NEAR(turnedExact / seeds, exact / seeds, 1);
}

TEST(LayoutLaws, NamesAndWordsDoNotMatter) {
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
        const MapGraph graph = LawGraph(80, 4, 10, seed);
        MapGraph renamed = graph;
        for (std::size_t room = 0; room < renamed.names.size(); ++room)
            renamed.names[room] =
                std::string(1 + room % 7, 'z') + std::to_string(1000 - static_cast<int>(room));
        for (map::Exit& exit : renamed.exits)
            exit.target =
                exit.to == map::NoRoom ? "nowhere" : renamed.names[static_cast<std::size_t>(exit.to)];
        for (map::Tie& tie : renamed.ties)
            tie.words = "the far; place";
        const std::vector<Cell> cells = map::LayOut(graph);
        EXPECT_EQ(map::LayOut(renamed), cells) << seed;
        EXPECT_EQ(map::LayOutAfterEdit({graph, cells}, graph), cells) << seed;
    }
}

/// A map and what its author does to it, one edit after the other.
class EditedMap {
public:
    explicit EditedMap(std::uint32_t seed) : random_(seed), map_{LawGraph(60, 3, 5, seed), {}} {
        map_.cells = map::LayOut(map_.graph);
    }

    /// Edits by chance and looks at what has become of the map. How many rooms moved that need not.
    int Edit() {
        MapGraph after = map_.graph;
        bool mayMove = false;
        switch (random_() % 6) {
        case 0:
            AddRoom(after);
            mayMove = true;
            break;
        case 1:
            AddExit(after);
            mayMove = true;
            break;
        case 2:
            after.exits.erase(after.exits.begin() + Any(after.exits.size()));
            break;
        case 3:
            after.names[static_cast<std::size_t>(AnyRoom(after))] = "renamed " + std::to_string(++names_);
            break;
        case 4:
            Pin(after);
            mayMove = true;
            break;
        default:
            return DropLastRoom(after);
        }
        const std::vector<Cell> cells = map::LayOutAfterEdit(map_, after);
        const int moved = Look(after, cells);
        if (!mayMove) {
            EXPECT_EQ(moved, 0);
        }
        map_ = {after, cells};
        return moved;
    }

private:
    int Any(std::size_t count) { return static_cast<int>(random_() % count); }
    int AnyRoom(const MapGraph& graph) { return Any(graph.names.size()); }

    void AddRoom(MapGraph& graph) {
        const int from = AnyRoom(graph);
        const int room = graph.RoomCount();
        graph.names.push_back("new " + std::to_string(++names_));
        graph.pins.emplace_back();
        const int direction = Any(8);
        graph.exits.push_back(
            {.from = from, .to = room, .direction = direction, .target = graph.names.back()});
        graph.exits.push_back({.from = room,
                               .to = from,
                               .direction = (direction + 4) % 8,
                               .target = graph.names[static_cast<std::size_t>(from)]});
    }

    void AddExit(MapGraph& graph) {
        const int from = AnyRoom(graph);
        const int to = AnyRoom(graph);
        graph.exits.push_back({.from = from,
                               .to = to,
                               .direction = Any(8),
                               .target = graph.names[static_cast<std::size_t>(to)]});
    }

    void Pin(MapGraph& graph) {
        const int room = AnyRoom(graph);
        const Cell old = map_.cells[static_cast<std::size_t>(room)];
        const Cell cell{old.x + Any(5) - 2, old.y + Any(5) - 2};
        for (const std::optional<Cell>& pin : graph.pins)
            if (pin && *pin == cell)
                return;
        graph.pins[static_cast<std::size_t>(room)] = cell;
    }

    int DropLastRoom(MapGraph graph) {
        const int room = graph.RoomCount() - 1;
        graph.names.pop_back();
        graph.pins.pop_back();
        std::erase_if(graph.exits,
                      [&](const map::Exit& exit) { return exit.from == room || exit.to == room; });
        std::erase_if(graph.ties, [&](const map::Tie& tie) { return tie.from == room || tie.to == room; });
        for (map::Exit& exit : graph.exits)
            std::erase(exit.targets, room);
        if (graph.start == room)
            graph.start = map::NoRoom;
        const std::vector<Cell> cells = map::LayOutAfterEdit(map_, graph);
        const int moved = Look(graph, cells);
        EXPECT_EQ(moved, 0) << "a room that goes moves no other";
        map_ = {graph, cells};
        return moved;
    }

    int Look(const MapGraph& graph, const std::vector<Cell>& cells) const {
        EXPECT_EQ(cells.size(), graph.names.size());
        EXPECT_EQ(Overlaps(cells), 0);
        int moved = 0;
        for (std::size_t room = 0; room < cells.size(); ++room) {
            if (graph.pins[room]) {
                EXPECT_EQ(cells[room], *graph.pins[room]);
            } else if (room < map_.cells.size()) {
                moved += cells[room] != map_.cells[room];
            }
        }
        return moved;
    }

    std::mt19937 random_;
    map::PlacedMap map_;
    int names_ = 0;
};

TEST(LayoutLaws, EditsLeaveTheRestOfTheMapWhereItWas) {
    int moved = 0;
    const int edits = 40;
    for (std::uint32_t seed = 1; seed <= 4; ++seed) {
        SCOPED_TRACE(seed);
        EditedMap map(seed);
        for (int k = 0; k < edits; ++k)
            moved += map.Edit();
    }
    EXPECT_LE(moved, 4 * edits * 60 / 25) << "4 per cent of the rooms for each edit";
}

} // namespace
} // namespace zem::test
