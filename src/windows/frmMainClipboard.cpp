// Copying, pasting and dragging in the lists of the main window.
#include "forms/ListClipboard.h"
#include "forms/ListRows.h"
#include "forms/RowDrag.h"
#include "forms/RunCommand.h"
#include "panels/MapPanel.h"
#include "pieces/MoveRecords.h"
#include "pieces/PastePiece.h"
#include "script/ScriptEditing.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

#include <QDropEvent>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

/// What stands at the places, in a few words: "room Hall", "3 objects".
QString DescribePlaces(const GameModel& game, const std::vector<Place>& places) {
    const std::size_t last = places.front().Depth() - 1;
    const auto found = Resolve(game, places.front());
    if (!found)
        return {};
    const QString kind = QLatin1String(found->steps[last].list);
    return places.size() == 1 ? kind + u' ' + ToQt(*found->steps[last].key)
                              : QStringLiteral("%1 %2s").arg(places.size()).arg(kind);
}

/// Takes what is dragged over a widget: things that are let go on a room.
class ThingDrop : public QObject {
public:
    /// @param roomAt   the room at a point of the widget, from 1; 0 for none
    /// @param dragged  the places of the things that are dragged; none for anything else
    /// @param move     moves them
    ThingDrop(QWidget& target, std::function<int(QPoint)> roomAt,
              std::function<std::vector<Place>(const QMimeData&)> dragged,
              std::function<void(const std::vector<Place>&, int)> move)
        : QObject(&target),
          roomAt_(std::move(roomAt)),
          dragged_(std::move(dragged)),
          move_(std::move(move)) {
        target.setAcceptDrops(true);
        target.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        const bool isDrop = event->type() == QEvent::Drop;
        if (!isDrop && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove)
            return false;
        auto& drop = static_cast<QDropEvent&>(*event); // the others derive from it
        const std::vector<Place> things = dragged_(*drop.mimeData());
        if (things.empty()) { // a file, perhaps, which the window takes
            drop.ignore();
            return true;
        }
        const int room = roomAt_(drop.position().toPoint());
        drop.setDropAction(Qt::CopyAction); // after a move the list would take its rows away by itself
        // What comes over the widget is taken even beside the rooms: there is one a little further.
        drop.setAccepted(room != 0 || event->type() == QEvent::DragEnter);
        if (isDrop && room != 0)
            QTimer::singleShot(0, this, [this, things, room] { move_(things, room); }); // after the drag
        return true;
    }

private:
    std::function<int(QPoint)> roomAt_;
    std::function<std::vector<Place>(const QMimeData&)> dragged_;
    std::function<void(const std::vector<Place>&, int)> move_;
};

} // namespace

void frmMain::ConnectClipboard() {
    for (QListView* list : {static_cast<QListView*>(ui_->lstRooms), ThingList(0), ThingList(1)})
        zem::ConnectClipboard(*list, dialogs_,
                              {[this, list] { return CopyPiece(session_.Game(), SelectedPlaces(*list)); },
                               [this](std::string_view text, const QString& verb) { PasteText(text, verb); },
                               [this, list] { RemovePlaces(QStringLiteral("cut"), SelectedPlaces(*list)); }});
    for (const std::size_t index : {0U, 1U}) {
        things_[index].AllowDrag();
        ThingList(index)->setDragEnabled(true);
    }
    AcceptThings(*ui_->lstRooms->viewport(),
                 [this](QPoint at) { return ui_->lstRooms->indexAt(at).row() + 1; });
}

/// The places of the selected rooms, in order. What the filter hides is not meant: nobody cuts or deletes
/// what is not seen. Throws CommandError when that is all there is.
std::vector<Place> frmMain::SelectedRooms() const {
    std::vector<Place> places;
    for (const int row : SelectedRows(*ui_->lstRooms))
        if (!ui_->lstRooms->isRowHidden(row))
            places.push_back(Place::Of({{FieldId::GameRooms, row + 1}}));
    if (places.empty() && SelectedRow(*ui_->lstRooms) >= 0)
        throw CommandError(QStringLiteral("The filter hides the selected room."), QStringLiteral("Rooms"));
    return places;
}

/// The places of the selected rows of a list, in order.
std::vector<Place> frmMain::SelectedPlaces(const QListView& list) const {
    if (&list == ui_->lstRooms)
        return SelectedRooms();
    std::vector<Place> places;
    const std::size_t index = &list == ui_->lstCharacters ? 0 : 1;
    for (const int row : SelectedRows(list)) {
        const auto [room, thing] = thingPlaces_[index][static_cast<std::size_t>(row)];
        const FieldId kind = index == 0 ? FieldId::RoomCharacters : FieldId::RoomObjects;
        places.push_back(Place::Of({{FieldId::GameRooms, room}, {kind, thing}}));
    }
    return places;
}

/// Whichever list has the focus, each record goes where its kind belongs; things go to the selected room.
void frmMain::PasteText(std::string_view text, const QString& verb) {
    const Pasted pasted = PastePiece(session_.Game(), text, {.room = SelectedRow(*ui_->lstRooms) + 1},
                                     context_.scripts.Commands());
    const QString what = verb + u' ' + ToQt(pasted.what);
    EditAsOneStep(what,
                  [&] { ChangeGame(CurrentSelection(), [&](GameModel& game) { game = pasted.game; }); });
    SelectPlaces(pasted.added);
    ShowStatus(what.left(1).toUpper() + what.mid(1));
}

void frmMain::RemovePlaces(const QString& verb, const std::vector<Place>& places) {
    if (places.empty())
        return;
    Selection selection = CurrentSelection();
    if (places.front().Depth() == 1)
        selection = {.room = places.front().steps.front().entry - 1};
    EditAsOneStep(verb + u' ' + DescribePlaces(session_.Game(), places),
                  [&] { ChangeGame(selection, [&](GameModel& game) { RemoveRecords(game, places); }); });
}

/// Selects what was put into the game, list by list; the lists of things go with the room.
void frmMain::SelectPlaces(const std::vector<Place>& places) {
    std::vector<int> rooms;
    for (const Place& place : places)
        if (place.Depth() == 1 && place.steps.front().list == FieldId::GameRooms)
            rooms.push_back(place.steps.front().entry - 1);
    SelectRows(*ui_->lstRooms, rooms);
    for (const std::size_t index : {0U, 1U}) {
        const FieldId kind = index == 0 ? FieldId::RoomCharacters : FieldId::RoomObjects;
        std::vector<int> rows;
        for (std::size_t row = 0; row < thingPlaces_[index].size(); ++row) {
            const auto [room, thing] = thingPlaces_[index][row];
            const Place own = Place::Of({{FieldId::GameRooms, room}, {kind, thing}});
            if (std::find(places.begin(), places.end(), own) != places.end())
                rows.push_back(static_cast<int>(row));
        }
        SelectRows(*ThingList(index), rows);
    }
}

/// @param room  from 1
void frmMain::MoveToRoom(const std::vector<Place>& things, int room) {
    const GameModel& game = session_.Game();
    const bool isThere = std::all_of(things.begin(), things.end(), [&](const Place& thing) {
        return thing.steps.front().entry == room || !Exists(game, thing);
    });
    if (isThere || room > game.Rooms.Count())
        return;
    const QString what =
        QStringLiteral("move %1 to %2").arg(DescribePlaces(game, things), ToQt(game.Rooms[room].Name));
    EditAsOneStep(what, [&] {
        ChangeGame(CurrentSelection(), [&](GameModel& changed) { MoveThings(changed, things, room); });
    });
}

/// Lets things of the lists be dragged to a room that the widget shows.
/// @param roomAt  the room at a point of the widget, from 1; 0 for none
void frmMain::AcceptThings(QWidget& target, const std::function<int(QPoint)>& roomAt) {
    const auto dragged = [this](const QMimeData& data) {
        std::vector<Place> places;
        for (const std::size_t index : {0U, 1U})
            for (const int row : RowsDraggedFrom(things_[index], data)) {
                const auto [room, thing] = thingPlaces_[index][static_cast<std::size_t>(row)];
                const FieldId kind = index == 0 ? FieldId::RoomCharacters : FieldId::RoomObjects;
                places.push_back(Place::Of({{FieldId::GameRooms, room}, {kind, thing}}));
            }
        return places;
    };
    new ThingDrop(target, roomAt, dragged, [this](const std::vector<Place>& things, int room) { // owned by it
        RunCommand(dialogs_, this, [&] { MoveToRoom(things, room); });
    });
}

} // namespace zem
