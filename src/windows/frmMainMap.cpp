// The map in the main window: it and the list of rooms follow each other.
#include "forms/ListClipboard.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "panels/MapPanel.h"
#include "qt/QtText.h"
#include "session/StateFolder.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

#include <QBoxLayout>

namespace zem {

void frmMain::AddMap() {
    QAction* map = AddPanel(QStringLiteral("mnuToolsMap"), QStringLiteral("&Map"), Qt::Key_F6, [this] {
        mapPanel_ = new MapPanel(session_, dialogs_, StateFolder() + QLatin1String("/maps"), this);
        mapPanel_->setProperty("isLarge", true);
        mapPanel_->addActions(
            {renameName_, showUses_, whichRun_, startHere_, insertReadyMade_}); // for its menu
        zem::ConnectClipboard(mapPanel_->Canvas(), dialogs_,
                              {[this] { return CopyPiece(session_.Game(), PlacesOnMap()); },
                               [this](std::string_view text, const QString& verb) { PasteText(text, verb); },
                               [this] { RemovePlaces(QStringLiteral("cut"), PlacesOnMap()); }});
        connect(mapPanel_, &MapPanel::RoomChosen, this, [this](int room) {
            if (SelectedRow(*ui_->lstRooms) != room)
                ui_->lstRooms->setCurrentIndex(rooms_.index(room));
        });
        connect(mapPanel_, &MapPanel::RoomOpened, this, [this](int room) {
            ui_->lstRooms->setCurrentIndex(rooms_.index(room));
            RunCommand(dialogs_, this, [this] {
                EditAsOneStep(QStringLiteral("edit room"), [this] { butEditRoom_Click(); });
            });
        });
        // Beside the map the lists are narrow: objects stand below the characters then.
        // The panel is hidden once more while the window is destroyed, when only the layout is still there.
        const auto makeRoom = [things = ui_->things](bool isShown) {
            things->setDirection(isShown ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        };
        connect(mapPanel_->toggleViewAction(), &QAction::toggled, ui_->things, makeRoom);
        makeRoom(true);
        AcceptThings(mapPanel_->Canvas(), [this](QPoint at) { return mapPanel_->Canvas().RoomAt(at) + 1; });
        mapPanel_->SelectRoom(SelectedRow(*ui_->lstRooms));
        ShowProblemsOnMap();
        ShowPlayerOnMap();
        return mapPanel_.data();
    });
    connect(map, &QAction::triggered, this, [this, map] {
        if (map->isChecked() && mapPanel_ != nullptr)
            mapPanel_->Canvas().setFocus();
    });
}

/// The rooms that are selected on the map. While it is still that of the game before a change, its numbers
/// may be those of other rooms. Throws CommandError for none.
std::vector<Place> frmMain::PlacesOnMap() const {
    if (mapPanel_->IsBusy())
        throw CommandError(QStringLiteral("The map is just being laid out; try again in a moment."),
                           QStringLiteral("Map"));
    std::vector<Place> places;
    for (const int room : mapPanel_->Canvas().Selected())
        places.push_back(Place::Of({{FieldId::GameRooms, room + 1}}));
    if (places.empty())
        throw CommandError(QStringLiteral("Select a room on the map first."), QStringLiteral("Map"));
    return places;
}

/// The commands for a room that its list and the map share.
void frmMain::AddRoomCommands() {
    startHere_ = new QAction(QStringLiteral("&Start the game here"), this);
    startHere_->setObjectName(QStringLiteral("actStartHere"));
    startHere_->setStatusTip(QStringLiteral("Makes the selected room the one in which the player begins"));
    connect(startHere_, &QAction::triggered, this, [this] {
        RunCommand(dialogs_, this, [this] {
            const int row = SelectedRow(*ui_->lstRooms);
            if (row < 0)
                throw CommandError(QStringLiteral("Select a room first."), QStringLiteral("Start room"));
            const std::string name = session_.Game().Rooms[row + 1].Name;
            if (name == session_.Game().StartRoom)
                return; // a game that is not changed stays saved
            EditAsOneStep(QStringLiteral("start in ") + ToQt(name), [&] {
                ChangeGame(CurrentSelection(), [&](GameModel& game) { game.StartRoom = name; });
            });
        });
    });
    ui_->lstRooms->addAction(startHere_);
    ui_->lstRooms->addAction(insertReadyMade_);
}

} // namespace zem
