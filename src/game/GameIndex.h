#pragma once

#include "game/References.h"
#include "game/ScriptOwners.h"
#include "game/TextIndex.h"
#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <memory>

namespace zem {

/// What finding and renaming ask: the names and the texts of one version of a game, kept from version to
/// version. The first version of a large game takes a moment; going on takes the records that differ anew.
class GameIndex {
public:
    /// @param commands  outlives this object
    explicit GameIndex(const CommandLookup& commands) : commands_(commands), references_(commands) {}
    GameIndex(const CommandLookup& commands, const GameModel& game) : GameIndex(commands) { GoOnTo(game); }

    /// What is asked from now on is asked of this version.
    void GoOnTo(const GameModel& game) {
        references_.GoOnTo(game);
        texts_.GoOnTo(game);
        owners_.reset();
    }

    /// The version that is asked.
    const GameModel& Game() const { return references_.Game(); }

    const CommandLookup& Commands() const { return commands_; }
    const ReferenceIndex& References() const { return references_; }
    const TextIndex& Texts() const { return texts_; }

    /// Where internal procedures belong. Found when it is first asked for.
    const ScriptOwners& Owners() const {
        if (owners_ == nullptr)
            owners_ = std::make_unique<const ScriptOwners>(Game());
        return *owners_;
    }

private:
    const CommandLookup& commands_;
    ReferenceIndex references_;
    TextIndex texts_;
    mutable std::unique_ptr<const ScriptOwners> owners_;
};

} // namespace zem
