#pragma once

#include "routing/Boxes.h"
#include "routing/LineIndex.h"
#include "routing/RoutedMap.h"

#include <optional>

namespace zem::routing {

class Lanes;
struct PricedPath;

/// Draws the lines of a map: straight where an exit is true, else curves around the rooms, else stubs with
/// the name of the room at the other end. No line runs through a room.
class Router {
public:
    /// @param cells  of the rooms, no two alike
    Router(const map::MapGraph& graph, const std::vector<map::Cell>& cells);

    /// The same for a map that was a little different before: what is drawn there and still holds stays.
    /// @param before  a whole map
    Router(const map::MapGraph& graph, const std::vector<map::Cell>& cells, const RoutedMap& before);

    const RoutedMap& Map() const { return map_; }

    struct Move {
        int room;
        map::Cell to; // a free cell, or one that another of the moves leaves
    };

    /// Moves rooms and redoes only their own lines and those that they would stand on; gives these lines.
    std::vector<int> MoveRooms(const std::vector<Move>& moves);

    /// The curve for a line that is drawn as stubs, from end to end; empty when there is no way.
    Path WholeCurve(const MapLine& line) const;

    /// The room whose cell this is, or map::NoRoom.
    int RoomAt(map::Cell cell) const { return boxes_.RoomAt(cell); }

    /// The lines that come into the area.
    std::vector<int> LinesNear(const Rect& area) const { return index_.LinesNear(area); }

private:
    void ReadLines(const map::MapGraph& graph);
    bool KeepLine(int line, const MapLine& before);
    void MakeWay(const Rect& box, std::vector<char>& redo) const;
    std::vector<int> Redo(const std::vector<char>& redo);
    void RouteAll(const std::vector<int>& lines);
    void LayStub(int line);
    bool LayStraight(int line);
    void LayCurve(int line);
    void Improve(int line);
    void Lay(int line, LineShape shape, Path path, Path farPath = {});
    void TakeUp(int line);
    std::optional<PricedPath> FindCurve(const MapLine& line) const;
    MapLine& Line(int line) { return map_.lines[static_cast<std::size_t>(line)]; }
    double WayOf(int line) const;
    bool IsTooDear() const;
    void PlaceNames();

    RoutedMap map_;
    Boxes boxes_;
    LineIndex index_;
    std::uint64_t looksBefore_ = 0;              // of this routing
    std::vector<std::vector<Segment>> segments_; // of each line, as they stand in the index
};

/// The map with all its lines.
RoutedMap RouteMap(const map::MapGraph& graph, const std::vector<map::Cell>& cells);

} // namespace zem::routing
