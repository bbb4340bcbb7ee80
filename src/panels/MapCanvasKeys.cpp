// What the keys do on the map.
#include "panels/MapCanvas.h"
#include "qt/QtText.h"

#include <QKeyEvent>

#include <algorithm>

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

void MapCanvas::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        if (nameBox_ != nullptr)
            return EndName(false);
        if (gesture_ != Gesture::None)
            return GiveUpGesture();
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

/// The keys with a direction: alone they walk, with Shift they select on the way, with Ctrl they draw, with
/// Alt they move.
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
        Walk(direction, event.modifiers().testFlag(Qt::ShiftModifier));
    return true;
}

/// Goes through the exit; with the rooms that are selected already, so that several can be moved together.
void MapCanvas::Walk(map::Direction direction, bool add) {
    for (const map::Exit& exit : Map().graph.exits)
        if (exit.from == view_.current && exit.direction == direction && exit.to != map::NoRoom) {
            const std::set<int> selected = add ? view_.selected : std::set<int>();
            Choose(exit.to, false);
            view_.selected.insert(selected.begin(), selected.end());
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
