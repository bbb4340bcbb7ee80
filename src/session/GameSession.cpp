#include "session/GameSession.h"

#include "base/TextFile.h"
#include "game/StepName.h"
#include "qt/CommandError.h"
#include "qt/QtText.h"
#include "reader/LoadGame.h"
#include "session/Companions.h"
#include "writer/SaveGame.h"

#include <QFileInfo>
#include <QScopeGuard>

#include <exception>
#include <optional>
#include <utility>

namespace zem {

QString DescribeError(const QString& path, const KelError& error) {
    const QString file = QFileInfo(path).fileName();
    const QString place = error.Line() == 0 ? QString() : QStringLiteral(", line %1").arg(error.Line());
    return file + place + QLatin1String(": ") + ToQt(error.ProblemWithText());
}

GameSession::GameSession(GameModel& game, Host& host, Settings& settings)
    : game_(game),
      host_(host),
      settings_(settings) {
    history_.Begin(game, true);
}

QString GameSession::FileName() const {
    return PathToQt(game_.FileName);
}

QString GameSession::Title() const {
    QString title;
    if (!game_.GameName.empty())
        title += u'"' + ToQt(game_.GameName) + QLatin1String("\" ");
    if (!game_.FileName.empty())
        title += u'[' + FileName() + QLatin1String("] ");
    return (title.isEmpty() ? title : title + QLatin1String("- ")) + QLatin1String(NameAndVersion);
}

void GameSession::Change(const std::function<void(GameModel&)>& change) {
    GameModel before = game_;
    try {
        change(game_);
    } catch (...) {
        game_ = std::move(before);
        throw;
    }
    emit Changed(ChangedFields::Between(before, game_));
    MarkModified();
    if (commands_ == 0)
        RecordStep(QStringLiteral("change"));
}

void GameSession::AsOneStep(const QString& name, const std::function<void()>& command) {
    ++commands_;
    const auto end = qScopeGuard([&] {
        if (--commands_ == 0)
            RecordStep(name);
    });
    command();
}

void GameSession::RecordStep(const QString& name) {
    const std::string detailed = NameStep(FromQt(name), history_.Game(history_.Done()), game_);
    if (history_.Record(detailed, game_))
        emit StepsChanged();
}

void GameSession::GoToStep(std::size_t step) {
    const GameModel before = game_;
    game_ = history_.GoTo(step);
    game_.FileName = before.FileName; // which is no part of the game that was edited
    game_.Modified = !history_.IsSaved();
    emit Changed(ChangedFields::Between(before, game_));
    emit StatusChanged(game_.Modified ? QStringLiteral("Current version of game not saved.") : QString());
    emit StepsChanged();
}

void GameSession::MarkModified() {
    game_.Modified = true;
    emit StatusChanged(QStringLiteral("Current version of game not saved."));
}

void GameSession::BeginHistory() {
    isFileAGame_ = true;
    history_.Begin(game_, !game_.Modified);
    saved_ = game_.FileName.empty() || game_.Modified ? std::nullopt : std::optional(game_);
    stamp_ = game_.FileName.empty() ? FileStamp() : FileStamp::Of(FileName());
    emit StepsChanged();
}

void GameSession::Restore(const GameModel& game, const FileStamp& stamp) {
    lost_.reset();
    game_ = game;
    game_.Modified = true;
    BeginHistory();
    stamp_ = stamp;
    emit Replaced();
    emit Changed({});
    MarkModified();
}

void GameSession::OpenVersion(const QString& path) {
    GameModel version;
    version.ErrorMessages = game_.ErrorMessages;
    try {
        ReadGame(version, ReadFile(PathFromQt(path)));
    } catch (const KelError& error) {
        throw CommandError(DescribeError(path, error) + u'.', QStringLiteral("Failed to load game"));
    }
    Restore(version, {});
}

bool GameSession::IsChangedOnDisk() const {
    return !game_.FileName.empty() && stamp_.IsOutdated(FileName());
}

void GameSession::KeepMine() {
    stamp_ = FileStamp::Of(FileName());
    MarkModified();
}

void GameSession::TakeUp(const GameModel& file, const FileStamp& stamp) {
    saved_ = file;
    stamp_ = stamp;
    MarkModified();
}

void GameSession::NewGame() {
    lost_.reset();
    zem::NewGame(game_);
    BeginHistory();
    emit Replaced();
    emit StatusChanged(QString());
}

/// A game in which there is nothing is not worth a word.
void GameSession::NoteLostGame(Lost lost) {
    if (lost.game.FileName.empty() && !lost.game.Modified && lost.steps.Count() == 0)
        return;
    lost_ = std::move(lost);
    emit GameLost();
}

void GameSession::BringBack() {
    Lost lost = std::move(*lost_);
    lost_.reset();
    game_ = std::move(lost.game);
    history_ = std::move(lost.steps);
    stamp_ = lost.stamp;
    saved_ = std::move(lost.saved);
    emit Replaced();
    emit Changed({});
    emit StepsChanged();
    emit StatusChanged(game_.Modified ? QStringLiteral("Current version of game not saved.") : QString());
}

bool GameSession::LoadGame(const QString& path) {
    Lost before = {game_, history_, stamp_, saved_};
    lost_.reset();
    bool loaded = false;
    std::optional<KelError> problem;
    {
        const auto end = qScopeGuard([this] { host_.CloseProgress(); });
        try {
            loaded = zem::LoadGame(game_, PathFromQt(path), host_);
        } catch (const KelError& error) {
            problem = error;
        } catch (const std::exception& error) { // most likely a file larger than the memory
            problem = KelError(error.what());
        }
        BeginHistory();
        emit Replaced();
    }
    emit StatusChanged(QString());
    if (!loaded)
        NoteLostGame(std::move(before));
    if (problem)
        throw CommandError(DescribeError(path, *problem) + u'.', QStringLiteral("Failed to load game"));
    if (loaded) {
        AddToRecentFiles(path);
        Inspect(path);
    }
    return loaded;
}

void GameSession::Inspect(const QString& path) {
    try {
        const FileInspection found = InspectFile(ReadFile(PathFromQt(path)));
        isFileAGame_ = found.isGame;
        emit Inspected(found);
    } catch (const std::exception&) {
        // It was read a moment ago: whatever has become of it, the game that came from it is here.
    }
}

void GameSession::ReadAsUtf8() {
    const QString path = FileName();
    GameModel read;
    read.ErrorMessages = game_.ErrorMessages;
    const FileStamp stamp = FileStamp::Of(path);
    try {
        ReadGame(read, Utf8ToWindows1252(ReadFile(PathFromQt(path))).bytes);
    } catch (const KelError& error) {
        throw CommandError(DescribeError(path, error) + u'.', QStringLiteral("Failed to load game"));
    }
    read.FileName = PathFromQt(path);
    Restore(read, stamp);
}

void GameSession::SaveGame(const QString& path) {
    QString status = QStringLiteral("Game saved.");
    if (game_.StartRoom.empty())
        status +=
            QLatin1String(" Click 'Edit' then 'Game Properties...' to select a start room for this game.");
    emit AboutToSave(path);
    const QString before = FileName();
    {
        const auto end = qScopeGuard([this] { host_.CloseProgress(); });
        const std::string file = PathFromQt(path);
        try {
            zem::SaveGame(game_, file, host_);
        } catch (const KelError& error) {
            throw CommandError(DescribeError(path, error) + u'.', QStringLiteral("Failed to save game"));
        }
        history_.MarkSaved();
        saved_ = game_;
        stamp_ = FileStamp::Of(path);
        isFileAGame_ = true;
        emit StepsChanged();
    }
    const QString left = before.isEmpty() || before == path ? QString() : TakeAlong(before, path);
    if (!left.isEmpty())
        emit ProblemFound(left);
    AddToRecentFiles(path);
    emit StatusChanged(status);
    emit Saved(); // last, as what hangs on it may ask the author
}

void GameSession::AddToRecentFiles(const QString& path) {
    try {
        settings_.AddToRecentFiles(path);
    } catch (const KelError& error) {
        if (!std::exchange(toldAboutRecentFiles_, true))
            host_.ShowNotice("All is well with the game, but it cannot be listed among the recent files: " +
                                 error.Problem() + ". Edit, Options sets the maximum.",
                             DefaultTitle);
    }
    const QString problem = settings_.NewProblem();
    if (!problem.isEmpty())
        emit ProblemFound(problem);
    emit RecentFilesChanged();
}

} // namespace zem
