#include "script/ScriptDraft.h"

#include "kel/InternalCall.h"
#include "script/ScriptEditing.h"

#include <algorithm>

namespace zem {

ScriptDraft::ScriptDraft(ScriptEditing& scripts) : scripts_(scripts), game_(scripts.Game()) {
    scripts.drafts_.push_back(this);
}

ScriptDraft::~ScriptDraft() {
    std::erase(scripts_.drafts_, this);
}

void ScriptDraft::Keep() {
    std::erase(scripts_.drafts_, this);
    if (!SameGame(game_, scripts_.Game()))
        scripts_.ChangeProcedures([this](GameModel& game) { Keep(game); });
}

void ScriptDraft::Keep(GameModel& game) const {
    game.Procedures = game_.Procedures;
    game.NextInternalProcedure = game_.NextInternalProcedure;
}

void ScriptDraft::KeepCalled(const std::string& script, GameModel& game) const {
    const int called = CalledInternalProcedure(game_, script);
    if (called == 0)
        return;
    const int known = CalledInternalProcedure(game, script);
    if (known == 0) {
        game.Procedures.Append(game_.Procedures[called]);
        game.NextInternalProcedure = std::max(game.NextInternalProcedure, game_.NextInternalProcedure);
    } else if (game.Procedures[known] != game_.Procedures[called]) {
        game.Procedures.Edit(known) = game_.Procedures[called];
    }
}

} // namespace zem
