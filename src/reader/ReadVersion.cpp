#include "reader/ReadVersion.h"

#include "base/KelError.h"
#include "reader/InspectFile.h"
#include "reader/LoadGame.h"

#include <utility>

namespace zem {

void ReadVersion(GameModel& game, std::string bytes) {
    if (bytes.empty()) {
        NewGame(game);
        game.GameInfo.clear(); // is what a new game says of itself
        return;
    }
    const FileInspection inspection = InspectFile(bytes);
    for (const LoadRemark& remark : inspection.remarks)
        if (remark.kind == RemarkKind::MergeMark)
            throw KelError("a conflict that git left begins here; settle it first", remark.line, "");
    if (!inspection.isGame)
        throw KelError("no line begins a \"define\" block, so this is no Kel game");
    ReadGame(game, std::move(bytes));
}

} // namespace zem
