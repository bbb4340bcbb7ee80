// The map in the main window: it and the list of rooms follow each other.
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "panels/MapPanel.h"
#include "session/StateFolder.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

#include <QBoxLayout>

namespace zem {

void frmMain::AddMap() {
    QAction* map = AddPanel(QStringLiteral("mnuToolsMap"), QStringLiteral("&Map"), Qt::Key_F6, [this] {
        mapPanel_ = new MapPanel(session_, dialogs_, StateFolder() + QLatin1String("/maps"), this);
        mapPanel_->setProperty("isLarge", true);
        mapPanel_->addActions({renameName_, showUses_, whichRun_}); // for its menu
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
    connect(map, &QAction::triggered, this, [this](bool isShown) {
        if (isShown && mapPanel_ != nullptr)
            mapPanel_->Canvas().setFocus();
    });
}

} // namespace zem
