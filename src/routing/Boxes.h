#pragma once

#include "map/Grid.h"
#include "routing/RoutedMap.h"

namespace zem::routing {

/// The boxes of the rooms by their cells.
class Boxes {
public:
    explicit Boxes(std::vector<RoomBox> rooms);

    const std::vector<RoomBox>& Rooms() const { return rooms_; }
    const RoomBox& operator[](int room) const { return rooms_[static_cast<std::size_t>(room)]; }
    int RoomAt(map::Cell cell) const { return grid_.RoomAt(cell); }

    /// Moves a room to a cell that is free.
    void Move(int room, map::Cell cell);

    /// Whether the segment keeps clear of all boxes: by 3, and of those of the two rooms by nothing.
    bool IsClear(const Segment& segment, int room, int otherRoom = map::NoRoom) const;
    bool IsClear(const std::vector<Segment>& segments, int room, int otherRoom = map::NoRoom) const;

    /// Whether no box meets the rectangle.
    bool IsFree(const Rect& rect) const;

private:
    template <class Visit>
    bool NoneOf(const Rect& area, Visit isHit) const;

    std::vector<RoomBox> rooms_;
    map::Grid grid_;
};

/// The cell in which a point lies.
map::Cell CellOf(Point point);

} // namespace zem::routing
