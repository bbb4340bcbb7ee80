#include "base/TextEncoding.h"
#include "export/Export.h"

namespace zem::exports {

std::string AsWalkthrough(const GameModel& game, const play::RecordedRun& run) {
    std::string text = ToUtf8(game.GameName) + "\nWalkthrough: " + run.name + "\n\n" + run.beginning;
    for (const play::RunStep& step : run.steps) {
        text += "\n" + step.input.written + "\n";
        text += step.story;
    }
    return text;
}

} // namespace zem::exports
