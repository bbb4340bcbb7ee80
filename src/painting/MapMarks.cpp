#include "painting/MapMarks.h"

#include <QPainter>
#include <QPolygonF>

namespace zem {

using routing::Point;

QPointF ToQt(Point point) {
    return {point.x, point.y};
}

QRectF ToQt(const routing::Rect& rect) {
    return {QPointF(rect.left, rect.top), QPointF(rect.right, rect.bottom)};
}

QPainterPath ToQt(const routing::Path& path) {
    QPainterPath drawn(ToQt(path.start));
    for (const routing::Piece& piece : path.pieces)
        if (piece.isCurve)
            drawn.cubicTo(ToQt(piece.handle1), ToQt(piece.handle2), ToQt(piece.end));
        else
            drawn.lineTo(ToQt(piece.end));
    return drawn;
}

void DrawArrowHead(QPainter& painter, routing::PointOnPath tip) {
    constexpr double Long = 9;
    constexpr double Half = 4;
    const Point back = tip.point - Long * tip.direction;
    const Point across{-tip.direction.y, tip.direction.x};
    painter.drawPolygon(QPolygonF({ToQt(tip.point), ToQt(back + Half * across), ToQt(back - Half * across)}));
}

void DrawTick(QPainter& painter, routing::PointOnPath at) {
    constexpr double Half = 4;
    const Point across{-at.direction.y, at.direction.x};
    painter.drawLine(ToQt(at.point + Half * across), ToQt(at.point - Half * across));
}

void DrawDiamond(QPainter& painter, Point middle) {
    constexpr double Half = 5;
    painter.drawPolygon(QPolygonF({QPointF(middle.x - Half, middle.y), QPointF(middle.x, middle.y - Half),
                                   QPointF(middle.x + Half, middle.y), QPointF(middle.x, middle.y + Half)}));
}

void DrawHollowEnd(QPainter& painter, Point middle) {
    constexpr double Radius = 4.5;
    painter.drawEllipse(ToQt(middle), Radius, Radius);
}

void DrawDoor(QPainter& painter, Point edge) {
    constexpr double Wide = 8;
    constexpr double High = 9;
    QPainterPath door;
    door.moveTo(edge.x - Wide / 2, edge.y);
    door.lineTo(edge.x - Wide / 2, edge.y - High + Wide / 2);
    door.arcTo(edge.x - Wide / 2, edge.y - High, Wide, Wide, 180, -180);
    door.lineTo(edge.x + Wide / 2, edge.y);
    door.closeSubpath();
    painter.drawPath(door);
}

void DrawFlag(QPainter& painter, Point foot) {
    painter.drawLine(QPointF(foot.x, foot.y), QPointF(foot.x, foot.y - 11));
    painter.drawPolygon(QPolygonF(
        {QPointF(foot.x, foot.y - 11), QPointF(foot.x + 8, foot.y - 8.5), QPointF(foot.x, foot.y - 6)}));
}

} // namespace zem
