#include "session/ReadVersionFile.h"

#include "base/KelError.h"
#include "base/TextFile.h"
#include "qt/QtText.h"
#include "reader/ReadVersion.h"
#include "session/GameSession.h"

namespace zem {

GameModel ReadVersionFile(const QString& path, const GameModel& like) {
    GameModel game;
    game.ErrorMessages = like.ErrorMessages;
    try {
        ReadVersion(game, ReadFile(PathFromQt(path)));
    } catch (const KelError& error) {
        throw KelError(FromQt(DescribeError(path, error)));
    }
    return game;
}

} // namespace zem
