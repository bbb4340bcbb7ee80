#pragma once

#include "base/Host.h"
#include "forms/ChangeDoor.h"
#include "model/GameModel.h"
#include "model/History.h"
#include "session/FileStamp.h"
#include "session/Settings.h"

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

    /// Runs a command of the author; whatever it changes is one step of the history.
    /// @param name  as a menu would say it: "edit room"
    void AsOneStep(const QString& name, const std::function<void()>& command);

    const History& Steps() const { return history_; }

    /// Makes the game what it was after so many steps, 0 to Steps().Count().
    void GoToStep(std::size_t step);

    /// Starts an empty game.
    void NewGame();

    /// Opens a game file. False when the author has been told why it is none; throws CommandError when it
    /// cannot be read or understood. After both the game is empty and has no file name.
    bool LoadGame(const QString& path);

    /// Makes a game that was kept elsewhere the one that is open: it holds unsaved changes.
    /// @param stamp  of its file when the changes began
    void Restore(const GameModel& game, const FileStamp& stamp);

    /// Opens an earlier version of the game as a game that was never saved. Throws CommandError when it
    /// cannot be read; the game that was open stays then.
    void OpenVersion(const QString& path);

    /// Whether the file of the game is no longer what it was when the game was loaded or saved.
    bool IsChangedOnDisk() const;

    /// What the file was when the game was loaded or saved.
    const FileStamp& Stamp() const { return stamp_; }

    /// The author knows that the file is another, and keeps the game as it is: unsaved, unless it is the
    /// same.
    void KeepMine();

    /// Saves the game. Throws CommandError when that fails; the file that was there is untouched then, and
    /// the game stays modified.
    void SaveGame(const QString& path);

signals:
    void Changed(const GameChange& change);
    void Replaced(); // by a new or a loaded game
    void Saved();
    void StepsChanged(); // of the history
    void RecentFilesChanged();
    void StatusChanged(const QString& text);

private:
    void AddToRecentFiles(const QString& path);
    void RecordStep(const QString& name);
    void BeginHistory();

    GameModel& game_;
    Host& host_;
    Settings& settings_;
    History history_;
    int commands_ = 0; // that are running, one in the other
    FileStamp stamp_;
    bool toldAboutRecentFiles_ = false; // that there is no room for any; once is enough
};

} // namespace zem
