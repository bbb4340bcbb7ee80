#include "panels/MapCanvas.h"

#include "forms/ColourRoles.h"
#include "forms/StorableInput.h"
#include "forms/ToolTip.h"
#include "painting/MapMarks.h"
#include "panels/MapAccessible.h"
#include "qt/QtText.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace zem {

namespace {

constexpr double LeastZoom = .02;
constexpr double MostZoom = 4;
constexpr double FitMargin = 24;
constexpr QSize OverviewSize(190, 140);
constexpr int OverviewMargin = 8;

QString DirectionWord(int direction) {
    return QLatin1String(map::WordOf(direction));
}

} // namespace

MapCanvas::MapCanvas(Dialogs& dialogs, QWidget* parent) : QWidget(parent), dialogs_(dialogs) {
    InstallMapAccessibility(); // before anything about the map is announced
    setObjectName(QStringLiteral("mapCanvas"));
    setAccessibleName(QStringLiteral("Map"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(200, 150);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

MapCanvas::~MapCanvas() = default;

void MapCanvas::Show(std::shared_ptr<routing::Router> router, const QStringList& details) {
    if (gesture_ == Gesture::Rooms)
        EndGesture(); // the rooms that are dragged may be others now
    router_ = std::move(router);
    painter_ = std::make_unique<MapPainter>(router_->Map(), details);
    const int rooms = static_cast<int>(Map().rooms.size());
    view_.selected.erase(view_.selected.lower_bound(rooms), view_.selected.end());
    if (view_.current >= rooms)
        view_.current = map::NoRoom;
    view_.hovered = map::NoRoom;
    view_.line = -1;
    overview_ = {};
    SeeWholeCurves();
    if (fitNext_ && rooms > 0) {
        fitNext_ = false;
        ShowFirst();
    }
    MapAccessibilityChanged(*this);
    update();
}

void MapCanvas::Clear() {
    EndName(false);
    EndGesture();
    router_ = nullptr;
    painter_ = nullptr;
    view_ = {};
    overview_ = {};
    fitNext_ = true;
    MapAccessibilityChanged(*this);
    update();
}

QPoint MapCanvas::PointOfRoom(int room) const {
    return FromMap(ToQt(Map().rooms[static_cast<std::size_t>(room)].Middle())).toPoint();
}

QPoint MapCanvas::PointOfPort(int room, routing::Port port) const {
    return FromMap(ToQt(routing::PortPoint(Map().rooms[static_cast<std::size_t>(room)], port))).toPoint();
}

QPoint MapCanvas::PointOfCell(map::Cell cell) const {
    return FromMap(QPointF(cell.x * routing::CellWidth, cell.y * routing::CellHeight)).toPoint();
}

QString MapCanvas::DescribeRoom(int room) const {
    const auto index = static_cast<std::size_t>(room);
    const QString words = index < view_.remarks.size() ? view_.remarks[index].words : QString();
    return words.isEmpty() ? DescribeExits(room) : DescribeExits(room) + QLatin1Char('\n') + words;
}

QString MapCanvas::DescribeExits(int room) const {
    QStringList exits;
    const map::MapGraph& graph = Map().graph;
    for (const map::Exit& exit : graph.exits)
        if (exit.from == room)
            exits.append(
                DirectionWord(exit.direction) +
                (exit.target.empty() ? QStringLiteral(" runs a script")
                                     : QStringLiteral(" to ") + ToQt(exit.target)) +
                (exit.to == map::NoRoom && !exit.scripted ? QStringLiteral(", an unknown room") : QString()));
    for (const map::Tie& tie : graph.ties)
        if (tie.from == room)
            exits.append((tie.out ? QStringLiteral("out to ") : QStringLiteral("place ")) +
                         ToQt(graph.names[static_cast<std::size_t>(tie.to)]));
    return exits.isEmpty() ? QStringLiteral("no exits") : exits.join(QLatin1String(", "));
}

// ---- What is seen

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

void MapCanvas::Select(int room) {
    if (!HasMap() || room >= static_cast<int>(Map().rooms.size()) ||
        (room == view_.current && view_.selected.size() <= 1))
        return;
    view_.current = room;
    view_.selected.clear();
    if (room != map::NoRoom) {
        view_.selected.insert(room);
        BringIntoSight(room);
    }
    view_.line = -1;
    SeeWholeCurves();
    update();
}

void MapCanvas::SetPlayer(int room) {
    view_.player = room;
    update();
}

void MapCanvas::ShowRemarks(std::vector<RoomRemark> remarks) {
    view_.remarks = std::move(remarks);
    update();
}

/// Chooses a room as the author does: the room list is told.
void MapCanvas::Choose(int room, bool add) {
    if (add && view_.selected.contains(room)) {
        view_.selected.erase(room);
        view_.current = view_.selected.empty() ? map::NoRoom : *view_.selected.begin();
    } else {
        if (!add)
            view_.selected.clear();
        view_.selected.insert(room);
        view_.current = room;
    }
    view_.line = -1;
    SeeWholeCurves();
    update();
    if (view_.current != map::NoRoom) {
        emit RoomChosen(view_.current);
        RoomGotFocus(*this, view_.current);
    }
}

/// Shows where the stubs of the current room and of the one under the mouse lead to.
void MapCanvas::SeeWholeCurves() {
    view_.wholeCurves.clear();
    if (!HasMap() || (view_.current == map::NoRoom && view_.hovered == map::NoRoom))
        return;
    for (const routing::MapLine& line : Map().lines) {
        const auto ends = [&](int room) {
            return room != map::NoRoom && (line.from.room == room || line.to.room == room);
        };
        if (line.shape == routing::LineShape::Stub && (ends(view_.current) || ends(view_.hovered)))
            view_.wholeCurves.push_back(router_->WholeCurve(line));
    }
}

// ---- What lies where

map::Cell MapCanvas::CellAt(QPointF point) const {
    const QPointF on = ToMap(point);
    return routing::CellOf({on.x(), on.y()});
}

map::Cell MapCanvas::FreeCellAt(QPointF point) const {
    const map::Cell wanted = CellAt(point);
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

bool MapCanvas::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const int room = RoomAt(help->pos());
        const int line = room == map::NoRoom ? LineAt(help->pos()) : -1;
        QString text;
        if (room != map::NoRoom)
            text = ToQt(Map().graph.names[static_cast<std::size_t>(room)]) + QStringLiteral(": ") +
                   DescribeRoom(room);
        else if (line >= 0 && !Map().lines[static_cast<std::size_t>(line)].IsTie()) {
            const routing::MapLine& shown = Map().lines[static_cast<std::size_t>(line)];
            if (shown.from.exit >= 0) {
                const map::Exit& exit = Map().graph.exits[static_cast<std::size_t>(shown.from.exit)];
                text = ToQt(Map().graph.names[static_cast<std::size_t>(exit.from)]) + u' ' +
                       DirectionWord(exit.direction) +
                       (exit.target.empty() ? QStringLiteral(": runs a script")
                                            : QStringLiteral(" to ") + ToQt(exit.target)) +
                       (exit.to == map::NoRoom && !exit.scripted ? QStringLiteral(" (there is no such room)")
                                                                 : QString());
            }
        }
        QToolTip::showText(help->globalPos(), ToolTipOf(text), this);
        return true;
    }
    return QWidget::event(event);
}

// ---- Painting

void MapCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ColourOf(ColourRole::MapGround, palette()));
    if (!HasMap() || Map().rooms.empty()) {
        painter.setPen(ColourOf(ColourRole::SecondaryText, palette()));
        painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
                         HasMap()
                             ? QStringLiteral("No rooms yet. Press Insert, or right-click, to make one here.")
                             : QStringLiteral("The map is being laid out ..."));
        return;
    }
    view_.palette = palette();
    view_.visible = QRectF(origin_, QSizeF(size()) / view_.zoom);
    view_.hasFocus = hasFocus();
    painter.save();
    painter.scale(view_.zoom, view_.zoom);
    painter.translate(-origin_);
    painter_->Paint(painter, view_);
    PaintGesture(painter);
    painter.restore();
    PaintOverview(painter);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(ColourOf(ColourRole::Accent, palette()), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void MapCanvas::PaintGesture(QPainter& painter) {
    const QColor accent = ColourOf(ColourRole::Accent, palette());
    if (gesture_ == Gesture::Band) {
        painter.setPen(QPen(accent, 1 / view_.zoom, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(ToMap(pressed_), ToMap(last_)).normalized());
    }
    if (gesture_ != Gesture::Port)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(accent, 2));
    painter.setBrush(Qt::NoBrush);
    const routing::RoomBox& box = Map().rooms[static_cast<std::size_t>(port_.room)];
    painter.drawLine(ToQt(routing::PortPoint(box, port_.port)), ToMap(last_));
    if (PortAt(last_).room == map::NoRoom && router_->RoomAt(CellAt(last_)) == map::NoRoom) {
        const map::Cell cell = CellAt(last_);
        painter.setPen(QPen(accent, 1.5, Qt::DashLine));
        painter.drawRoundedRect(ToQt(routing::RoomBox{cell, false}.Box()), 5, 5);
    }
}

QRect MapCanvas::OverviewRect() const {
    return {width() - OverviewSize.width() - OverviewMargin,
            height() - OverviewSize.height() - OverviewMargin, OverviewSize.width(), OverviewSize.height()};
}

bool MapCanvas::IsOverviewSeen() const {
    return isOverviewShown_ && !view_.visible.contains(ToQt(Map().Bounds())) &&
           width() >= 2 * OverviewSize.width() && height() >= 2 * OverviewSize.height();
}

void MapCanvas::DrawOverview() {
    const double scale = devicePixelRatioF();
    overview_ = QImage(OverviewSize * scale, QImage::Format_RGB32);
    overview_.setDevicePixelRatio(scale);
    overview_.fill(ColourOf(ColourRole::Pane, palette()));
    const QRectF bounds = ToQt(Map().Bounds());
    MapView view;
    view.palette = palette();
    view.visible = bounds;
    view.zoom =
        std::min({OverviewSize.width() / bounds.width(), OverviewSize.height() / bounds.height(), .2});
    QPainter painter(&overview_);
    painter.translate(QPointF(OverviewSize.width(), OverviewSize.height()) / 2);
    painter.scale(view.zoom, view.zoom);
    painter.translate(-bounds.center());
    painter_->Paint(painter, view);
}

/// A small picture of all with a frame around what is seen; only where not all is seen.
void MapCanvas::PaintOverview(QPainter& painter) {
    const QRectF bounds = ToQt(Map().Bounds());
    if (!IsOverviewSeen())
        return;
    if (overview_.isNull())
        DrawOverview();
    const QRect place = OverviewRect();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.drawImage(place.topLeft(), overview_);
    painter.setPen(ColourOf(ColourRole::Hairline, palette()));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place);
    const double zoom =
        std::min({OverviewSize.width() / bounds.width(), OverviewSize.height() / bounds.height(), .2});
    const QRectF seen((view_.visible.topLeft() - bounds.center()) * zoom + QRectF(place).center(),
                      view_.visible.size() * zoom);
    painter.setPen(QPen(ColourOf(ColourRole::Accent, palette()), 2));
    painter.drawRect(seen.intersected(place));
}

void MapCanvas::ShowOverview(bool isShown) {
    isOverviewShown_ = isShown;
    update();
}

void MapCanvas::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
    if (view_.current != map::NoRoom)
        RoomGotFocus(*this, view_.current);
}

void MapCanvas::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

// ---- The name of a new room

void MapCanvas::AskName(map::Cell cell, int from, map::Direction direction, bool oneWay) {
    EndName(false);
    newRoom_ = {cell, from, direction, oneWay};
    nameBox_ = new QLineEdit(this);
    nameBox_->setObjectName(QStringLiteral("txtNewRoom"));
    nameBox_->setAccessibleName(QStringLiteral("Name of the new room"));
    nameBox_->setPlaceholderText(QStringLiteral("Name"));
    const QSize size(160, nameBox_->sizeHint().height());
    QRect place(PointOfCell(cell) - QPoint(size.width() / 2, size.height() / 2), size);
    place.moveLeft(std::clamp(place.left(), 0, std::max(0, width() - size.width())));
    place.moveTop(std::clamp(place.top(), 0, std::max(0, height() - size.height())));
    nameBox_->setGeometry(place);
    RefuseUnstorableText(*nameBox_, dialogs_);
    nameBox_->installEventFilter(this);
    nameBox_->show();
    nameBox_->setFocus();
}

/// The keys that end the box must not reach the map.
bool MapCanvas::eventFilter(QObject* watched, QEvent* event) {
    if (watched != nameBox_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isTaken = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!isTaken && key != Qt::Key_Escape)
        return false;
    EndName(isTaken);
    return true;
}

void MapCanvas::EndName(bool isTaken) {
    if (nameBox_ == nullptr)
        return;
    const QString name = nameBox_->text().trimmed();
    QLineEdit* box = nameBox_;
    nameBox_ = nullptr; // closing it must not end it twice
    box->setObjectName({});
    box->hide();
    box->deleteLater();
    setFocus();
    if (isTaken && !name.isEmpty())
        emit RoomNamed(name, newRoom_.cell, newRoom_.from, newRoom_.direction, newRoom_.oneWay);
}

} // namespace zem
