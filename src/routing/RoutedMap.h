#pragma once

#include "map/MapGraph.h"
#include "routing/Paths.h"

#include <string>
#include <vector>

namespace zem::routing {

inline constexpr double CellWidth = 128;
inline constexpr double CellHeight = 80;
inline constexpr double BoxWidth = 96;
inline constexpr double BoxHeight = 36;

/// Where a line begins or ends at a box: one of the eight ports by its direction, or the door at its lower
/// edge, which looks to the south.
using Port = int;
inline constexpr Port DoorPort = map::DirectionCount;

enum class LineKind {
    Exit,    // of the compass, to another room
    Loop,    // back to the same room
    Unknown, // to a room that the game has not
    Script,  // an exit that runs a script which goes to no room, or to several
    Goto,    // from such an exit on to one of its rooms
    Out,
    Place
};

enum class LineShape { Straight, Curve, Stub };

/// One end of a line.
struct LineEnd {
    int room = map::NoRoom;
    Port port = 0;
    int exit = -1;         // the entry in MapGraph::exits or, for Out and Place, in MapGraph::ties; -1: none
    bool isScript = false; // gets the diamond
};

/// What is drawn for an exit with its way back, or for one alone.
struct MapLine {
    LineKind kind = LineKind::Exit;
    LineShape shape = LineShape::Stub;
    LineEnd from;
    LineEnd to;          // without a room for Loop, Unknown and Script
    bool oneWay = false; // no way back: an arrow head at the far end
    Path path;           // of a stub, its piece at `from`
    Path farPath;        // of a stub, its piece at `to`; else empty

    bool IsTie() const { return kind == LineKind::Out || kind == LineKind::Place; }
};

/// How far the diamond of a script is from its port.
inline constexpr double DiamondFromPort = 14;

/// The name beside a stub, or the condition beside a diamond.
struct StubLabel {
    int line = 0;
    bool far = false; // beside the piece at `to`
    Rect place;
    std::string text;
    bool isCondition = false;
};

struct RoomBox {
    map::Cell cell;
    bool docked = false; // joined by places or "out" alone, to one room: drawn at two thirds

    Point Middle() const { return {cell.x * CellWidth, cell.y * CellHeight}; }
    Rect Box() const {
        const double scale = docked ? 2.0 / 3 : 1.0;
        const Point middle = Middle();
        return {middle.x - scale * BoxWidth / 2, middle.y - scale * BoxHeight / 2,
                middle.x + scale * BoxWidth / 2, middle.y + scale * BoxHeight / 2};
    }
};

/// Where the port lies on the box.
Point PortPoint(const RoomBox& box, Port port);

/// The direction in which a line leaves the port, of length 1.
Point PortDirection(Port port);

/// A map as it is drawn: everything but colours.
struct RoutedMap {
    map::MapGraph graph;
    std::vector<RoomBox> rooms;
    std::vector<MapLine> lines;
    std::vector<StubLabel> labels;

    std::vector<map::Cell> Cells() const;

    /// Of all boxes and lines; a cell at the origin for a map without rooms.
    Rect Bounds() const;
};

} // namespace zem::routing
