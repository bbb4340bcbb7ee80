// How the map's widget is painted: the map, the gesture on it, and the overview in the corner.
#include "forms/ColourRoles.h"
#include "painting/MapMarks.h"
#include "panels/MapCanvas.h"

#include <QPainter>

#include <algorithm>

namespace zem {

namespace {

constexpr QSize OverviewSize(190, 140);
constexpr int OverviewMargin = 8;

} // namespace

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
    view.withRegionNames = false; // they would cover it
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

} // namespace zem
