#pragma once

#include "forms/Dialogs.h"
#include "map/MapEdits.h"
#include "painting/MapPainter.h"
#include "routing/Router.h"

#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QPoint>
#include <QPointF>
#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace zem {

/// The map as a widget: shows it, is moved and zoomed, and turns what mouse and keys do into wishes for the
/// game. It changes no game itself.
class MapCanvas : public QWidget {
    Q_OBJECT

public:
    /// @param dialogs  outlives the widget
    explicit MapCanvas(Dialogs& dialogs, QWidget* parent = nullptr);
    ~MapCanvas() override;

    /// Shows a map; what is selected and seen stays where rooms of these numbers are.
    /// @param details  for each room what stands in its box at a large size
    void Show(std::shared_ptr<routing::Router> router, const QStringList& details);

    /// Shows that the map of another game is on its way.
    void Clear();

    bool HasMap() const { return router_ != nullptr; }
    const routing::RoutedMap& Map() const { return router_->Map(); }

    int Current() const { return view_.current; }
    const std::set<int>& Selected() const { return view_.selected; }
    double Zoom() const { return view_.zoom; }

    /// Selects one room; map::NoRoom for none. It is brought into sight.
    void Select(int room);

    /// Where the player of a running game is; map::NoRoom for nowhere.
    void SetPlayer(int room);

    /// Shows what is wrong with each room, as far as that is known.
    void ShowRemarks(std::vector<RoomRemark> remarks);

    /// Whether the map is shown whole when it comes, and not where it was looked at before.
    void FitNext() { fitNext_ = true; }

    /// The middle of a room, and of one of its ports, in the widget.
    QPoint PointOfRoom(int room) const;
    QPoint PointOfPort(int room, routing::Port port) const;
    QPoint PointOfCell(map::Cell cell) const;

    /// What a screen reader says of a room: "north to Quay, east to Mole", and what is wrong with it.
    QString DescribeRoom(int room) const;

    /// The room at a point of the widget, or map::NoRoom.
    int RoomAt(QPoint point) const;

    /// The line that the author has clicked; -1 for none.
    int ChosenLine() const { return view_.line; }

    /// The cell, or that at a point of the widget, or the nearest one in which no room stands.
    map::Cell FreeCellAt(QPointF point) const { return FreeCellNear(CellAt(point)); }
    map::Cell FreeCellNear(map::Cell wanted) const;

    /// Whether rooms are on their way to their new places, which is soon over.
    bool IsMoving() const { return !view_.offsets.empty(); }

    /// Asks for the name of a new room where it will stand.
    void AskName(map::Cell cell, int from, map::Direction direction, bool oneWay);

public slots:
    void FitAll();
    void FitSelection();
    void ZoomTo(double zoom);
    void ZoomIn() { ZoomTo(view_.zoom * 1.25); }
    void ZoomOut() { ZoomTo(view_.zoom / 1.25); }
    void ShowOverview(bool isShown);

signals:
    void RoomChosen(int room);
    void RoomOpened(int room);
    void RoomsMoved(const std::vector<zem::map::Placing>& placings);
    /// @param from  the room from which the exit leads to the new one; map::NoRoom for a room by itself
    void RoomNamed(const QString& name, zem::map::Cell cell, int from, int direction, bool oneWay);
    /// @param back  the port at the other end; -1 for the one that suits
    void ConnectionDrawn(int from, int direction, int to, int back, bool oneWay);
    /// The room to which this exit leads shall be made; the game has none of its name.
    void UnknownRoomWanted(int exit);
    void DeleteWanted();
    void MenuWanted(QPoint globalPosition);
    void ZoomChanged(double zoom);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    enum class Gesture { None, Press, Pan, Rooms, Port, Band };
    struct PortHit {
        int room = map::NoRoom;
        routing::Port port = -1;
    };

    QString DescribeExits(int room) const;
    QString DescribeLine(int line) const;
    void BeginMotion(const routing::RoutedMap& before);
    int HollowEndAt(QPointF point) const;
    QPointF ToMap(QPointF point) const { return point / view_.zoom + origin_; }
    QPointF FromMap(QPointF point) const { return (point - origin_) * view_.zoom; }
    map::Cell CellAt(QPointF point) const;
    PortHit PortAt(QPointF point) const;
    int LineAt(QPointF point) const;
    void Hover(QPointF point);
    void BeginGesture(QPointF point);
    void DragRooms(QPointF point);
    void TakeBackDrag();
    void EndPort(QPointF point, bool oneWay);
    void EndBand();
    void EndGesture();
    void GiveUpGesture();
    void Choose(int room, bool add);
    void ShowFirst();
    void Move(const std::vector<routing::Router::Move>& moves);
    void LookAt(QRectF area, double most);
    void BringIntoSight(int room);
    void Pan(QPointF by);
    void KeepInSight();
    void SeeWholeCurves();
    bool WalkOrDraw(QKeyEvent& event);
    void Walk(map::Direction direction, bool add);
    void DrawByKey(map::Direction direction);
    void MoveByKey(map::Direction direction);
    void FindByTyping(const QString& text);
    void PaintGesture(QPainter& painter);
    void PaintOverview(QPainter& painter);
    void DrawOverview();
    QRect OverviewRect() const;
    bool IsOverviewSeen() const;
    void EndName(bool isTaken);
    void EndWhatIsOfOtherRooms(const routing::RoutedMap& before);

    Dialogs& dialogs_;
    std::shared_ptr<routing::Router> router_;
    std::unique_ptr<MapPainter> painter_;
    MapView view_;
    QPointF origin_; // the point of the map at the widget's corner
    bool fitNext_ = true;

    Gesture gesture_ = Gesture::None;
    QPointF pressed_;
    QPointF last_;
    PortHit port_;
    int pressedRoom_ = map::NoRoom;
    int pressedEnd_ = -1;              // the line to an unknown room at whose end the mouse was pressed
    std::vector<map::Placing> before_; // of the rooms that are dragged

    QVariantAnimation motion_; // from 1 to 0: how far rooms still are from their new places

    bool isOverviewShown_ = true;
    QImage overview_;
    QString typed_;
    QElapsedTimer sinceTyped_;

    struct NewRoom {
        map::Cell cell;
        int from = map::NoRoom;
        map::Direction direction = 0;
        bool oneWay = false;
    };
    NewRoom newRoom_;
    QPointer<QLineEdit> nameBox_;
};

} // namespace zem
