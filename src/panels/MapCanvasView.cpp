// Which part of the map is seen, and what lies at a point of it.
#include "painting/MapMarks.h"
#include "panels/MapCanvas.h"

#include <QLineF>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>

namespace zem {

namespace {

constexpr double LeastZoom = .02;
constexpr double MostZoom = 4;
constexpr double FitMargin = 24;

} // namespace

void MapCanvas::LookAt(QRectF area, double most) {
    if (width() <= 0 || height() <= 0 || area.isEmpty())
        return;
    view_.zoom =
        std::clamp(std::min({width() / area.width(), height() / area.height(), most}), LeastZoom, MostZoom);
    origin_ = area.center() - QPointF(width(), height()) / 2 / view_.zoom;
    emit ZoomChanged(view_.zoom);
    update();
}

/// Shows all of the map or, where names could not be read then, the part around the start.
void MapCanvas::ShowFirst() {
    constexpr double Readable = .7;
    FitAll();
    const int start = Map().graph.start;
    if (view_.zoom >= ZoomOfNames || start == map::NoRoom)
        return;
    LookAt(ToQt(Map().rooms[static_cast<std::size_t>(start)].Box()), Readable);
}

void MapCanvas::FitAll() {
    if (HasMap())
        LookAt(ToQt(Map().Bounds().Grown(FitMargin)), 1);
}

void MapCanvas::FitSelection() {
    if (!HasMap() || view_.selected.empty())
        return FitAll();
    QRectF area;
    for (const int room : view_.selected)
        area |= ToQt(Map().rooms[static_cast<std::size_t>(room)].Box().Grown(60));
    LookAt(area, 1.5);
}

void MapCanvas::ZoomTo(double zoom) {
    const QPointF middle = ToMap(QPointF(width(), height()) / 2);
    view_.zoom = std::clamp(zoom, LeastZoom, MostZoom);
    origin_ = middle - QPointF(width(), height()) / 2 / view_.zoom;
    KeepInSight();
    emit ZoomChanged(view_.zoom);
    update();
}

void MapCanvas::Pan(QPointF by) {
    origin_ -= by / view_.zoom;
    KeepInSight();
    update();
}

/// A map that is pushed off the screen is hard to find again.
void MapCanvas::KeepInSight() {
    if (!HasMap())
        return;
    const QRectF bounds = ToQt(Map().Bounds());
    const QSizeF seen = QSizeF(size()) / view_.zoom;
    const double x = seen.width() * .8;
    const double y = seen.height() * .8;
    origin_.setX(std::clamp(origin_.x(), bounds.left() - x,
                            std::max(bounds.left() - x, bounds.right() - seen.width() + x)));
    origin_.setY(std::clamp(origin_.y(), bounds.top() - y,
                            std::max(bounds.top() - y, bounds.bottom() - seen.height() + y)));
}

void MapCanvas::BringIntoSight(int room) {
    const QRectF box = ToQt(Map().rooms[static_cast<std::size_t>(room)].Box().Grown(20));
    const QRectF seen(origin_, QSizeF(size()) / view_.zoom);
    if (seen.contains(box))
        return;
    origin_ = box.center() - QPointF(width(), height()) / 2 / view_.zoom;
    update();
}

void MapCanvas::resizeEvent(QResizeEvent* event) {
    // The middle stays in the middle.
    const QSize old = event->oldSize();
    if (old.isValid() && !old.isEmpty())
        origin_ += QPointF(old.width() - width(), old.height() - height()) / 2 / view_.zoom;
    QWidget::resizeEvent(event);
}

// ---- What lies where

map::Cell MapCanvas::CellAt(QPointF point) const {
    const QPointF on = ToMap(point);
    return routing::CellOf({on.x(), on.y()});
}

map::Cell MapCanvas::FreeCellNear(map::Cell wanted) const {
    for (int ring = 0;; ++ring)
        for (int y = -ring; y <= ring; ++y)
            for (int x = -ring; x <= ring; ++x) {
                const map::Cell cell = wanted + map::Cell{x, y};
                if (std::max(std::abs(x), std::abs(y)) == ring && router_->RoomAt(cell) == map::NoRoom)
                    return cell;
            }
}

int MapCanvas::RoomAt(QPoint point) const {
    if (!HasMap())
        return map::NoRoom;
    const int room = router_->RoomAt(CellAt(point));
    if (room == map::NoRoom)
        return room;
    const QPointF on = ToMap(point);
    const double slack = 2 / view_.zoom;
    const routing::Rect box = Map().rooms[static_cast<std::size_t>(room)].Box().Grown(slack);
    return box.Contains({on.x(), on.y()}) ? room : map::NoRoom;
}

/// The line to an unknown room whose hollow end is at a point; -1 for none.
int MapCanvas::HollowEndAt(QPointF point) const {
    constexpr double Reach = 8; // pixels
    if (!HasMap() || RoomAt(point.toPoint()) != map::NoRoom)
        return -1;
    const QPointF on = ToMap(point);
    const double reach = Reach / view_.zoom;
    for (const int line :
         router_->LinesNear({on.x() - reach, on.y() - reach, on.x() + reach, on.y() + reach})) {
        const routing::MapLine& drawn = Map().lines[static_cast<std::size_t>(line)];
        const QPointF end = FromMap(ToQt(drawn.path.End()));
        const QPointF begin = FromMap(ToQt(drawn.path.start));
        const double distance = QLineF(end, point).length();
        if (drawn.kind == routing::LineKind::Unknown && distance <= Reach &&
            distance < QLineF(begin, point).length())
            return line;
    }
    return -1;
}

/// The port at a point: no smaller than 24 pixels, but for the middle of the box, which moves the room.
MapCanvas::PortHit MapCanvas::PortAt(QPointF point) const {
    constexpr double Reach = 12; // pixels
    PortHit best;
    if (!HasMap())
        return best;
    const map::Cell cell = CellAt(point);
    double nearest = Reach;
    const QPointF on = ToMap(point);
    for (int y = -1; y <= 1; ++y)
        for (int x = -1; x <= 1; ++x) {
            const int room = router_->RoomAt(cell + map::Cell{x, y});
            if (room == map::NoRoom)
                continue;
            const routing::RoomBox& box = Map().rooms[static_cast<std::size_t>(room)];
            const routing::Rect rect = box.Box();
            const routing::Point middle = box.Middle();
            if (std::abs(on.x() - middle.x) < (rect.right - rect.left) / 3 &&
                std::abs(on.y() - middle.y) < (rect.bottom - rect.top) / 4)
                continue;
            for (routing::Port port = 0; port < map::DirectionCount; ++port) {
                const QPointF at = FromMap(ToQt(routing::PortPoint(box, port)));
                const double distance = std::hypot(at.x() - point.x(), at.y() - point.y());
                if (distance < nearest) {
                    nearest = distance;
                    best = {room, port};
                }
            }
        }
    return best;
}

int MapCanvas::LineAt(QPointF point) const {
    constexpr double Reach = 5; // pixels
    if (!HasMap())
        return -1;
    const QPointF on = ToMap(point);
    const double reach = Reach / view_.zoom;
    const routing::Rect area{on.x() - reach, on.y() - reach, on.x() + reach, on.y() + reach};
    const std::vector<int> lines = router_->LinesNear(area);
    return lines.empty() ? -1 : lines.front();
}

} // namespace zem
