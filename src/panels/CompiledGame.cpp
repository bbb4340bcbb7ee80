#include "panels/CompiledGame.h"

#include "commands/GameFolder.h"
#include "play/Libraries.h"
#include "qt/QtText.h"
#include "session/GameSession.h"

#include <QFileInfo>
#include <QTimer>

#include <utility>

namespace zem {

CompiledGame::CompiledGame(GameSession& session, QObject* parent) : QObject(parent), session_(session) {
    connect(&session, &GameSession::Changed, this, &CompiledGame::NoteChange);
    connect(&session, &GameSession::Replaced, this, [this] {
        world_ = nullptr;
        emit Replaced();
    });
}

void CompiledGame::NoteChange() {
    isOutdated_ = true;
    if (std::exchange(isTelling_, true))
        return;
    QTimer::singleShot(0, this, [this] {
        isTelling_ = false;
        emit Changed();
    });
}

QString CompiledGame::Folder() const {
    return session_.FileName().isEmpty() ? QString() : QFileInfo(session_.FileName()).absolutePath();
}

play::GameFiles CompiledGame::Files() const {
    GameModel game = session_.Game();
    play::NameMessages(game);
    if (world_ != nullptr && world_->Game().Includes == game.Includes) {
        play::GameFiles files = world_->Files();
        files.game = std::move(game);
        return files;
    }
    const std::string folder = PathFromQt(Folder());
    return play::WithLibraries(std::move(game), [&](const std::string& name) {
        return folder.empty() ? std::nullopt : play::ReadBesideGame(folder, name);
    });
}

std::shared_ptr<const play::World> CompiledGame::Get() {
    if (world_ == nullptr)
        world_ = play::World::Compile(Files());
    else if (isOutdated_)
        world_ = play::World::Compile(Files(), *world_);
    isOutdated_ = false;
    return world_;
}

} // namespace zem
