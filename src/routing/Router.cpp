#include "routing/Router.h"

#include "routing/Curves.h"
#include "routing/KeptLines.h"
#include "routing/Labels.h"
#include "routing/Lanes.h"
#include "routing/Wishes.h"

#include <algorithm>

namespace zem::routing {

namespace {

constexpr double StubLength = 20;
constexpr std::uint64_t MostLooks = 25'000'000; // then the lines that are left become plain curves or stubs
constexpr double StubCrossings = 4;             // a mark that stands at a port is not drawn over lightly
constexpr double PlainShare =
    1.3; // a plain curve that costs no more than this and PlainMore is taken at once
constexpr double PlainMore = 14;
constexpr double PlainBonus = 12;  // what a plain curve may cost more than a way with corners
constexpr double LongestShare = 3; // a way that costs more than this and LongestMore is no help to anybody
constexpr double LongestMore = 60;
constexpr double ShortestWay = 110;

std::vector<RoomBox> BoxesOf(const map::MapGraph& graph, const std::vector<map::Cell>& cells) {
    const std::vector<char> docked = DockedRooms(graph);
    std::vector<RoomBox> boxes;
    for (std::size_t room = 0; room < cells.size(); ++room)
        boxes.push_back({cells[room], docked[room] != 0});
    return boxes;
}

Path StubAt(const RoomBox& box, Port port) {
    Path stub;
    stub.start = PortPoint(box, port);
    stub.LineTo(stub.start + StubLength * PortDirection(port));
    return stub;
}

} // namespace

Router::Router(const map::MapGraph& graph, const std::vector<map::Cell>& cells)
    : boxes_(BoxesOf(graph, cells)) {
    ReadLines(graph);
    std::vector<int> all(map_.lines.size());
    for (std::size_t line = 0; line < all.size(); ++line)
        all[line] = static_cast<int>(line);
    RouteAll(all);
    PlaceNames();
}

Router::Router(const map::MapGraph& graph, const std::vector<map::Cell>& cells, const RoutedMap& before)
    : boxes_(BoxesOf(graph, cells)) {
    ReadLines(graph);
    const std::vector<int> kept = KeptLines(before, map_);
    std::vector<char> redo(map_.lines.size(), 0);
    for (std::size_t line = 0; line < kept.size(); ++line)
        redo[line] = kept[line] < 0 ||
                     !KeepLine(static_cast<int>(line), before.lines[static_cast<std::size_t>(kept[line])]);
    for (const int room : NewBoxes(before, map_))
        MakeWay(boxes_[room].Box(), redo);
    Redo(redo);
}

/// Collects what is to be drawn.
void Router::ReadLines(const map::MapGraph& graph) {
    map_.graph = graph;
    map_.rooms = boxes_.Rooms();
    map_.lines = WishesOf(graph, boxes_);
    segments_.resize(map_.lines.size());
}

/// Draws a line as it was drawn before. A wish for another shape is another line.
bool Router::KeepLine(int line, const MapLine& before) {
    if (before.path.IsEmpty())
        return false;
    Lay(line, before.shape, before.path, before.farPath);
    return true;
}

/// Marks the lines on which the box would stand; what stands at a port itself stays.
void Router::MakeWay(const Rect& box, std::vector<char>& redo) const {
    for (const int line : index_.LinesNear(box.Grown(4))) {
        const MapLine& drawn = map_.lines[static_cast<std::size_t>(line)];
        const bool isMark = drawn.shape == LineShape::Stub && drawn.to.room == map::NoRoom;
        redo[static_cast<std::size_t>(line)] |= !isMark;
    }
}

/// Draws the marked lines anew.
std::vector<int> Router::Redo(const std::vector<char>& redo) {
    std::vector<int> lines;
    for (std::size_t line = 0; line < redo.size(); ++line)
        if (redo[line])
            lines.push_back(static_cast<int>(line));
    for (const int line : lines) {
        TakeUp(line);
        Line(line).shape = WishedShape(Line(line), boxes_);
    }
    RouteAll(lines);
    PlaceNames();
    return lines;
}

/// Whether this routing has cost so much that its end counts more than its beauty.
bool Router::IsTooDear() const {
    return index_.Looks() - looksBefore_ > MostLooks;
}

/// How far apart the ends of the line are.
double Router::WayOf(int line) const {
    const MapLine& wish = map_.lines[static_cast<std::size_t>(line)];
    return wish.to.room == map::NoRoom ? 0
                                       : Distance(PortPoint(boxes_[wish.from.room], wish.from.port),
                                                  PortPoint(boxes_[wish.to.room], wish.to.port));
}

/// Draws lines that are not drawn yet: what cannot give way first, then straight ones, then the others.
void Router::RouteAll(const std::vector<int>& lines) {
    looksBefore_ = index_.Looks();
    std::vector<int> curves;
    for (const int line : lines)
        if (Line(line).shape == LineShape::Stub || Line(line).kind == LineKind::Loop)
            LayStub(line);
    std::vector<int> straight;
    for (const int line : lines)
        if (Line(line).shape == LineShape::Straight)
            straight.push_back(line);
        else if (Line(line).shape == LineShape::Curve && Line(line).kind != LineKind::Loop)
            curves.push_back(line);
    const auto byWay = [this](int a, int b) { return WayOf(a) < WayOf(b); };
    std::stable_sort(straight.begin(), straight.end(), byWay);
    for (const int line : straight)
        if (!LayStraight(line))
            curves.push_back(line);
    std::stable_sort(curves.begin(), curves.end(), byWay);
    for (const int line : curves)
        LayCurve(line);
    for (const int line : curves)
        Improve(line);
}

void Router::Lay(int line, LineShape shape, Path path, Path farPath) {
    MapLine& drawn = Line(line);
    drawn.shape = shape;
    drawn.path = std::move(path);
    drawn.farPath = std::move(farPath);
    std::vector<Segment>& segments = segments_[static_cast<std::size_t>(line)];
    segments = drawn.path.Flattened();
    const std::vector<Segment> far = drawn.farPath.Flattened();
    segments.insert(segments.end(), far.begin(), far.end());
    const bool isMark = drawn.to.room == map::NoRoom;
    index_.Add(line, segments, (isMark ? StubCrossings : 1) * CrossingCost);
}

void Router::TakeUp(int line) {
    index_.Remove(line, segments_[static_cast<std::size_t>(line)]);
    segments_[static_cast<std::size_t>(line)].clear();
}

void Router::LayStub(int line) {
    const MapLine& wish = Line(line);
    const RoomBox& box = boxes_[wish.from.room];
    if (wish.kind == LineKind::Loop)
        return Lay(line, LineShape::Curve, LoopAt(box, wish.from.port));
    const bool both = wish.to.room != map::NoRoom && !wish.oneWay;
    Lay(line, LineShape::Stub, StubAt(box, wish.from.port),
        both ? StubAt(boxes_[wish.to.room], wish.to.port) : Path());
}

bool Router::LayStraight(int line) {
    const MapLine& wish = Line(line);
    Path path;
    path.start = PortPoint(boxes_[wish.from.room], wish.from.port);
    path.LineTo(PortPoint(boxes_[wish.to.room], wish.to.port));
    const Segment segment{path.start, path.End()};
    if (!boxes_.IsClear(segment, wish.from.room, wish.to.room) || index_.CostOf(segment) > CrossingCost * 3)
        return false;
    Lay(line, LineShape::Straight, std::move(path));
    return true;
}

std::optional<PricedPath> Router::FindCurve(const MapLine& line) const {
    const Ground ground(boxes_, index_, line.from.room, line.to.room);
    const RoomBox& from = boxes_[line.from.room];
    const RoomBox& to = boxes_[line.to.room];
    const double way = Distance(PortPoint(from, line.from.port), PortPoint(to, line.to.port));
    std::optional<PricedPath> plain =
        PlainCurve(from, line.from.port, to, line.to.port, ground, PlainShare * way + PlainMore);
    if (plain || IsTooDear())
        return plain;
    Lanes lanes(boxes_, index_);
    std::vector<Point> corners = lanes.Find(line.from, line.to);
    if (corners.empty())
        return PlainCurve(from, line.from.port, to, line.to.port, ground,
                          LongestShare * std::max(ShortestWay, way) + LongestMore);
    Polish(corners, ground);
    PricedPath rounded = RoundedWay(corners, ground);
    const double cost = CostOfWay(corners, ground);
    plain = PlainCurve(from, line.from.port, to, line.to.port, ground, cost + PlainBonus);
    if (plain)
        return plain;
    if (cost > LongestShare * std::max(ShortestWay, way) + LongestMore || !ground.IsClear(rounded.segments))
        return std::nullopt;
    return rounded;
}

void Router::LayCurve(int line) {
    std::optional<PricedPath> curve = FindCurve(Line(line));
    if (curve)
        Lay(line, LineShape::Curve, std::move(curve->path));
    else
        LayStub(line);
}

/// A curve that was drawn when others were missing may find a better way now.
void Router::Improve(int line) {
    if (Line(line).shape != LineShape::Curve)
        return;
    const std::vector<Segment> before = segments_[static_cast<std::size_t>(line)];
    TakeUp(line);
    const double met = index_.CostOf(before);
    std::optional<PricedPath> better;
    if (met > 0 && !IsTooDear())
        better = FindCurve(Line(line));
    if (better && better->cost < met + LengthOf(before))
        Lay(line, LineShape::Curve, std::move(better->path));
    else
        Lay(line, LineShape::Curve, std::move(Line(line).path));
}

std::vector<int> Router::MoveRooms(const std::vector<Move>& moves) {
    std::vector<char> redo(map_.lines.size(), 0);
    std::vector<char> moved(map_.rooms.size(), 0);
    for (const Move& move : moves) {
        moved[static_cast<std::size_t>(move.room)] = 1;
        RoomBox& box = map_.rooms[static_cast<std::size_t>(move.room)];
        box.cell = move.to;
        boxes_.Move(move.room, move.to);
        MakeWay(box.Box(), redo);
    }
    for (std::size_t line = 0; line < redo.size(); ++line) {
        const MapLine& drawn = map_.lines[line];
        const auto isMoved = [&](int room) { return room >= 0 && moved[static_cast<std::size_t>(room)]; };
        redo[line] |= isMoved(drawn.from.room) || isMoved(drawn.to.room);
    }
    return Redo(redo);
}

void Router::PlaceNames() {
    map_.labels = PlaceLabels(map_.graph, boxes_, index_, map_.lines);
}

Path Router::WholeCurve(const MapLine& line) const {
    if (line.to.room == map::NoRoom)
        return {};
    const Ground ground(boxes_, index_, line.from.room, line.to.room);
    constexpr double AnyCost = 1e9;
    std::optional<PricedPath> curve = PlainCurve(boxes_[line.from.room], line.from.port, boxes_[line.to.room],
                                                 line.to.port, ground, AnyCost);
    if (curve)
        return std::move(curve->path);
    const std::vector<Point> corners = Lanes(boxes_, index_).Find(line.from, line.to);
    return corners.empty() ? Path() : RoundedWay(corners, ground).path;
}

RoutedMap RouteMap(const map::MapGraph& graph, const std::vector<map::Cell>& cells) {
    return Router(graph, cells).Map();
}

} // namespace zem::routing
