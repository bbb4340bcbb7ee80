#include "routing/Boxes.h"

#include <algorithm>
#include <cmath>

namespace zem::routing {

namespace {

constexpr double Clearance = 3;
constexpr double DoorOffset = 24; // of the door from the middle of the lower edge, on a box of full size

} // namespace

Point PortPoint(const RoomBox& box, Port port) {
    const Rect rect = box.Box();
    const Point middle = box.Middle();
    if (port == DoorPort)
        return {middle.x + DoorOffset * (box.docked ? 2.0 / 3 : 1), rect.bottom};
    const map::Cell step = map::Step(port);
    return {middle.x + step.x * (rect.right - middle.x), middle.y + step.y * (rect.bottom - middle.y)};
}

Point PortDirection(Port port) {
    const map::Cell step = map::Step(port == DoorPort ? 4 : port);
    return Unit({step.x * CellWidth, step.y * CellHeight});
}

std::vector<map::Cell> RoutedMap::Cells() const {
    std::vector<map::Cell> cells;
    for (const RoomBox& room : rooms)
        cells.push_back(room.cell);
    return cells;
}

Rect RoutedMap::Bounds() const {
    if (rooms.empty())
        return {-CellWidth / 2, -CellHeight / 2, CellWidth / 2, CellHeight / 2};
    Rect bounds = rooms.front().Box();
    for (const RoomBox& room : rooms) {
        const Point middle = room.Middle();
        bounds.Include({middle.x - CellWidth / 2, middle.y - CellHeight / 2});
        bounds.Include({middle.x + CellWidth / 2, middle.y + CellHeight / 2});
    }
    for (const MapLine& line : lines)
        for (const Piece& piece : line.path.pieces)
            bounds.Include(piece.end);
    for (const StubLabel& label : labels) {
        bounds.Include({label.place.left, label.place.top});
        bounds.Include({label.place.right, label.place.bottom});
    }
    return bounds;
}

Boxes::Boxes(std::vector<RoomBox> rooms) : rooms_(std::move(rooms)) {
    for (std::size_t room = 0; room < rooms_.size(); ++room)
        grid_.At(rooms_[room].cell).room = static_cast<int>(room);
}

void Boxes::Move(int room, map::Cell cell) {
    RoomBox& box = rooms_[static_cast<std::size_t>(room)];
    if (grid_.RoomAt(box.cell) == room)
        grid_.At(box.cell).room = map::NoRoom;
    grid_.At(cell).room = room;
    box.cell = cell;
}

template <class Visit>
bool Boxes::NoneOf(const Rect& area, Visit isHit) const {
    const map::Cell first = CellOf({area.left, area.top});
    const map::Cell last = CellOf({area.right, area.bottom});
    for (int y = first.y; y <= last.y; ++y)
        for (int x = first.x; x <= last.x; ++x) {
            const int room = grid_.RoomAt({x, y});
            if (room != map::NoRoom && isHit(room))
                return false;
        }
    return true;
}

bool Boxes::IsClear(const Segment& segment, int room, int otherRoom) const {
    Rect area{segment.a.x, segment.a.y, segment.a.x, segment.a.y};
    area.Include(segment.b);
    return NoneOf(area.Grown(Clearance), [&](int hit) {
        const bool own = hit == room || hit == otherRoom;
        return RunsThrough(segment, (*this)[hit].Box().Grown(own ? -.01 : Clearance));
    });
}

bool Boxes::IsClear(const std::vector<Segment>& segments, int room, int otherRoom) const {
    return std::all_of(segments.begin(), segments.end(),
                       [&](const Segment& segment) { return IsClear(segment, room, otherRoom); });
}

bool Boxes::IsFree(const Rect& rect) const {
    return NoneOf(rect, [&](int hit) { return (*this)[hit].Box().Meets(rect); });
}

map::Cell CellOf(Point point) {
    return {static_cast<int>(std::floor(point.x / CellWidth + .5)),
            static_cast<int>(std::floor(point.y / CellHeight + .5))};
}

} // namespace zem::routing
