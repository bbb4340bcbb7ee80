#include "session/GameDocument.h"

#include "session/GameMerge.h"
#include "session/ReadVersionFile.h"
#include "session/SaveCheck.h"

#include <QFileInfo>

namespace zem {

GameDocument::GameDocument(GameSession& session, SaveCheck& saveCheck, GameMerge& merge, Questions& questions)
    : session_(session),
      saveCheck_(saveCheck),
      merge_(merge),
      questions_(questions) {}

bool GameDocument::MayLeave() {
    saveCheck_.Finish(); // of a save before this; while the game is still here
    if (!session_.Game().Modified)
        return true;
    const Questions::Answer answer =
        questions_.Ask(QStringLiteral("Do you want to save the changes you made to this game?"),
                       QStringLiteral("Game not saved"), Questions::Buttons::YesNoCancel);
    if (answer != Questions::Answer::Yes)
        return answer == Questions::Answer::No;
    const bool mayLeave = SaveFor([this] { return MayLeave(); });
    if (mayLeave && session_.Game().Modified)
        session_.MissSave();
    return mayLeave;
}

bool GameDocument::MayRun() {
    if (session_.FileName().isEmpty()) {
        const Questions::Answer answer = questions_.Ask(
            QStringLiteral(
                "The current game has not been saved. It needs to be saved as an .KEL file before it "
                "can be executed in Veldt. Save now?"),
            QStringLiteral("Game not saved"), Questions::Buttons::OkCancel);
        if (answer != Questions::Answer::Yes)
            return false;
        SaveAs();
    }
    saveCheck_.Finish();
    if (!session_.Game().Modified)
        return true;
    const Questions::Answer answer = questions_.Ask(
        QStringLiteral(
            "The current game has changed since it was last saved - if not saved now, the last saved "
            "version will be executed instead. Save the current version now?"),
        QStringLiteral("Game not saved"), Questions::Buttons::YesNoCancel);
    if (answer == Questions::Answer::Yes)
        return SaveFor([this] { return MayRun(); });
    return answer != Questions::Answer::Cancel;
}

/// Saves before a command that leaves the game or needs its file. A name that the author cancelled does not
/// stop the command; a save that failed does, by its exception.
/// @param askAgain  decides where the author has mended what the file would not give back
bool GameDocument::SaveFor(const std::function<bool()>& askAgain) {
    const std::size_t step = session_.Steps().Done();
    if (!SaveUnderItsName())
        return false;
    saveCheck_.Finish();
    return session_.Steps().Done() == step || askAgain();
}

/// False when the author did not decide between the game and a file that another program has changed.
bool GameDocument::SaveUnderItsName() {
    const QString path = session_.FileName();
    if (path.isEmpty()) {
        SaveAs();
        return true;
    }
    if (QFileInfo::exists(path) && session_.IsChangedOnDisk() && !AskAboutChangedFile())
        return !session_.Game().Modified;
    if (!session_.IsFileAGame() && !AskAboutForeignFile())
        return !session_.Game().Modified;
    session_.SaveGame(path);
    return true;
}

/// Whether the game is to be saved over a file that held none.
bool GameDocument::AskAboutForeignFile() {
    enum Choice { Replace, SaveUnderAnotherName };
    const int choice = questions_.AskChoice(
        QStringLiteral("The file %1 held no Kel game when it was opened. To save puts the game in its place.")
            .arg(session_.FileName()),
        QStringLiteral("No game in this file"),
        {QStringLiteral("&Replace it"), QStringLiteral("Save under &another name...")});
    if (choice == SaveUnderAnotherName)
        SaveAs();
    return choice == Replace;
}

void GameDocument::SaveAs() {
    const QString path = questions_.AskSaveName(session_.FileName());
    if (path.isEmpty())
        return;
    session_.SaveGame(path);
    if (!path.endsWith(QLatin1String(".kel"), Qt::CaseInsensitive))
        questions_.Tell(QStringLiteral("Open will refuse %1, because its name does not end in \".kel\". Save "
                                       "the game under such a name to open it again.")
                            .arg(QFileInfo(path).fileName()));
}

void GameDocument::New() {
    if (MayLeave())
        session_.NewGame();
}

void GameDocument::Open() {
    if (!MayLeave())
        return;
    const QString path = questions_.AskOpenName(session_.FileName());
    if (!path.isEmpty())
        session_.LoadGame(path);
}

void GameDocument::Open(const QString& path) {
    if (MayLeave())
        session_.LoadGame(path);
}

void GameDocument::OpenVersion(const QString& path) {
    if (MayLeave())
        session_.OpenVersion(path);
}

void GameDocument::BringBack() {
    if (MayLeave() && session_.LostGame() != nullptr)
        session_.BringBack();
}

void GameDocument::CheckDisk() {
    if (!session_.IsChangedOnDisk() || askedAbout_ == FileStamp::Of(session_.FileName()))
        return; // once is enough, until the game is saved
    if (AskAboutChangedFile())
        session_.KeepMine();
}

/// Whether the game is to be saved over the file all the same.
bool GameDocument::AskAboutChangedFile() {
    enum Choice { KeepMine, SaveUnderAnotherName, Reload, Differences, MergeBoth };
    const QString path = session_.FileName();
    askedAbout_ = FileStamp::Of(path);
    const bool isThere = QFileInfo::exists(path);
    QStringList choices = {QStringLiteral("&Keep mine"), QStringLiteral("Save mine under &another name...")};
    if (isThere)
        choices += {QStringLiteral("&Reload"), QStringLiteral("Show &differences...")};
    if (isThere && session_.Game().Modified && session_.SavedGame() != nullptr)
        choices.append(QStringLiteral("&Merge both"));
    const QString what = isThere ? QStringLiteral("has been changed by another program")
                                 : QStringLiteral("is not there any more");
    int choice = Differences;
    while (choice == Differences) {
        choice = questions_.AskChoice(
            QStringLiteral("The file %1 %2 since it was opened or saved here.").arg(path, what),
            QStringLiteral("File changed"), choices);
        if (choice == Differences)
            questions_.ShowDifferences(path);
    }
    if (choice == SaveUnderAnotherName)
        SaveAs();
    else if (choice == Reload)
        session_.LoadGame(path);
    else if (choice == MergeBoth)
        MergeWithFile();
    return choice == KeepMine;
}

/// Both began as what was loaded or saved last.
void GameDocument::MergeWithFile() {
    const GameModel file = ReadVersionFile(session_.FileName(), session_.Game());
    const FileStamp stamp = FileStamp::Of(session_.FileName());
    merge_.Begin({*session_.SavedGame(), session_.Game(), file});
    session_.TakeUp(file, stamp);
}

} // namespace zem
