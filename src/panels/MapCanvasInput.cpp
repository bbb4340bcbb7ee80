// What mouse and keys do on the map.
#include "painting/MapMarks.h"
#include "panels/MapAccessible.h"
#include "panels/MapCanvas.h"
#include "qt/QtText.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace zem {

namespace {

/// The direction of an arrow key, or of one of the four keys at the corners around them; -1 for other keys.
int DirectionOfKey(const QKeyEvent& event) {
    const bool isKeypad = event.modifiers().testFlag(Qt::KeypadModifier);
    switch (event.key()) {
    case Qt::Key_Up:
        return 0;
    case Qt::Key_PageUp:
        return 1;
    case Qt::Key_Right:
        return 2;
    case Qt::Key_PageDown:
        return 3;
    case Qt::Key_Down:
        return 4;
    case Qt::Key_End:
        return 5;
    case Qt::Key_Left:
        return 6;
    case Qt::Key_Home:
        return 7;
    default:
        break;
    }
    constexpr int Digits[] = {5, 4, 3, 6, -1, 2, 7, 0, 1}; // of the keypad, from 1
    if (isKeypad && event.key() >= Qt::Key_1 && event.key() <= Qt::Key_9)
        return Digits[event.key() - Qt::Key_1];
    return -1;
}

} // namespace

// ---- The mouse

void MapCanvas::Hover(QPointF point) {
    const PortHit hit = PortAt(point);
    int room = hit.room;
    if (room == map::NoRoom)
        room = RoomAt(point.toPoint());
    if (room == view_.hovered && hit.port == view_.hoveredPort)
        return;
    const bool isOther = room != view_.hovered;
    view_.hovered = room;
    view_.hoveredPort = hit.port;
    if (isOther)
        SeeWholeCurves();
    setCursor(hit.port >= 0 ? Qt::CrossCursor : Qt::ArrowCursor);
    update();
}

void MapCanvas::leaveEvent(QEvent* event) {
    view_.hovered = map::NoRoom;
    view_.hoveredPort = -1;
    SeeWholeCurves();
    update();
    QWidget::leaveEvent(event);
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

// ---- The keys

void MapCanvas::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        if (nameBox_ != nullptr)
            return EndName(false);
        if (gesture_ == Gesture::Rooms)
            TakeBackDrag();
        if (gesture_ != Gesture::None)
            return EndGesture();
        return QWidget::keyPressEvent(event);
    }
    if (!HasMap() || nameBox_ != nullptr || WalkOrDraw(*event))
        return;
    const bool isControl = event->modifiers().testFlag(Qt::ControlModifier);
    if (isControl && event->key() == Qt::Key_0)
        return FitAll();
    if (isControl && event->key() == Qt::Key_1)
        return ZoomTo(1);
    if (event->key() == Qt::Key_Plus || (isControl && event->key() == Qt::Key_Equal))
        return ZoomIn();
    if (event->key() == Qt::Key_Minus)
        return ZoomOut();
    const bool isPlain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && isPlain &&
        view_.current != map::NoRoom)
        emit RoomOpened(view_.current);
    else if (event->key() == Qt::Key_Delete && isPlain && (view_.line >= 0 || !view_.selected.empty()))
        emit DeleteWanted();
    else if (event->key() == Qt::Key_Insert)
        AskName(FreeCellAt(QPointF(width(), height()) / 2), map::NoRoom, 0, false);
    else if (isControl && event->key() == Qt::Key_A) {
        for (std::size_t room = 0; room < Map().rooms.size(); ++room)
            view_.selected.insert(static_cast<int>(room));
        update();
    } else if (isPlain && !event->text().isEmpty() && event->text().at(0).isPrint())
        FindByTyping(event->text());
    else
        QWidget::keyPressEvent(event);
}

/// The keys with a direction: alone they walk, with Ctrl they draw, with Alt they move.
bool MapCanvas::WalkOrDraw(QKeyEvent& event) {
    const int direction = DirectionOfKey(event);
    if (direction < 0 || Map().rooms.empty())
        return false;
    if (view_.current == map::NoRoom) {
        const int start = Map().graph.start;
        Choose(start == map::NoRoom ? 0 : start, false);
        BringIntoSight(view_.current);
        return true;
    }
    if (event.modifiers().testFlag(Qt::ControlModifier))
        DrawByKey(direction);
    else if (event.modifiers().testFlag(Qt::AltModifier))
        MoveByKey(direction);
    else
        Walk(direction);
    return true;
}

void MapCanvas::Walk(map::Direction direction) {
    for (const map::Exit& exit : Map().graph.exits)
        if (exit.from == view_.current && exit.direction == direction && exit.to != map::NoRoom) {
            Choose(exit.to, false);
            BringIntoSight(exit.to);
            return;
        }
}

/// Connects to the room that stands next in the direction, or asks for a new one there.
void MapCanvas::DrawByKey(map::Direction direction) {
    const map::Cell from = Map().rooms[static_cast<std::size_t>(view_.current)].cell;
    constexpr int Farthest = 3; // cells
    for (int step = 1; step <= Farthest; ++step) {
        const int there = router_->RoomAt(from + step * map::Step(direction));
        if (there != map::NoRoom)
            return emit ConnectionDrawn(view_.current, direction, there, -1, false);
    }
    const map::Cell cell = from + map::Step(direction);
    BringIntoSight(view_.current);
    AskName(cell, view_.current, direction, false);
}

void MapCanvas::MoveByKey(map::Direction direction) {
    std::vector<map::Placing> placings;
    std::vector<routing::Router::Move> moves;
    for (const int room : view_.selected) {
        const map::Cell to = Map().rooms[static_cast<std::size_t>(room)].cell + map::Step(direction);
        const int there = router_->RoomAt(to);
        if (map::Length(to) > map::MaxPin || (there != map::NoRoom && !view_.selected.contains(there)))
            return;
        placings.push_back({room, to});
        moves.push_back({room, to});
    }
    Move(moves);
    BringIntoSight(view_.current);
    emit RoomsMoved(placings);
}

void MapCanvas::FindByTyping(const QString& text) {
    constexpr qint64 Pause = 1000; // milliseconds after which a new word begins
    if (!sinceTyped_.isValid() || sinceTyped_.elapsed() > Pause)
        typed_.clear();
    sinceTyped_.start();
    typed_ += text;
    const auto count = static_cast<int>(Map().rooms.size());
    // One letter again and again goes from room to room; a word stays while it fits.
    const int first = typed_.size() == 1 ? view_.current + 1 : std::max(view_.current, 0);
    for (int k = 0; k < count; ++k) {
        const int room = (first + k) % count;
        if (ToQt(Map().graph.names[static_cast<std::size_t>(room)]).startsWith(typed_, Qt::CaseInsensitive)) {
            Choose(room, false);
            return BringIntoSight(room);
        }
    }
}

} // namespace zem
