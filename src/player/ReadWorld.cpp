#include "player/ReadWorld.h"

#include "base/KelError.h"
#include "commands/GameFolder.h"
#include "qt/QtText.h"

#include <optional>
#include <sstream>

namespace zem {

std::shared_ptr<const play::World> ReadWorld(const QString& path) {
    std::ostringstream problems;
    std::optional<play::GameFiles> files = play::LoadGameFiles(PathFromQt(path), problems);
    if (!files)
        throw KelError(FromQt(QString::fromUtf8(problems.str().c_str()).trimmed()));
    return play::World::Compile(*std::move(files));
}

} // namespace zem
