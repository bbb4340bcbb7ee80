#pragma once

#include "play/World.h"

#include <QObject>
#include <QString>

#include <memory>

namespace zem {

class GameSession;

/// The open game made ready for playing, for all panels that play it. It is made when somebody asks for it
/// and made anew, of what differs, when the game has changed: a game that nobody plays costs nothing.
class CompiledGame : public QObject {
    Q_OBJECT

public:
    /// @param session  outlives this object
    explicit CompiledGame(GameSession& session, QObject* parent = nullptr);

    /// The game as it is now, unsaved changes included.
    std::shared_ptr<const play::World> Get();

    /// The libraries are read again with the next Get: their files may have changed.
    void ForgetLibraries() { world_ = nullptr; }

    /// Where the libraries, pictures and sounds of the game are; empty for a game without a file.
    QString Folder() const;

signals:
    /// The game has changed. Comes once after each command, however many changes it made.
    void Changed();

    /// Another game is open.
    void Replaced();

private:
    void NoteChange();
    play::GameFiles Files() const;

    GameSession& session_;
    std::shared_ptr<const play::World> world_;
    bool isOutdated_ = false;
    bool isTelling_ = false; // Changed is on its way
};

} // namespace zem
