#pragma once

#include "base/Host.h"
#include "base/KelError.h"
#include "model/ChangedFields.h"
#include "model/GameModel.h"
#include "model/History.h"
#include "qt/ChangeDoor.h"
#include "reader/InspectFile.h"
#include "session/FileStamp.h"
#include "session/Settings.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace zem {

/// "tower.kel, line 12: what is wrong: the line".
QString DescribeError(const QString& path, const KelError& error);

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

    void Change(const std::function<void(GameModel&)>& change) override;
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
    /// cannot be read or understood. After both the game is empty and has no file name, and the one that was
    /// open can be brought back.
    bool LoadGame(const QString& path);

    /// Reads the file of the game again as UTF-8; the game holds unsaved changes then. Throws CommandError
    /// when that cannot be done; the game stays as it is.
    void ReadAsUtf8();

    /// Whether the file of the game held a game, or anything else that a save would replace.
    bool IsFileAGame() const { return isFileAGame_; }

    /// A game that a load which failed has emptied.
    struct Lost {
        GameModel game;
        History steps;
        FileStamp stamp;
        std::optional<GameModel> saved;
    };

    /// The game that was open before a load that failed, until another one is opened; null when there is none
    /// or it was empty.
    const Lost* LostGame() const { return lost_ ? &*lost_ : nullptr; }

    /// Makes the lost game the open one again, with its steps. There must be one.
    void BringBack();

    /// Makes a game that was kept elsewhere the one that is open: it holds unsaved changes.
    /// @param stamp  of its file when the changes began
    void Restore(const GameModel& game, const FileStamp& stamp);

    /// Opens an earlier version of the game as a game that was never saved. Throws CommandError when it
    /// cannot be read; the game that was open stays then.
    void OpenVersion(const QString& path);

    /// The game as it was loaded or saved last; null when it was neither, or nobody knows.
    const GameModel* SavedGame() const { return saved_ ? &*saved_ : nullptr; }

    /// Whether the file of the game is no longer what it was when the game was loaded or saved.
    bool IsChangedOnDisk() const;

    /// What the file was when the game was loaded or saved.
    const FileStamp& Stamp() const { return stamp_; }

    /// The author knows that the file is another, and keeps the game as it is: unsaved, unless it is the
    /// same.
    void KeepMine();

    /// What the file holds now has been merged into the game, which is unsaved.
    /// @param stamp  of the file when it was read
    void TakeUp(const GameModel& file, const FileStamp& stamp);

    /// Saves the game. Throws CommandError when that fails; the file that was there is untouched then, and
    /// the game stays modified.
    void SaveGame(const QString& path);

    /// The author wanted the game saved and then gave it no name: what follows may leave it unsaved.
    void MissSave() { emit SaveMissed(); }

signals:
    void Changed(const ChangedFields& changed);
    void Replaced();                             // by a new or a loaded game
    void Inspected(const FileInspection& found); // after a load: what the author should know of the file
    void GameLost();                             // by a load that failed; LostGame tells it
    void AboutToSave(const QString& path);
    void Saved();
    void SaveMissed();
    void StepsChanged(); // of the history
    void RecentFilesChanged();
    void StatusChanged(const QString& text);
    void ProblemFound(const QString& text); // which has nothing to do with the game

private:
    void AddToRecentFiles(const QString& path);
    void RecordStep(const QString& name);
    void BeginHistory();
    void Inspect(const QString& path);
    void NoteLostGame(Lost lost);

    GameModel& game_;
    Host& host_;
    Settings& settings_;
    History history_;
    int commands_ = 0; // that are running, one in the other
    FileStamp stamp_;
    std::optional<GameModel> saved_;
    std::optional<Lost> lost_;
    bool isFileAGame_ = true;
    bool toldAboutRecentFiles_ = false; // that there is no room for any; once is enough
};

} // namespace zem
