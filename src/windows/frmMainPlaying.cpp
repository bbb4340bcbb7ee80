// Playing the open game beside the lists of the main window.
#include "forms/RunCommand.h"
#include "panels/CompiledGame.h"
#include "panels/MapPanel.h"
#include "panels/PlayPanel.h"
#include "panels/PreviewPanel.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

namespace zem {

void frmMain::AddPlaying() {
    compiled_ = new CompiledGame(session_, this);
    AddPanel(QStringLiteral("mnuToolsPreview"), QStringLiteral("Pr&eview"), {}, [this] {
        auto* panel = new PreviewPanel(*compiled_, this);
        panel->setProperty("isLarge", true);
        connect(panel, &PreviewPanel::PlaceChosen, this, &frmMain::OpenFromPanel, Qt::QueuedConnection);
        const auto follow = [this, panel] { panel->Show(SelectedPlace()); };
        connect(this, &frmMain::SelectionChanged, panel, follow);
        follow();
        return panel;
    });
    const auto add = [this](const char* name, const QString& caption, const QKeySequence& key,
                            const std::function<void()>& handler) {
        auto* action = new QAction(caption, this);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(key);
        ui_->mnuTools->insertAction(ui_->mnuToolsSep1, action);
        connect(action, &QAction::triggered, this, [this, handler] { RunCommand(dialogs_, this, handler); });
        return action;
    };
    add("mnuToolsPlay", QStringLiteral("Pla&y"), QKeySequence(Qt::Key_F5), [this] {
        ShowPanel(Player());
        Player().Play();
    });
    QAction* here = add("mnuToolsPlayRoom", QStringLiteral("Play from the selected room"),
                        QKeySequence(Qt::SHIFT | Qt::Key_F5), [this] {
                            const Place place = SelectedPlace();
                            ShowPanel(Player());
                            Player().PlayFrom({session_.Game().Rooms[place.steps[0].entry].Name, {}, {}, {}});
                        });
    const auto enable = [this, here] { here->setEnabled(SelectedPlace().Depth() > 0); };
    connect(this, &frmMain::SelectionChanged, here, enable);
    enable();
}

PlayPanel& frmMain::Player() {
    if (player_ == nullptr) {
        player_ = new PlayPanel(*compiled_, context_, this);
        player_->setProperty("isLarge", true);
        AddNameCommands(*player_->findChild<QWidget*>(QStringLiteral("lstWatch")));
        connect(player_, &PlayPanel::PlaceChosen, this, &frmMain::OpenFromPanel, Qt::QueuedConnection);
        connect(player_, &PlayPanel::Moved, this, &frmMain::ShowPlayerOnMap);
        connect(player_, &PlayPanel::KeepAsked, this,
                [this] { RunCommand(dialogs_, this, [this] { KeepRun(); }); });
    }
    return *player_;
}

void frmMain::ShowPlayerOnMap() {
    if (mapPanel_ == nullptr)
        return;
    const std::string name = player_ == nullptr ? std::string() : player_->RoomOfPlayer();
    int player = map::NoRoom;
    int room = 0;
    for (const Room& record : session_.Game().Rooms) {
        if (!name.empty() && record.Name == name)
            player = room; // of two rooms of one name the last counts
        ++room;
    }
    mapPanel_->Canvas().SetPlayer(player);
}

void frmMain::OpenFromPanel(const Place& place) {
    RunCommand(dialogs_, this, [&] { OpenEditor(place); });
}

/// The selected character or object, or else the room; no steps for none.
Place frmMain::SelectedPlace() const {
    const Selection selected = CurrentSelection();
    if (selected.room < 0)
        return {};
    const bool isObject = selected.things[1] >= 0 && (selected.things[0] < 0 || ui_->lstObjects->hasFocus());
    const std::size_t index = isObject ? 1 : 0;
    const int row = selected.things[index];
    if (row < 0 || static_cast<std::size_t>(row) >= thingPlaces_[index].size())
        return Place::Of({{FieldId::GameRooms, selected.room + 1}});
    const ThingPlace thing = thingPlaces_[index][static_cast<std::size_t>(row)];
    return Place::Of({{FieldId::GameRooms, thing.room},
                      {isObject ? FieldId::RoomObjects : FieldId::RoomCharacters, thing.thing}});
}

} // namespace zem
