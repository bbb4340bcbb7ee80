#include "app/GameSession.h"

#include "forms/CommandError.h"
#include "forms/QtText.h"
#include "reader/LoadGame.h"
#include "writer/SaveGame.h"

#include <QFileInfo>

#include <utility>

namespace zem {

namespace {

class ProgressCloser {
public:
    explicit ProgressCloser(Host& host) : host_(host) {}
    ~ProgressCloser() { host_.CloseProgress(); }
    ProgressCloser(const ProgressCloser&) = delete;
    ProgressCloser& operator=(const ProgressCloser&) = delete;

private:
    Host& host_;
};

/// "tower.kel, line 12: what is wrong: the line".
QString Describe(const QString& path, const KelError& error) {
    const QString file = QFileInfo(path).fileName();
    const QString place = error.Line() == 0 ? QString() : QStringLiteral(", line %1").arg(error.Line());
    return file + place + QLatin1String(": ") + ToQt(error.ProblemWithText());
}

} // namespace

GameSession::GameSession(GameModel& game, Host& host, Settings& settings)
    : game_(game),
      host_(host),
      settings_(settings) {}

QString GameSession::FileName() const {
    return PathToQt(game_.FileName);
}

QString GameSession::Title() const {
    QString title;
    if (!game_.GameName.empty())
        title += u'"' + ToQt(game_.GameName) + QLatin1String("\" ");
    if (!game_.FileName.empty())
        title += u'[' + FileName() + QLatin1String("] ");
    return title.isEmpty() ? QStringLiteral("ZEM 1.0") : title + QLatin1String("- ZEM 1.0");
}

void GameSession::Change(const QString& name, const std::function<void(GameModel&)>& change) {
    GameChange done{name, game_, {}};
    try {
        change(game_);
    } catch (...) {
        game_ = std::move(done.before);
        throw;
    }
    done.after = game_;
    emit Changed(done);
    MarkModified();
}

void GameSession::MarkModified() {
    game_.Modified = true;
    emit StatusChanged(QStringLiteral("Current version of game not saved."));
}

void GameSession::NewGame() {
    zem::NewGame(game_);
    emit Replaced();
    emit StatusChanged(QString());
}

bool GameSession::LoadGame(const QString& path) {
    bool loaded = false;
    try {
        const ProgressCloser closer(host_);
        loaded = zem::LoadGame(game_, PathFromQt(path), host_);
        emit Replaced();
    } catch (const KelError& error) {
        emit Replaced();
        emit StatusChanged(QString());
        throw CommandError(Describe(path, error) + u'.', QStringLiteral("Failed to load game"));
    }
    emit StatusChanged(QString());
    if (loaded)
        AddToRecentFiles(path);
    return loaded;
}

void GameSession::SaveGame(const QString& path) {
    QString status = QStringLiteral("Game saved.");
    if (game_.StartRoom.empty())
        status +=
            QLatin1String(" Click 'Edit' then 'Game Properties...' to select a start room for this game.");
    {
        const ProgressCloser closer(host_);
        const std::string file = PathFromQt(path);
        try {
            ReplaceGame(game_, file, host_);
        } catch (const KelError& error) {
            throw CommandError(Describe(path, error) + u'.', QStringLiteral("Failed to save game"));
        }
        emit Saved();
    }
    AddToRecentFiles(path);
    emit StatusChanged(status);
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
    emit RecentFilesChanged();
}

} // namespace zem
