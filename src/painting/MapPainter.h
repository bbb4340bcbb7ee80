#pragma once

#include "painting/Islands.h"
#include "painting/Regions.h"
#include "painting/RoomRemark.h"
#include "routing/RoutedMap.h"

#include <QFont>
#include <QPainterPath>
#include <QPalette>
#include <QRectF>
#include <QStringList>

#include <map>
#include <set>
#include <vector>

class QPainter;

namespace zem {

/// What is shown of a map at the moment; for a picture all but the first three stay as they are.
struct MapView {
    QRectF visible;  // in the units of the map
    double zoom = 1; // device-independent pixels for each unit
    QPalette palette;
    std::set<int> selected;
    int current = map::NoRoom; // the room that the keys work on: it shows its ports
    int hovered = map::NoRoom; // the room under the mouse: its ports show, too
    int hoveredPort = -1;      // of that room
    int player = map::NoRoom;  // where the player of a running game is
    int line = -1;             // the connection that is selected
    bool hasFocus = false;
    bool withRegionNames = true;            // where the rooms are too small for theirs
    std::map<int, QPointF> offsets;         // of rooms on their way: how far they still are from their places
    std::vector<RoomRemark> remarks;        // by room; rooms behind the end have none
    std::vector<routing::Path> wholeCurves; // of stubs whose other end is looked for
};

/// Paints a map: rooms, lines and marks, with as much detail as the zoom has room for.
class MapPainter {
public:
    /// @param details  for each room what stands in its box when there is room for it; may be empty
    explicit MapPainter(const routing::RoutedMap& map, QStringList details = {});

    /// The painter's units are those of the map, its ground is painted already.
    void Paint(QPainter& painter, const MapView& view) const;

    /// These lines of the map have changed, and rooms were moved with them.
    void Update(const std::vector<int>& lines);

private:
    struct Line {
        QPainterPath path; // with the far piece of a stub
        QRectF bounds;
        std::vector<routing::Segment> segments;
        std::vector<routing::Segment> far;
    };

    void Prepare(std::size_t line);
    void FindOutlines() { outlines_ = IslandOutlines(*map_); }
    void PaintOutlines(QPainter& painter, const MapView& view) const;
    void PaintRegions(QPainter& painter, const MapView& view) const;
    void PaintRegionNames(QPainter& painter, const MapView& view) const;
    void PaintLines(QPainter& painter, const MapView& view) const;
    void PaintLinesFromAfar(QPainter& painter, const MapView& view, const std::vector<int>& lines) const;
    void PaintMarks(QPainter& painter, const MapView& view, int line) const;
    void PaintLabels(QPainter& painter, const MapView& view) const;
    void PaintRooms(QPainter& painter, const MapView& view) const;
    void PaintRoomsFromAfar(QPainter& painter, const MapView& view) const;
    void PaintRoom(QPainter& painter, const MapView& view, int room) const;
    void PaintPorts(QPainter& painter, const MapView& view, int room) const;
    void PaintRemark(QPainter& painter, const MapView& view, int room, const QRectF& box,
                     double corner) const;
    void PaintName(QPainter& painter, const MapView& view, int room, const QRectF& box) const;
    static void PaintLongName(QPainter& painter, const QString& name, const QFont& font,
                              const QRectF& inside);
    bool IsMoving(const MapView& view, const routing::MapLine& line) const {
        return view.offsets.contains(line.from.room) || view.offsets.contains(line.to.room);
    }
    QRectF BoxOf(const MapView& view, int room) const;
    bool IsSelected(const MapView& view, int room) const { return view.selected.contains(room); }

    const routing::RoutedMap* map_;
    QStringList details_;
    QStringList names_;
    MapRegions regions_;
    QVector<QLineF> outlines_; // of islands
    std::vector<Line> lines_;
    QFont font_;
    QFont smallFont_;
    QFont smallestFont_; // of the boxes of docked rooms
};

/// Below this zoom rooms are filled boxes, below the other they have no names, above the third details.
inline constexpr double ZoomOfBoxes = .25;
inline constexpr double ZoomOfNames = .4;
inline constexpr double ZoomOfDetails = 1.2;

} // namespace zem
