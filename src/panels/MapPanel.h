#pragma once

#include "forms/Dialogs.h"
#include "map/AfterEdit.h"
#include "panels/MapCanvas.h"
#include "qt/LatestWork.h"
#include "session/GameSession.h"
#include "session/MapCache.h"

#include <QDockWidget>

#include <deque>
#include <functional>
#include <memory>

class QLabel;
class QMenu;
class QToolBar;

namespace zem {

/// The map of the game: lays itself out on another thread whenever the game changes, and changes the game,
/// each gesture one step of the history.
class MapPanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments outlive the panel.
    /// @param mapFolder  where the places of rooms are kept between runs
    MapPanel(GameSession& session, Dialogs& dialogs, const QString& mapFolder, QWidget* parent = nullptr);

    MapCanvas& Canvas() { return *canvas_; }

    /// Whether the map that is shown is not yet that of the game.
    bool IsBusy() const { return work_.IsRunning() || isStale_; }

    /// Shows the room as the selected one; -1 for none.
    void SelectRoom(int room);

    /// Asks where to save a picture of the map, and saves it.
    void ExportPicture();
    /// Asks for a printer, and prints the map.
    void Print();

signals:
    /// The author has chosen a room on the map; it counts from 0.
    void RoomChosen(int room);
    void RoomOpened(int room);

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Result {
        map::PlacedMap placed;
        std::shared_ptr<routing::Router> router;
        QStringList details;
    };

    void MakeTools();
    void ConnectCanvas();
    void GameChanged(const ChangedFields& changed);
    void GameReplaced();
    void LayOutAnew();
    void ShowResult(Result result);
    void KeepPlaces();
    void RememberVersion();
    void RemoveLine(const routing::MapLine& line);

    void AsStep(const QString& name, const std::function<void(GameModel&)>& change);
    void MoveRooms(const std::vector<map::Placing>& placings);
    void AddRoom(const QString& name, map::Cell cell, int from, map::Direction direction, bool oneWay);
    void Connect(int from, map::Direction direction, int to, int back, bool oneWay);
    bool MayReplaceScript(const map::Connection& connection, const QString& there);
    void Disconnect(int room, map::Direction direction);
    void Flip(const routing::MapLine& line);
    void DeleteSelected();
    void TidySelected();
    void UnpinSelected();
    void ForgetPlaces();
    void ShowMenu(QPoint globalPosition);
    void AddLineCommands(QMenu& menu, const routing::MapLine& line);
    void AddConnections(QMenu& menu, int room);
    void MakeUnknownRoom(int exit);
    void AddRoomCommands(QMenu& menu);

    GameSession& session_;
    Dialogs& dialogs_;
    MapCache cache_;
    QToolBar* tools_;
    QLabel* zoom_;
    MapCanvas* canvas_;
    LatestWork work_;
    map::PlacedMap placed_; // the map as it was laid out last, and as the author has moved it
    struct Version {
        Table<Room> rooms;
        std::shared_ptr<const map::PlacedMap> placed;
    };
    std::deque<Version> versions_; // of the game and how their maps stood: undo brings these back
    int generation_ = 0;           // of layouts, so that a first picture that comes late is dropped
    bool isNew_ = true;            // nothing is known of the map of this game
    bool isStale_ = true;          // the game has changed while the panel was hidden
    int wanted_ = map::NoRoom;     // the room to select once it is on the map
    int listed_ = map::NoRoom;     // the room that is selected outside
};

} // namespace zem
