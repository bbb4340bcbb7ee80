#pragma once

#include "routing/RoutedMap.h"

#include <QPainterPath>
#include <QPointF>

class QPainter;

/// The small signs of the map, drawn with the painter's pen and brush in the units of the map.
namespace zem {

QPointF ToQt(routing::Point point);
QRectF ToQt(const routing::Rect& rect);
QPainterPath ToQt(const routing::Path& path);

/// A head that points in the direction, its tip at the point.
void DrawArrowHead(QPainter& painter, routing::PointOnPath tip);

/// A short stroke across a line.
void DrawTick(QPainter& painter, routing::PointOnPath at);

/// The sign of a script.
void DrawDiamond(QPainter& painter, routing::Point middle);

/// The end of a line that leads to no room.
void DrawHollowEnd(QPainter& painter, routing::Point middle);

/// The sign of "out" at the lower edge of a box.
void DrawDoor(QPainter& painter, routing::Point edge);

/// The sign of the room in which the game begins; the point is the foot of its pole.
void DrawFlag(QPainter& painter, routing::Point foot);

} // namespace zem
