#pragma once

#include "game/Rename.h"
#include "model/GameModel.h"
#include "qt/OpenEdits.h"
#include "session/FileStamp.h"
#include "session/GameSession.h"

#include <QDateTime>
#include <QLockFile>
#include <QObject>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zem {

/// Unsaved changes that a program which no longer runs has left behind.
struct RecoveryCopy {
    QString path;
    QDateTime time;
    GameModel game;
    FileStamp stamp;                 // of the game's file when the changes began
    std::vector<NameChange> names;   // what was renamed since
    std::shared_ptr<QLockFile> lock; // while one lives, no other program offers this copy
};

/// Keeps a copy of the game, written in the background, while there are changes that its file does not hold,
/// what is typed into open editors included; and finds the copies of programs that ended without a word.
class Recovery : public QObject {
    Q_OBJECT

public:
    /// Session and edits outlive this object.
    /// @param folder  where the copies of all programs are; it is made when it is needed
    Recovery(GameSession& session, const OpenEdits& edits, const QString& folder);

    /// Deletes the copy: by now the author was asked about unsaved changes. It stays if he wanted them saved.
    ~Recovery() override;

    /// Says where the names stand that changed since the game was saved. A copy keeps them, because what lies
    /// beside the game follows them with the next save.
    void TakeNamesFrom(std::function<std::vector<NameChange>()> names) { names_ = std::move(names); }

    /// The copies of programs that no longer run, the latest first. What cannot be read is kept aside under
    /// another name and added to `damaged`.
    std::vector<RecoveryCopy> Abandoned(QStringList& damaged) const;

    /// Deletes a copy that was found.
    static void Discard(RecoveryCopy& copy);

    /// Writes the copy before it returns, if there are unsaved changes: when worse may follow.
    void WriteNow();

    /// Keeps a copy although the game is saved, because its file would not give everything back; until the
    /// next save.
    void KeepDespiteSave();

    /// Waits until what is being written is written.
    void Finish() { pool_.waitForDone(); }

signals:
    /// The copy cannot be written; told once.
    void Failed(const QString& problem);

private:
    bool IsNeeded(const GameModel& game) const;
    bool IsGameLost() const;
    void GameChanged();
    void Schedule();
    void CatchUp();
    void StartWriting(const GameModel& game);
    void EndChanges();
    void KeepForGood();
    void KeepLostGame();
    void RemoveRemains() const;
    void SetAside();
    void Remove();

    GameSession& session_;
    const OpenEdits& edits_;
    std::function<std::vector<NameChange>()> names_;
    QString folder_;
    QString path_; // of this program's copy
    std::unique_ptr<QLockFile> lock_;
    QTimer timer_;
    QThreadPool pool_; // of one thread, so that writing and removing keep their order
    std::atomic<bool> isWriting_ = false;
    std::optional<GameModel> written_; // what the copy holds, or will once it is written
    bool hasFailed_ = false;
    bool isFileLacking_ = false; // the file of the game lacks something that the game has
    bool isWanted_ = false;      // the author wanted the game saved, and it was not
    bool isOfLostGame_ = false;  // the copy is of the game that a failed load has emptied
};

} // namespace zem
