// What the mouse does on the map.
#include "painting/MapMarks.h"
#include "panels/MapAccessible.h"
#include "panels/MapCanvas.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace zem {

void MapCanvas::Hover(QPointF point) {
    const PortHit hit = PortAt(point);
    int room = hit.room;
    if (room == map::NoRoom)
        room = RoomAt(point.toPoint());
    setCursor(HollowEndAt(point) >= 0 ? Qt::PointingHandCursor
              : hit.port >= 0         ? Qt::CrossCursor
                                      : Qt::ArrowCursor);
    if (room == view_.hovered && hit.port == view_.hoveredPort)
        return;
    const bool isOther = room != view_.hovered;
    view_.hovered = room;
    view_.hoveredPort = hit.port;
    if (isOther)
        SeeWholeCurves();
    update();
}

void MapCanvas::leaveEvent(QEvent* event) {
    view_.hovered = map::NoRoom;
    view_.hoveredPort = -1;
    SeeWholeCurves();
    update();
    QWidget::leaveEvent(event);
}

void MapCanvas::hideEvent(QHideEvent* event) {
    GiveUpGesture();
    QWidget::hideEvent(event);
}

void MapCanvas::mousePressEvent(QMouseEvent* event) {
    EndName(true);
    if (!HasMap())
        return;
    if (event->button() == Qt::RightButton) {
        if (const int room = RoomAt(event->pos()); room != map::NoRoom && !view_.selected.contains(room))
            Choose(room, false);
        else
            view_.line = room == map::NoRoom ? LineAt(event->position()) : -1;
        update();
        return;
    }
    const QRectF bounds = ToQt(Map().Bounds());
    if (IsOverviewSeen() && OverviewRect().contains(event->pos())) {
        const double zoom = std::min(
            {OverviewRect().width() / bounds.width(), OverviewRect().height() / bounds.height(), .2});
        const QPointF middle = (event->position() - QRectF(OverviewRect()).center()) / zoom + bounds.center();
        origin_ = middle - QPointF(width(), height()) / 2 / view_.zoom;
        update();
        return;
    }
    pressed_ = last_ = event->position();
    pressedRoom_ = RoomAt(event->pos());
    port_ = event->button() == Qt::LeftButton ? PortAt(event->position()) : PortHit();
    pressedEnd_ = event->button() == Qt::LeftButton ? HollowEndAt(event->position()) : -1;
    gesture_ = Gesture::Press;
    if (event->button() == Qt::MiddleButton) {
        pressedRoom_ = map::NoRoom;
        return;
    }
    const bool add = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    if (port_.room == map::NoRoom && pressedRoom_ != map::NoRoom &&
        (add || !view_.selected.contains(pressedRoom_)))
        Choose(pressedRoom_, add);
    else if (pressedRoom_ == map::NoRoom && port_.room == map::NoRoom)
        view_.line = LineAt(event->position());
    if (event->modifiers().testFlag(Qt::ShiftModifier) && pressedRoom_ == map::NoRoom)
        gesture_ = Gesture::Band;
    update();
}

void MapCanvas::BeginGesture(QPointF point) {
    if ((point - pressed_).manhattanLength() < QApplication::startDragDistance())
        return;
    if (port_.room != map::NoRoom)
        gesture_ = Gesture::Port;
    else if (pressedRoom_ != map::NoRoom && view_.selected.contains(pressedRoom_)) {
        gesture_ = Gesture::Rooms;
        before_.clear();
        for (const int room : view_.selected)
            before_.push_back({room, Map().rooms[static_cast<std::size_t>(room)].cell});
    } else
        gesture_ = Gesture::Pan;
}

void MapCanvas::mouseMoveEvent(QMouseEvent* event) {
    const QPointF point = event->position();
    if (!HasMap())
        return;
    if (gesture_ == Gesture::None)
        return Hover(point);
    if (gesture_ == Gesture::Press)
        BeginGesture(point);
    if (gesture_ == Gesture::Pan)
        Pan(point - last_);
    if (gesture_ == Gesture::Rooms)
        DragRooms(point);
    last_ = point;
    if (gesture_ == Gesture::Port) {
        const PortHit hit = PortAt(point);
        view_.hovered = hit.room == map::NoRoom ? RoomAt(point.toPoint()) : hit.room;
        view_.hoveredPort = hit.port;
    }
    update();
}

/// Puts the selected rooms where they would stand if they were dropped here: only onto free cells.
void MapCanvas::DragRooms(QPointF point) {
    const QPointF way = (point - pressed_) / view_.zoom;
    const map::Cell by{static_cast<int>(std::lround(way.x() / routing::CellWidth)),
                       static_cast<int>(std::lround(way.y() / routing::CellHeight))};
    std::vector<routing::Router::Move> moves;
    for (const map::Placing& room : before_) {
        const map::Cell to = *room.cell + by;
        const int there = router_->RoomAt(to);
        if (there != map::NoRoom && !view_.selected.contains(there))
            return;
        if (map::Length(to) > map::MaxPin)
            return;
        if (!(Map().rooms[static_cast<std::size_t>(room.room)].cell == to))
            moves.push_back({room.room, to});
    }
    if (moves.empty())
        return;
    Move(moves);
}

void MapCanvas::Move(const std::vector<routing::Router::Move>& moves) {
    painter_->Update(router_->MoveRooms(moves));
    overview_ = {};
    update();
}

void MapCanvas::TakeBackDrag() {
    std::vector<routing::Router::Move> moves;
    for (const map::Placing& room : before_)
        moves.push_back({room.room, *room.cell});
    Move(moves);
}

void MapCanvas::mouseReleaseEvent(QMouseEvent* event) {
    const Gesture gesture = gesture_;
    const QPointF point = event->position();
    last_ = point;
    // What is let go outside the map is not meant for it: nobody would see where it stands then.
    if ((gesture == Gesture::Rooms || gesture == Gesture::Port) && !rect().contains(point.toPoint()))
        return GiveUpGesture();
    if (gesture == Gesture::Rooms) {
        std::vector<map::Placing> placings;
        for (const map::Placing& room : before_) {
            const map::Cell now = Map().rooms[static_cast<std::size_t>(room.room)].cell;
            if (!(now == *room.cell))
                placings.push_back({room.room, now});
        }
        EndGesture();
        if (!placings.empty())
            emit RoomsMoved(placings);
        return;
    }
    if (gesture == Gesture::Band)
        EndBand();
    EndGesture();
    if (gesture == Gesture::Port)
        EndPort(point, event->modifiers().testFlag(Qt::ControlModifier));
    else if (gesture == Gesture::Press && pressedEnd_ >= 0)
        emit UnknownRoomWanted(Map().lines[static_cast<std::size_t>(pressedEnd_)].from.exit);
    else if (gesture == Gesture::Press && port_.room != map::NoRoom)
        Choose(port_.room, false); // a click at a port chooses its room
    else if (gesture == Gesture::Press && pressedRoom_ != map::NoRoom &&
             event->modifiers() == Qt::NoModifier && view_.selected.size() > 1)
        Choose(pressedRoom_, false);
    else if (gesture == Gesture::Press && pressedRoom_ == map::NoRoom && event->button() == Qt::LeftButton &&
             view_.selected.size() > 1) {
        view_.selected = {view_.current};
        update();
    }
}

void MapCanvas::EndGesture() {
    gesture_ = Gesture::None;
    before_.clear();
    update();
}

/// Ends the gesture and leaves everything as it was before.
void MapCanvas::GiveUpGesture() {
    if (gesture_ == Gesture::Rooms)
        TakeBackDrag();
    EndGesture();
}

void MapCanvas::EndPort(QPointF point, bool oneWay) {
    const PortHit hit = PortAt(point);
    const int room = hit.room != map::NoRoom ? hit.room : router_->RoomAt(CellAt(point));
    if (room == map::NoRoom)
        return AskName(CellAt(point), port_.room, port_.port, oneWay);
    if (room == port_.room && hit.port == port_.port)
        return; // back where it began
    const int back = hit.room != map::NoRoom && hit.room != port_.room ? hit.port : -1;
    emit ConnectionDrawn(port_.room, port_.port, room, back, oneWay);
}

void MapCanvas::EndBand() {
    const QRectF area = QRectF(ToMap(pressed_), ToMap(last_)).normalized();
    view_.selected.clear();
    for (std::size_t room = 0; room < Map().rooms.size(); ++room)
        if (area.intersects(ToQt(Map().rooms[room].Box())))
            view_.selected.insert(static_cast<int>(room));
    view_.current = view_.selected.empty() ? map::NoRoom : *view_.selected.begin();
    SeeWholeCurves();
    if (view_.current != map::NoRoom)
        emit RoomChosen(view_.current);
}

void MapCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    const int room = RoomAt(event->pos());
    gesture_ = Gesture::None;
    if (room != map::NoRoom && event->button() == Qt::LeftButton)
        emit RoomOpened(room);
}

void MapCanvas::wheelEvent(QWheelEvent* event) {
    const double steps = event->angleDelta().y() / 120.0;
    if (steps == 0 || !HasMap())
        return QWidget::wheelEvent(event);
    const QPointF at = event->position();
    const QPointF kept = ToMap(at);
    view_.zoom = std::clamp(view_.zoom * std::pow(1.2, steps), .02, 4.0);
    origin_ = kept - at / view_.zoom;
    KeepInSight();
    emit ZoomChanged(view_.zoom);
    update();
}

void MapCanvas::contextMenuEvent(QContextMenuEvent* event) {
    QPoint at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard && view_.current != map::NoRoom)
        at = mapToGlobal(PointOfRoom(view_.current));
    emit MenuWanted(at);
}

} // namespace zem
