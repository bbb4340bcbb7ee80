// The lists of the main window, and the commands beside them.
#include "editors/frmRoomProperties.h"
#include "editors/frmThingProperties.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "panels/MapPanel.h"
#include "pieces/MoveRecords.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace zem {

namespace {

/// Selects the row, or the first one where it does not exist any more; nothing for -1 or in an empty list.
void SelectRow(QListView& list, int row) {
    const int count = list.model()->rowCount();
    if (row < 0 || count == 0)
        return;
    list.setCurrentIndex(list.model()->index(row < count ? row : 0, 0));
}

/// A disabled button passes the focus on to its list, where the keys of the author go on making sense.
void Enable(QPushButton& button, bool isEnabled, QListView& list) {
    if (!isEnabled && button.window()->focusWidget() == &button)
        list.setFocus();
    button.setEnabled(isEnabled);
}

template <class Model>
auto& Things(Model& room, std::size_t index) {
    return index == 0 ? room.Characters : room.Objects;
}

} // namespace

void frmMain::OnEditClick(QAbstractButton* button, const char* name, const std::function<void()>& handler) {
    OnClick(button, this, dialogs_, [this, name, handler] { EditAsOneStep(QLatin1String(name), handler); });
}

void frmMain::ConnectLists() {
    OnEditClick(ui_->butAddNewRoom, "add room", [this] { butAddNewRoom_Click(); });
    OnEditClick(ui_->butEditRoom, "edit room", [this] { butEditRoom_Click(); });
    OnEditClick(ui_->butDeleteRoom, "delete room", [this] { butDeleteRoom_Click(); });
    ui_->lstRooms->setModel(&rooms_);
    ConnectListKeys(*ui_->lstRooms, {ui_->butAddNewRoom, ui_->butDeleteRoom, ui_->butEditRoom});
    // A click on the selected room counts, too.
    connect(ui_->lstRooms, &QListView::clicked, this, &frmMain::lstRooms_Click);
    connect(ui_->lstRooms->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmMain::lstRooms_Click);

    const std::array<QPushButton*, 2> add = {ui_->butAddObj_0, ui_->butAddObj_1};
    const std::array<QPushButton*, 2> edit = {ui_->butEditObj_0, ui_->butEditObj_1};
    const std::array<QPushButton*, 2> remove = {ui_->butDeleteObj_0, ui_->butDeleteObj_1};
    for (const std::size_t index : {0U, 1U}) {
        OnEditClick(add[index], index == 0 ? "add character" : "add object",
                    [this, index] { butAddObj_Click(index); });
        OnEditClick(edit[index], index == 0 ? "edit character" : "edit object",
                    [this, index] { butEditObj_Click(index); });
        OnEditClick(remove[index], index == 0 ? "delete character" : "delete object",
                    [this, index] { butDeleteObj_Click(index); });
        ThingList(index)->setModel(&things_[index]);
        ConnectListKeys(*ThingList(index), {add[index], remove[index], edit[index]});
        connect(ThingList(index)->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                &frmMain::lstThings_Click);
    }
    ConnectClipboard();
}

QListView* frmMain::ThingList(std::size_t index) const {
    return index == 0 ? ui_->lstCharacters : ui_->lstObjects;
}

frmMain::Selection frmMain::CurrentSelection() const {
    return {SelectedRow(*ui_->lstRooms), {SelectedRow(*ui_->lstCharacters), SelectedRow(*ui_->lstObjects)}};
}

void frmMain::RefreshLists(const Selection& wanted) {
    const int scrolled = ui_->lstRooms->verticalScrollBar()->value();
    {
        // In between no row is selected. A button that was disabled then would lose the focus.
        const QScopedValueRollback<bool> refreshing(refreshing_, true);
        rooms_.ShowNames(session_.Game().Rooms);
        if (!ui_->txtRoomFilter->text().isEmpty())
            FilterRooms();
        ui_->lstRooms->verticalScrollBar()->setValue(scrolled);
        SelectRow(*ui_->lstRooms, wanted.room);
        FillThings();
        SelectRow(*ui_->lstCharacters, wanted.things[0]);
        SelectRow(*ui_->lstObjects, wanted.things[1]);
    }
    EnableButtons();
    ShowSelectedRoom();
}

void frmMain::lstRooms_Click() {
    if (refreshing_)
        return;
    FillThings();
    EnableButtons();
    ShowSelectedRoom();
}

void frmMain::lstThings_Click() {
    if (!refreshing_)
        EnableButtons();
}

void frmMain::EnableButtons() {
    const bool isRoom = SelectedRow(*ui_->lstRooms) >= 0;
    const bool isCharacter = SelectedRow(*ui_->lstCharacters) >= 0;
    const bool isObject = SelectedRow(*ui_->lstObjects) >= 0;
    Enable(*ui_->butEditRoom, isRoom, *ui_->lstRooms);
    if (startHere_ != nullptr)
        startHere_->setEnabled(isRoom);
    Enable(*ui_->butDeleteRoom, isRoom, *ui_->lstRooms);
    Enable(*ui_->butAddObj_0, isRoom, *ui_->lstRooms);
    Enable(*ui_->butAddObj_1, isRoom, *ui_->lstRooms);
    Enable(*ui_->butEditObj_0, isCharacter, *ui_->lstCharacters);
    Enable(*ui_->butDeleteObj_0, isCharacter, *ui_->lstCharacters);
    Enable(*ui_->butEditObj_1, isObject, *ui_->lstObjects);
    Enable(*ui_->butDeleteObj_1, isObject, *ui_->lstObjects);
    emit SelectionChanged();
}

void frmMain::ShowSelectedRoom() {
    const int row = SelectedRow(*ui_->lstRooms);
    if (row < 0)
        return;
    if (mapPanel_ != nullptr)
        mapPanel_->SelectRoom(row);
    const Room& room = session_.Game().Rooms[row + 1];
    const QString alias =
        room.Alias.empty() ? QString() : QStringLiteral(" [alias %1]").arg(ToQt(room.Alias));
    ShowStatus(QStringLiteral("Selected room '%1'").arg(ToQt(room.Name)) + alias);
}

/// Lists the things of every room that has the name of the selected one.
void frmMain::FillThings() {
    const Table<Room> rooms = session_.Game().Rooms;
    const int row = SelectedRow(*ui_->lstRooms);
    thingPlaces_ = {};
    if (row >= 0) {
        const std::string& name = rooms[row + 1].Name;
        int k = 0;
        for (const Room& room : rooms) {
            ++k;
            if (room.Name != name)
                continue;
            for (const std::size_t index : {0U, 1U})
                for (int thing = 1; thing <= Things(room, index).Count(); ++thing)
                    thingPlaces_[index].push_back({k, thing});
        }
    }
    for (const std::size_t index : {0U, 1U}) {
        const std::vector<ThingPlace>& places = thingPlaces_[index];
        things_[index].Reset(static_cast<int>(places.size()), [rooms, places, index](int thingRow) {
            const ThingPlace place = places[static_cast<std::size_t>(thingRow)];
            return ToQt(Things(rooms[place.room], index)[place.thing].Name);
        });
    }
}

// ---- Changing the game

void frmMain::ChangeGame(const Selection& selection, const std::function<void(GameModel&)>& change) {
    const QScopedValueRollback<std::optional<Selection>> wanted(wanted_, selection);
    session_.Change(change);
}

void frmMain::GameChanged(const ChangedFields& changed) {
    UpdateTitle();
    if (wanted_ || changed.Has(&GameModel::Rooms))
        RefreshLists(wanted_.value_or(CurrentSelection()));
}

void frmMain::GameReplaced() {
    lookup_.Cancel();
    beforeLookup_ = std::nullopt;
    CloseBars();
    ShowWhetherSaved();
    UpdateTitle();
    RefreshLists({.room = 0});
    ui_->lstRooms->setFocus();
}

void frmMain::butAddNewRoom_Click() {
    const std::optional<QString> name =
        AskName(dialogs_, this, QStringLiteral("Please enter a name for this room:"),
                QStringLiteral("New room"), QStringLiteral("Enter a name here..."));
    if (!name) {
        session_.MarkModified(); // The game counts as changed even if nothing was added.
        return;
    }
    Selection selection;
    selection.room = session_.Game().Rooms.Count();
    ChangeGame(selection, [&](GameModel& game) { game.Rooms.Append().Name = FromQt(*name); });
    butEditRoom_Click();
}

void frmMain::butEditRoom_Click() {
    const int row = SelectedRow(*ui_->lstRooms);
    if (row < 0)
        return;
    frmRoomProperties form(context_, row + 1, this);
    RunEditor(form, Place::Of({{FieldId::GameRooms, row + 1}}));
}

void frmMain::butDeleteRoom_Click() {
    const int row = SelectedRow(*ui_->lstRooms);
    if (row < 0)
        return;
    const std::vector<Place> rooms = SelectedPlaces(*ui_->lstRooms);
    Selection selection;
    selection.room = SelectedRows(*ui_->lstRooms).front();
    ChangeGame(selection, [&](GameModel& game) { RemoveRecords(game, rooms); });
}

void frmMain::butAddObj_Click(std::size_t index) {
    const int room = SelectedRow(*ui_->lstRooms);
    if (room < 0) {
        dialogs_.ShowMessageBox(this, QStringLiteral("No room is selected."));
        return;
    }
    const QString kind = index == 0 ? QStringLiteral("character") : QStringLiteral("object");
    const std::optional<QString> name =
        AskName(dialogs_, this, QStringLiteral("Please enter a name for this %1:").arg(kind),
                QStringLiteral("New %1").arg(kind), QStringLiteral("Enter a name here..."));
    if (!name) {
        session_.MarkModified();
        return;
    }
    // The new thing follows the last one of its room, which need not be the last of the list.
    const std::vector<ThingPlace>& places = thingPlaces_[index];
    const auto after = std::count_if(places.begin(), places.end(),
                                     [&](const ThingPlace& place) { return place.room <= room + 1; });
    Selection selection = CurrentSelection();
    selection.things[index] = static_cast<int>(after);
    ChangeGame(selection, [&](GameModel& game) {
        Things(game.Rooms.Edit(room + 1), index).Append().Name = FromQt(*name);
    });
    butEditObj_Click(index);
}

void frmMain::butEditObj_Click(std::size_t index) {
    const int row = SelectedRow(*ThingList(index));
    if (row < 0)
        return;
    const ThingPlace place = thingPlaces_[index][static_cast<std::size_t>(row)];
    const ThingKind kind = index == 0 ? ThingKind::Character : ThingKind::Object;
    frmThingProperties form(context_, kind, place.room, place.thing, this);
    RunEditor(form, Place::Of({{FieldId::GameRooms, place.room},
                               {index == 0 ? FieldId::RoomCharacters : FieldId::RoomObjects, place.thing}}));
}

void frmMain::butDeleteObj_Click(std::size_t index) {
    const int row = SelectedRow(*ThingList(index));
    if (row < 0)
        return;
    Selection selection = CurrentSelection();
    selection.things[index] = SelectedRows(*ThingList(index)).front();
    const std::vector<Place> things = SelectedPlaces(*ThingList(index));
    ChangeGame(selection, [&](GameModel& game) { RemoveRecords(game, things); });
}

} // namespace zem
