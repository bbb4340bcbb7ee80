#include "panels/MapCanvas.h"

#include "forms/StorableInput.h"
#include "forms/ToolTip.h"
#include "map/KnownRooms.h"
#include "painting/MapMarks.h"
#include "panels/MapAccessible.h"
#include "qt/QtText.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int MotionMilliseconds = 150;
constexpr std::size_t MostMoving = 500; // rooms; where more move it is another map

QString DirectionWord(int direction) {
    return QLatin1String(map::WordOf(direction));
}

/// Where an exit leads: " to Quay", " runs a script, if has key".
QString WhereTo(const map::Exit& exit) {
    QString words =
        exit.target.empty() ? QStringLiteral(" runs a script") : QStringLiteral(" to ") + ToQt(exit.target);
    if (!exit.condition.empty())
        words += QStringLiteral(" (if %1)").arg(ToQt(exit.condition));
    return words;
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
    motion_.setStartValue(1.0);
    motion_.setEndValue(0.0);
    motion_.setDuration(MotionMilliseconds);
}

MapCanvas::~MapCanvas() = default;

void MapCanvas::Show(std::shared_ptr<routing::Router> router, const QStringList& details) {
    const std::shared_ptr<routing::Router> before = std::exchange(router_, std::move(router));
    if (before != nullptr)
        EndWhatIsOfOtherRooms(before->Map());
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
    motion_.stop();
    view_.offsets.clear();
    if (before != nullptr && isVisible())
        BeginMotion(before->Map());
    MapAccessibilityChanged(*this);
    update();
}

/// What has begun at a room or a line ends when these may be others in the new map.
void MapCanvas::EndWhatIsOfOtherRooms(const routing::RoutedMap& before) {
    if (gesture_ == Gesture::Rooms || gesture_ == Gesture::Port || gesture_ == Gesture::Press)
        EndGesture();
    const auto from = static_cast<std::size_t>(newRoom_.from);
    const bool isSame = newRoom_.from == map::NoRoom ||
                        (from < Map().rooms.size() && Map().graph.names[from] == before.graph.names[from]);
    if (!isSame)
        EndName(false);
}

/// Lets rooms that stand elsewhere now glide to their places, so that the author's eye can follow; not where
/// the desktop wants no motion.
void MapCanvas::BeginMotion(const routing::RoutedMap& before) {
    if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) <= 0)
        return;
    std::map<int, QPointF> ways;
    const std::vector<int> known = map::KnownRooms(before.graph, Map().graph);
    for (std::size_t room = 0; room < known.size(); ++room) {
        if (known[room] == map::NoRoom)
            continue;
        const routing::RoomBox& old = before.rooms[static_cast<std::size_t>(known[room])];
        if (!(old.cell == Map().rooms[room].cell))
            ways[static_cast<int>(room)] = ToQt(old.Middle() - Map().rooms[room].Middle());
    }
    if (ways.empty() || ways.size() > MostMoving)
        return;
    view_.offsets = ways;
    motion_.disconnect(this);
    connect(&motion_, &QVariantAnimation::valueChanged, this, [this, ways](const QVariant& left) {
        view_.offsets.clear();
        for (const auto& [room, way] : ways)
            if (left.toDouble() > 0)
                view_.offsets[room] = left.toDouble() * way;
        update();
    });
    motion_.start();
}

void MapCanvas::Clear() {
    EndName(false);
    EndGesture();
    motion_.stop();
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
                DirectionWord(exit.direction) + WhereTo(exit) +
                (exit.to == map::NoRoom && !exit.scripted ? QStringLiteral(", an unknown room") : QString()));
    for (const map::Tie& tie : graph.ties)
        if (tie.from == room)
            exits.append((tie.out ? QStringLiteral("out to ") : QStringLiteral("place ")) +
                         ToQt(graph.names[static_cast<std::size_t>(tie.to)]));
    return exits.isEmpty() ? QStringLiteral("no exits") : exits.join(QLatin1String(", "));
}

QString MapCanvas::DescribeLine(int line) const {
    const routing::MapLine& shown = Map().lines[static_cast<std::size_t>(line)];
    if (shown.IsTie() || shown.from.exit < 0)
        return {};
    const map::Exit& exit = Map().graph.exits[static_cast<std::size_t>(shown.from.exit)];
    const bool isUnknown = exit.to == map::NoRoom && !exit.scripted;
    return ToQt(Map().graph.names[static_cast<std::size_t>(exit.from)]) + u' ' +
           DirectionWord(exit.direction) + WhereTo(exit) +
           (isUnknown ? QStringLiteral(": there is no such room; click the end of the line to make it")
                      : QString());
}

bool MapCanvas::event(QEvent* event) {
    // On the map this selects all rooms, as it selects all of a text in a box; elsewhere it is a command of
    // the window.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->keyCombination() == (Qt::CTRL | Qt::Key_A)) {
        event->accept();
        return true;
    }
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int room = RoomAt(help->pos());
    const int line = room == map::NoRoom ? LineAt(help->pos()) : -1;
    const QString text = room != map::NoRoom ? ToQt(Map().graph.names[static_cast<std::size_t>(room)]) +
                                                   QStringLiteral(": ") + DescribeRoom(room)
                         : line >= 0 ? DescribeLine(line)
                                     : QString();
    QToolTip::showText(help->globalPos(), ToolTipOf(text), this);
    return true;
}

// ---- What is selected

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
