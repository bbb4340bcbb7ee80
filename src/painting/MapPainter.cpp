#include "painting/MapPainter.h"

#include "forms/ColourRoles.h"
#include "painting/MapMarks.h"
#include "qt/QtText.h"

#include <QFontMetricsF>
#include <QLineF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace zem {

namespace {

using routing::LineKind;
using routing::LineShape;
using routing::MapLine;
using routing::RoomBox;

constexpr double LineWidth = 1.6;
constexpr double TieWidth = 1.2;
constexpr double Corner = 5;        // of a box
constexpr double ShortestTick = 60; // a tick on a shorter line reads as an arrow
using routing::DiamondFromPort;
constexpr double PortRadius = 4;
constexpr double RegionMargin = 6;

bool IsDashed(const MapLine& line) {
    return line.IsTie() || line.kind == LineKind::Goto || (line.oneWay && line.from.isScript);
}

ColourRole RoleOf(const MapLine& line) {
    if (line.kind == LineKind::Unknown)
        return ColourRole::Warning;
    return line.IsTie() ? ColourRole::Place : ColourRole::Exit;
}

QPen PenOf(const MapLine& line, const QPalette& palette) {
    QPen pen(ColourOf(RoleOf(line), palette), line.IsTie() ? TieWidth : LineWidth);
    pen.setCapStyle(Qt::FlatCap);
    if (IsDashed(line))
        pen.setDashPattern({4, 3});
    return pen;
}

routing::PointOnPath Backwards(routing::PointOnPath at) {
    return {at.point, -1 * at.direction};
}

/// Whether a place's prefix says that it is above or below: -1, 1, else 0.
int LevelOf(const std::string& words) {
    const QString prefix = ToQt(words).section(u';', 0, 0).toLower();
    const QStringList parts = prefix.split(u' ');
    if (words.find(';') == std::string::npos)
        return 0;
    return parts.contains(QLatin1String("up")) ? -1 : parts.contains(QLatin1String("down")) ? 1 : 0;
}

QRectF CellRect(const RoomBox& room) {
    const routing::Point middle = room.Middle();
    return {middle.x - routing::CellWidth / 2, middle.y - routing::CellHeight / 2, routing::CellWidth,
            routing::CellHeight};
}

} // namespace

MapPainter::MapPainter(const routing::RoutedMap& map, QStringList details)
    : map_(&map),
      details_(std::move(details)) {
    font_.setPixelSize(12);
    smallFont_.setPixelSize(10);
    smallestFont_.setPixelSize(9);
    for (const std::string& name : map.graph.names)
        names_.append(ToQt(name));
    regions_ = FindRegions(map);
    FindOutlines();
    lines_.resize(map.lines.size());
    for (std::size_t line = 0; line < lines_.size(); ++line)
        Prepare(line);
}

void MapPainter::Update(const std::vector<int>& lines) {
    for (const int line : lines)
        Prepare(static_cast<std::size_t>(line));
    FindOutlines();
}

void MapPainter::Prepare(std::size_t line) {
    const MapLine& routed = map_->lines[line];
    Line drawn;
    drawn.path = ToQt(routed.path);
    drawn.segments = routed.path.Flattened();
    if (!routed.farPath.IsEmpty()) {
        drawn.path.addPath(ToQt(routed.farPath));
        drawn.far = routed.farPath.Flattened();
    }
    drawn.bounds = drawn.path.controlPointRect().adjusted(-12, -12, 12, 12);
    lines_[line] = std::move(drawn);
}

void MapPainter::Paint(QPainter& painter, const MapView& view) const {
    painter.setRenderHint(QPainter::Antialiasing, view.zoom >= ZoomOfBoxes);
    PaintRegions(painter, view);
    PaintOutlines(painter, view);
    PaintLines(painter, view);
    painter.setRenderHint(QPainter::Antialiasing, view.zoom >= ZoomOfBoxes);
    if (view.zoom < ZoomOfBoxes)
        PaintRoomsFromAfar(painter, view);
    else
        PaintRooms(painter, view);
    if (view.zoom < ZoomOfNames && view.withRegionNames)
        PaintRegionNames(painter, view);
}

/// Around each island a thin line, at any zoom.
void MapPainter::PaintOutlines(QPainter& painter, const MapView& view) const {
    QVector<QLineF> visible;
    for (const QLineF& line : outlines_)
        if (QRectF(line.p1(), line.p2()).normalized().adjusted(-1, -1, 1, 1).intersects(view.visible))
            visible.append(line);
    QPen pen(ColourOf(ColourRole::Hairline, view.palette), 1);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawLines(visible);
}

void MapPainter::PaintRegions(QPainter& painter, const MapView& view) const {
    if (regions_.regions.empty())
        return;
    painter.setPen(Qt::NoPen);
    for (std::size_t room = 0; room < map_->rooms.size(); ++room) {
        const int region = regions_.regionOf[room];
        const QRectF cell =
            CellRect(map_->rooms[room]).adjusted(-RegionMargin, -RegionMargin, RegionMargin, RegionMargin);
        if (region < 0 || !cell.intersects(view.visible))
            continue;
        painter.setBrush(RegionColour(region, view.palette));
        if (view.zoom < ZoomOfBoxes)
            painter.drawRect(cell);
        else
            painter.drawRoundedRect(cell, 20, 20);
    }
    // Between the rooms of a line, so that a region has no holes.
    for (const MapLine& line : map_->lines) {
        if (line.shape != LineShape::Straight || line.to.room == map::NoRoom)
            continue;
        const int region = regions_.regionOf[static_cast<std::size_t>(line.from.room)];
        if (region < 0 || region != regions_.regionOf[static_cast<std::size_t>(line.to.room)])
            continue;
        const routing::Point from = map_->rooms[static_cast<std::size_t>(line.from.room)].Middle();
        const routing::Point to = map_->rooms[static_cast<std::size_t>(line.to.room)].Middle();
        const QRectF area = QRectF(ToQt(from), ToQt(to)).normalized().adjusted(-40, -40, 40, 40);
        if (!area.intersects(view.visible))
            continue;
        painter.setPen(
            QPen(RegionColour(region, view.palette), routing::CellHeight, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(ToQt(from), ToQt(to));
        painter.setPen(Qt::NoPen);
    }
}

void MapPainter::PaintRegionNames(QPainter& painter, const MapView& view) const {
    constexpr int Fewest = 8; // rooms of a region that is named
    painter.setPen(ColourOf(ColourRole::SecondaryText, view.palette));
    QFont font = font_;
    font.setPixelSize(std::max(1, static_cast<int>(12 / view.zoom)));
    font.setBold(true);
    painter.setFont(font);
    QColor paper = ColourOf(ColourRole::MapGround, view.palette);
    paper.setAlphaF(.7F);
    const double wide = 220 / view.zoom;
    const double high = 20 / view.zoom;
    std::vector<QRectF> taken;
    for (const MapRegions::Region& region : regions_.regions) {
        const QRectF place(region.middle.x - wide / 2, region.middle.y - high / 2, wide, high);
        const bool isFree = std::none_of(taken.begin(), taken.end(),
                                         [&](const QRectF& other) { return other.intersects(place); });
        if (region.size < Fewest || !isFree || !place.intersects(view.visible))
            continue;
        taken.push_back(place);
        const QRectF words = painter.boundingRect(place, Qt::AlignCenter, ToQt(region.name));
        painter.fillRect(words, paper); // rooms and lines below would make it hard to read
        painter.drawText(place, Qt::AlignCenter, ToQt(region.name));
    }
}

void MapPainter::PaintLines(QPainter& painter, const MapView& view) const {
    std::vector<int> visible;
    for (std::size_t line = 0; line < lines_.size(); ++line)
        if (lines_[line].bounds.intersects(view.visible) && !IsMoving(view, map_->lines[line]))
            visible.push_back(static_cast<int>(line));
    if (view.zoom < ZoomOfBoxes)
        return PaintLinesFromAfar(painter, view, visible);
    painter.setBrush(Qt::NoBrush);
    for (const int line : visible) {
        QPen pen = PenOf(map_->lines[static_cast<std::size_t>(line)], view.palette);
        if (line == view.line) {
            pen.setColor(ColourOf(ColourRole::Accent, view.palette));
            pen.setWidthF(LineWidth * 2);
        }
        painter.setPen(pen);
        const Line& drawn = lines_[static_cast<std::size_t>(line)];
        if (map_->lines[static_cast<std::size_t>(line)].shape == LineShape::Straight)
            painter.drawLine(ToQt(drawn.segments.front().a), ToQt(drawn.segments.back().b));
        else
            painter.drawPath(drawn.path);
    }
    for (const int line : visible)
        PaintMarks(painter, view, line);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ColourOf(ColourRole::Accent, view.palette), LineWidth, Qt::DashLine));
    for (const routing::Path& path : view.wholeCurves)
        painter.drawPath(ToQt(path));
    if (view.zoom >= ZoomOfNames)
        PaintLabels(painter, view);
}

void MapPainter::PaintLinesFromAfar(QPainter& painter, const MapView& view,
                                    const std::vector<int>& lines) const {
    QVector<QLineF> exits;
    QVector<QLineF> ties;
    for (const int line : lines) {
        const MapLine& drawn = map_->lines[static_cast<std::size_t>(line)];
        if (drawn.shape == LineShape::Stub)
            continue;
        QVector<QLineF>& list = drawn.IsTie() ? ties : exits;
        for (const routing::Segment& segment : lines_[static_cast<std::size_t>(line)].segments)
            list.append(QLineF(ToQt(segment.a), ToQt(segment.b)));
    }
    const auto draw = [&](const QVector<QLineF>& list, ColourRole role) {
        QPen pen(ColourOf(role, view.palette), 1);
        pen.setCosmetic(true);
        painter.setPen(pen);
        painter.drawLines(list);
    };
    draw(ties, ColourRole::Place);
    draw(exits, ColourRole::Exit);
}

void MapPainter::PaintMarks(QPainter& painter, const MapView& view, int line) const {
    const MapLine& drawn = map_->lines[static_cast<std::size_t>(line)];
    const std::vector<routing::Segment>& segments = lines_[static_cast<std::size_t>(line)].segments;
    const std::vector<routing::Segment>& far = lines_[static_cast<std::size_t>(line)].far;
    const double length = routing::LengthOf(segments);
    const QColor colour = ColourOf(RoleOf(drawn), view.palette);
    const QColor ground = ColourOf(ColourRole::MapGround, view.palette);
    painter.setPen(QPen(colour, LineWidth));
    painter.setBrush(colour);
    if (drawn.oneWay) {
        DrawArrowHead(painter, routing::Along(segments, length));
        if (length > ShortestTick && drawn.kind == LineKind::Exit)
            DrawTick(painter, routing::Along(segments, 5));
    }
    if (drawn.kind == LineKind::Out && drawn.from.port == routing::DoorPort)
        DrawDoor(painter, drawn.path.start);
    if (drawn.kind == LineKind::Place && length > ShortestTick)
        for (const routing::LineEnd* end : {&drawn.from, &drawn.to}) {
            const int level =
                end->exit < 0 ? 0 : LevelOf(map_->graph.ties[static_cast<std::size_t>(end->exit)].words);
            const routing::Point at = routing::Along(segments, length / 2).point;
            if (level != 0)
                DrawArrowHead(painter, {{at.x + 8, at.y + level * 4}, {0, static_cast<double>(level)}});
        }
    painter.setBrush(ground);
    if (drawn.kind == LineKind::Unknown)
        DrawHollowEnd(painter, drawn.path.End());
    if (drawn.from.isScript) {
        painter.setPen(QPen(ColourOf(ColourRole::Warning, view.palette), LineWidth));
        DrawDiamond(painter, routing::Along(segments, std::min(DiamondFromPort, length * .4)).point);
    }
    if (drawn.to.isScript) {
        painter.setPen(QPen(ColourOf(ColourRole::Warning, view.palette), LineWidth));
        const routing::PointOnPath at =
            far.empty() ? routing::Along(segments, length - std::min(DiamondFromPort, length * .4))
                        : routing::Along(far, DiamondFromPort);
        DrawDiamond(painter, Backwards(at).point);
    }
}

void MapPainter::PaintLabels(QPainter& painter, const MapView& view) const {
    painter.setFont(smallFont_);
    const QFontMetricsF metrics(smallFont_);
    for (const routing::StubLabel& label : map_->labels) {
        const QRectF place = ToQt(label.place);
        if (!place.intersects(view.visible))
            continue;
        const MapLine& line = map_->lines[static_cast<std::size_t>(label.line)];
        const routing::Path& path = label.far ? line.farPath : line.path;
        const Qt::Alignment side = label.isCondition               ? Qt::AlignHCenter
                                   : place.left() >= path.End().x  ? Qt::AlignLeft
                                   : place.right() <= path.End().x ? Qt::AlignRight
                                                                   : Qt::AlignHCenter;
        painter.setPen(ColourOf(
            line.kind == LineKind::Unknown ? ColourRole::Warning : ColourRole::SecondaryText, view.palette));
        painter.drawText(place, static_cast<int>(side | Qt::AlignVCenter),
                         metrics.elidedText(ToQt(label.text), Qt::ElideRight, place.width()));
    }
}

void MapPainter::PaintRoomsFromAfar(QPainter& painter, const MapView& view) const {
    QVector<QRectF> plain;
    for (std::size_t room = 0; room < map_->rooms.size(); ++room) {
        const QRectF box = ToQt(map_->rooms[room].Box());
        if (box.intersects(view.visible))
            plain.append(box);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColourOf(ColourRole::Frame, view.palette));
    painter.drawRects(plain);
    painter.setBrush(ColourOf(ColourRole::Accent, view.palette));
    // Marks that can be seen from any height.
    const double margin = 3 / view.zoom;
    for (const int room : {map_->graph.start, view.player})
        if (room != map::NoRoom && static_cast<std::size_t>(room) < map_->rooms.size())
            painter.drawRect(ToQt(map_->rooms[static_cast<std::size_t>(room)].Box().Grown(margin)));
    for (const int room : view.selected)
        painter.drawRect(ToQt(map_->rooms[static_cast<std::size_t>(room)].Box().Grown(margin / 2)));
}

void MapPainter::PaintRooms(QPainter& painter, const MapView& view) const {
    for (std::size_t room = 0; room < map_->rooms.size(); ++room)
        if (BoxOf(view, static_cast<int>(room)).adjusted(-8, -8, 8, 8).intersects(view.visible))
            PaintRoom(painter, view, static_cast<int>(room));
    for (const int room : {view.hovered, view.current})
        if (room != map::NoRoom && !view.offsets.contains(room))
            PaintPorts(painter, view, room);
}

/// Where the room is at the moment.
QRectF MapPainter::BoxOf(const MapView& view, int room) const {
    const QRectF box = ToQt(map_->rooms[static_cast<std::size_t>(room)].Box());
    const auto moving = view.offsets.find(room);
    return moving == view.offsets.end() ? box : box.translated(moving->second);
}

void MapPainter::PaintRoom(QPainter& painter, const MapView& view, int room) const {
    const RoomBox& shown = map_->rooms[static_cast<std::size_t>(room)];
    const QRectF box = BoxOf(view, room);
    const QColor accent = ColourOf(ColourRole::Accent, view.palette);
    const bool isStart = room == map_->graph.start;
    const bool isSelected = IsSelected(view, room);
    const double corner = shown.docked ? box.height() / 2 : Corner;
    QPen frame(ColourOf(shown.docked ? ColourRole::Place : ColourRole::Frame, view.palette), 1.1);
    if (isStart || isSelected)
        frame = QPen(accent, isSelected ? 2 : 2.4);
    painter.setPen(frame);
    // The selection of a palette may be strong, with light text: a tint of it leaves names readable.
    QColor fill = ColourOf(ColourRole::Room, view.palette);
    if (isSelected) {
        const QColor tint = accent;
        fill = QColor((fill.red() * 5 + tint.red()) / 6, (fill.green() * 5 + tint.green()) / 6,
                      (fill.blue() * 5 + tint.blue()) / 6);
    }
    painter.setBrush(fill);
    painter.drawRoundedRect(box, corner, corner);
    PaintRemark(painter, view, room, box, corner);
    if (room == view.current && view.hasFocus) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(accent, 2));
        painter.drawRoundedRect(box.adjusted(-4, -4, 4, 4), corner + 3, corner + 3);
    }
    if (room == view.player) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(ColourOf(ColourRole::True, view.palette));
        painter.drawEllipse(box.topLeft() + QPointF(8, 0), 5, 5);
    }
    if (view.zoom >= ZoomOfNames)
        PaintName(painter, view, room, box);
    if (isStart) {
        painter.setPen(QPen(accent, 1.4));
        painter.setBrush(accent);
        DrawFlag(painter, {box.right() - 11, box.top() + 3});
    }
}

void MapPainter::PaintRemark(QPainter& painter, const MapView& view, int room, const QRectF& box,
                             double corner) const {
    if (static_cast<std::size_t>(room) >= view.remarks.size())
        return;
    const RoomRemark& remark = view.remarks[static_cast<std::size_t>(room)];
    painter.setPen(Qt::NoPen);
    if (remark.isUnreachable) {
        QColor hatching = ColourOf(ColourRole::SecondaryText, view.palette);
        hatching.setAlphaF(.35F); // the name stands on it
        painter.setBrush(QBrush(hatching, Qt::BDiagPattern));
        painter.drawRoundedRect(box, corner, corner);
    }
    if (remark.isNeverEntered) {
        QPen dashes(ColourOf(ColourRole::Warning, view.palette), 2);
        dashes.setDashPattern({1.5, 1});
        painter.setPen(dashes);
        painter.drawLine(box.topLeft() + QPointF(3, 4), box.bottomLeft() + QPointF(3, -4));
        painter.setPen(Qt::NoPen);
    }
    if (remark.sign == RoomRemark::Sign::None)
        return;
    const bool isError = remark.sign == RoomRemark::Sign::Error;
    const QPointF middle = box.bottomLeft() + QPointF(8, 0);
    painter.setBrush(ColourOf(isError ? ColourRole::Error : ColourRole::Warning, view.palette));
    if (isError)
        painter.drawEllipse(middle, 5, 5);
    else
        painter.drawPolygon(
            QPolygonF({middle + QPointF(-6, 5), middle + QPointF(6, 5), middle + QPointF(0, -6)}));
}

/// The name, in two lines where it is too long for one, and what else there is room for.
void MapPainter::PaintName(QPainter& painter, const MapView& view, int room, const QRectF& box) const {
    const QString& name = names_[room];
    const bool isSmall = map_->rooms[static_cast<std::size_t>(room)].docked;
    const QString details =
        room < details_.size() && view.zoom >= ZoomOfDetails && !isSmall ? details_[room] : QString();
    painter.setPen(ColourOf(ColourRole::Text, view.palette));
    const QFont& font = isSmall ? smallFont_ : font_;
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    const QRectF inside = box.adjusted(4, 1, -4, -1);
    if (!details.isEmpty()) {
        painter.drawText(inside.adjusted(0, 0, 0, -13), Qt::AlignCenter,
                         metrics.elidedText(name, Qt::ElideRight, inside.width()));
        painter.setFont(smallFont_);
        painter.setPen(ColourOf(ColourRole::SecondaryText, view.palette));
        painter.drawText(inside.adjusted(0, 16, 0, 0), Qt::AlignCenter,
                         QFontMetricsF(smallFont_).elidedText(details, Qt::ElideRight, inside.width()));
        return;
    }
    if (metrics.horizontalAdvance(name) <= inside.width())
        painter.drawText(inside, Qt::AlignCenter, name);
    else
        PaintLongName(painter, name, isSmall ? smallestFont_ : smallFont_, inside);
}

void MapPainter::PaintLongName(QPainter& painter, const QString& name, const QFont& font,
                               const QRectF& inside) {
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    QTextLayout layout(name, font);
    layout.beginLayout();
    QTextLine first = layout.createLine();
    first.setLineWidth(inside.width());
    layout.endLayout();
    const auto elided = [&](const QString& text) {
        return metrics.elidedText(text.trimmed(), Qt::ElideRight, inside.width());
    };
    const QString two = elided(name.mid(first.textLength()));
    if (two.isEmpty())
        return painter.drawText(inside, Qt::AlignCenter, elided(name));
    const double half = inside.height() / 2;
    painter.drawText(inside.adjusted(0, 1, 0, -half), Qt::AlignCenter | Qt::TextDontClip,
                     elided(name.left(first.textLength())));
    painter.drawText(inside.adjusted(0, half, 0, -1), Qt::AlignCenter | Qt::TextDontClip, two);
}

void MapPainter::PaintPorts(QPainter& painter, const MapView& view, int room) const {
    const RoomBox& box = map_->rooms[static_cast<std::size_t>(room)];
    for (routing::Port port = 0; port < map::DirectionCount; ++port) {
        const bool isHovered = room == view.hovered && port == view.hoveredPort;
        const double radius = isHovered ? PortRadius * 1.8 : PortRadius;
        painter.setPen(QPen(ColourOf(ColourRole::Accent, view.palette), 1.6));
        painter.setBrush(ColourOf(isHovered ? ColourRole::Accent : ColourRole::Room, view.palette));
        painter.drawEllipse(ToQt(routing::PortPoint(box, port)), radius, radius);
    }
}

} // namespace zem
