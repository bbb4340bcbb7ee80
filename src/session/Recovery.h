#pragma once

#include "model/GameModel.h"
#include "session/FileStamp.h"
#include "session/GameSession.h"

#include <QDateTime>
#include <QLockFile>
#include <QObject>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <memory>
#include <vector>

namespace zem {

/// Unsaved changes that a program which no longer runs has left behind.
struct RecoveryCopy {
    QString path;
    QDateTime time;
    GameModel game;
    FileStamp stamp;                 // of the game's file when the changes began
    std::shared_ptr<QLockFile> lock; // while one lives, no other program offers this copy
};

/// Keeps a copy of the game, written in the background, while there are changes that its file does not hold;
/// and finds the copies of programs that ended without a word.
class Recovery : public QObject {
    Q_OBJECT

public:
    /// @param session  outlives this object
    /// @param folder  where the copies of all programs are; it is made when it is needed
    Recovery(GameSession& session, const QString& folder);

    /// The end of the object is a clean end: what the author did not save he did not want.
    ~Recovery() override;

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
    bool IsNeeded() const;
    void Schedule();
    void StartWriting();
    void EndChanges();
    void Remove();

    GameSession& session_;
    QString folder_;
    QString path_; // of this program's copy
    std::unique_ptr<QLockFile> lock_;
    QTimer timer_;
    QThreadPool pool_; // of one thread, so that writing and removing keep their order
    std::atomic<bool> isWriting_ = false;
    bool hasFailed_ = false;
    bool isFileLacking_ = false; // the file of the game lacks something that the game has
};

} // namespace zem
