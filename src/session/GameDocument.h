#pragma once

#include "session/FileStamp.h"
#include "session/GameSession.h"
#include "session/Questions.h"

#include <QString>

#include <functional>

namespace zem {

class GameMerge;
class SaveCheck;

/// The commands on the file of the open game, with all that has to be asked before the game or the file may
/// go. They throw CommandError as the session does.
class GameDocument {
public:
    /// All arguments outlive this object.
    GameDocument(GameSession& session, SaveCheck& saveCheck, GameMerge& merge, Questions& questions);

    /// Each asks about unsaved changes first, and does nothing more when the author cancels.
    void New();
    void Open(); // a file that the author is asked for
    void Open(const QString& path);
    void OpenVersion(const QString& path);
    void BringBack(); // the game that a failed load has emptied, if there is one

    /// Saves under the name of the game; asks for one when there is none, and what is to be done when the
    /// file is no longer what was loaded or saved.
    void Save() { SaveUnderItsName(); }
    void SaveAs();

    /// Asks about unsaved changes, if there are any, and saves them if the author wants it; false when the
    /// author cancelled. A save whose name the author cancelled does not stop the command.
    bool MayLeave();

    /// Asks what has to be asked before the file of the game is run; false when the author cancelled. There
    /// may be no file afterwards.
    bool MayRun();

    /// Tells, once, that the file is no longer what was loaded or saved, and does what the author wants.
    void CheckDisk();

private:
    bool SaveFor(const std::function<bool()>& askAgain);
    bool SaveUnderItsName();
    bool AskAboutForeignFile();
    bool AskAboutChangedFile();
    void MergeWithFile();

    GameSession& session_;
    SaveCheck& saveCheck_;
    GameMerge& merge_;
    Questions& questions_;
    FileStamp askedAbout_; // the last change of the file that the author was told of
};

} // namespace zem
