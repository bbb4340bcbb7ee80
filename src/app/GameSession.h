#pragma once

#include "app/Settings.h"
#include "forms/ChangeDoor.h"
#include "model/GameModel.h"
#include "model/Host.h"

#include <QObject>
#include <QString>

#include <functional>

namespace zem {

/// One editing command: its name, and the whole game before and after it. Both are cheap copies.
struct GameChange {
    QString name; // as a menu would say it: "add room"
    GameModel before;
    GameModel after;
};

/// The game that is open, and the one door for every change of it: whatever hangs on changes hangs on the
/// signals here.
class GameSession : public QObject, public ChangeDoor {
    Q_OBJECT

public:
    /// All arguments outlive the session.
    GameSession(GameModel& game, Host& host, Settings& settings);

    const GameModel& Game() const override { return game_; }
    QString FileName() const;

    /// The caption of the main window for this game.
    QString Title() const;

    void Change(const QString& name, const std::function<void(GameModel&)>& change) override;
    void MarkModified() override;

    /// Starts an empty game.
    void NewGame();

    /// Opens a game file. False when the author has been told why it is none; throws CommandError when it
    /// cannot be read or understood. After both the game is empty and has no file name.
    bool LoadGame(const QString& path);

    /// Saves the game. Throws CommandError when that fails; the file that was there is untouched then, and
    /// the game stays modified.
    void SaveGame(const QString& path);

signals:
    void Changed(const GameChange& change);
    void Replaced(); // by a new or a loaded game
    void Saved();
    void RecentFilesChanged();
    void StatusChanged(const QString& text);

private:
    void AddToRecentFiles(const QString& path);

    GameModel& game_;
    Host& host_;
    Settings& settings_;
    bool toldAboutRecentFiles_ = false; // that there is no room for any; once is enough
};

} // namespace zem
