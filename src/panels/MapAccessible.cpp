#include "panels/MapAccessible.h"

#include "panels/MapCanvas.h"
#include "qt/QtText.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <map>

namespace zem {

namespace {

/// One room of the map.
class RoomItem : public QAccessibleInterface {
public:
    RoomItem(MapCanvas& canvas, int room) : canvas_(&canvas), room_(room) {}

    bool isValid() const override {
        return canvas_ != nullptr && canvas_->HasMap() &&
               room_ < static_cast<int>(canvas_->Map().rooms.size());
    }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(canvas_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override {
        if (!isValid())
            return {};
        if (kind == QAccessible::Name)
            return ToQt(canvas_->Map().graph.names[static_cast<std::size_t>(room_)]);
        return kind == QAccessible::Description ? canvas_->DescribeRoom(room_) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        if (!isValid())
            return {};
        constexpr routing::Port NorthWest = 7;
        constexpr routing::Port SouthEast = 3;
        return {canvas_->mapToGlobal(canvas_->PointOfPort(room_, NorthWest)),
                canvas_->mapToGlobal(canvas_->PointOfPort(room_, SouthEast))};
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = state.selectable = true;
        state.invalid = !isValid();
        state.selected = isValid() && canvas_->Selected().contains(room_);
        state.focused = isValid() && canvas_->Current() == room_ && canvas_->hasFocus();
        return state;
    }
    int Room() const { return room_; }

private:
    QPointer<MapCanvas> canvas_;
    int room_;
};

/// The map with its rooms.
class MapItem : public QAccessibleWidget {
public:
    explicit MapItem(MapCanvas& canvas) : QAccessibleWidget(&canvas, QAccessible::List), canvas_(canvas) {}
    ~MapItem() override {
        for (const auto& [room, id] : items_)
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override {
        return canvas_.HasMap() ? static_cast<int>(canvas_.Map().rooms.size()) : 0;
    }
    QAccessibleInterface* child(int room) const override {
        if (room < 0 || room >= childCount())
            return nullptr;
        const auto [item, isNew] = items_.try_emplace(room, 0);
        if (isNew)
            item->second = QAccessible::registerAccessibleInterface(new RoomItem(canvas_, room));
        return QAccessible::accessibleInterface(item->second);
    }
    int indexOfChild(const QAccessibleInterface* item) const override {
        const auto* room = dynamic_cast<const RoomItem*>(item);
        return room == nullptr ? -1 : room->Room();
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        return child(canvas_.RoomAt(canvas_.mapFromGlobal(QPoint(x, y))));
    }
    QAccessibleInterface* focusChild() const override { return child(canvas_.Current()); }

private:
    MapCanvas& canvas_;
    mutable std::map<int, QAccessible::Id> items_; // of the rooms that were asked for
};

QAccessibleInterface* MakeItem(const QString& className, QObject* object) {
    if (className != QLatin1String(MapCanvas::staticMetaObject.className()))
        return nullptr;
    auto* canvas = qobject_cast<MapCanvas*>(object);
    return canvas == nullptr ? nullptr : new MapItem(*canvas);
}

} // namespace

void InstallMapAccessibility() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(MakeItem);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

void MapAccessibilityChanged(MapCanvas& canvas) {
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(&canvas, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void RoomGotFocus(MapCanvas& canvas, int room) {
    if (!QAccessible::isActive() || !canvas.hasFocus())
        return;
    QAccessibleEvent event(&canvas, QAccessible::Focus);
    event.setChild(room);
    QAccessible::updateAccessibility(&event);
}

} // namespace zem
