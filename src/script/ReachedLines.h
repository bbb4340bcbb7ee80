#pragma once

#include "kel/ScriptTree.h"
#include "play/JudgeRuns.h"
#include "play/ReachedParts.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zem {

/// What recorded runs and walks have reached of the scripts of a game, for the windows that show them.
struct ReachedLines {
    using PlayRun = std::function<void(const std::shared_ptr<const play::JudgedRuns>&, const play::Hit&)>;

    std::shared_ptr<const play::JudgedRuns> judged;  // null where there are no runs
    std::shared_ptr<const play::LineCoverage> lines; // null where nothing is known
    PlayRun playRun; // plays the run that gets to a part with the fewest lines, up to there
};

/// What is known of one row of a script.
struct ReachedRow {
    QString remark;               // "never run"; empty where there is nothing to say
    std::optional<play::Hit> hit; // by which a run that gets there is found; nothing where none does
};

/// @param home  the value of the field that the script is the lines of, where it is opened in a window of its
/// own; otherwise the script itself
/// @param isOtherwise  whether the row is the "Otherwise" of the "if" line at the end of the way
ReachedRow ReachedRowOf(const play::LineCoverage& lines, const GameModel& game, const std::string& script,
                        const std::string& home, const ScriptPath& path, bool isOtherwise);

} // namespace zem
